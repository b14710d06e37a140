#!/usr/bin/env bash
# Makes the record files of this folder from the sample captures, and their exports
# in RIS, CSL JSON and CSV. Run from anywhere after a build:
#   samples/export/regenerate.sh [path/to/zorvanta-cli]
# The test suite checks that the committed files are what the build writes.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
cli="${1:-$here/../../build/ci/src/cli/zorvanta-cli}"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
for pair in dialog-all:dialog brs:brs datastar:datastar djnr:djnr nlm:nlm orbit:orbit ovid:ovid stn:stn; do
  service="${pair%%:*}"
  name="${pair##*:}"
  "$cli" filter "$service" "$here/../${name}_session.log" --out-dir "$work" >/dev/null
  cp "$work/${name}_session.PRO" "$here/$name.PRO"
done
for pro in "$here"/*.PRO; do
  base="${pro%.PRO}"
  "$cli" export "$pro" --format ris --to "$base.ris" >/dev/null
  "$cli" export "$pro" --format csl-json --to "$base.json" >/dev/null
  "$cli" export "$pro" --format csv --to "$base.csv" >/dev/null
done
echo "regenerated: $(ls "$here" | wc -l) files in $here"
