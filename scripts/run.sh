#!/usr/bin/env bash
# Sets up, builds and starts Zorvanta. Without a display it says so and runs the
# DIALOG filter of zorvanta-cli on the bundled sample capture instead.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec build/release/src/forms/zorvanta "$@"
fi

echo "No display found (DISPLAY and WAYLAND_DISPLAY are empty): running the command-line demo instead."
out=build/demo
mkdir -p "$out"
build/release/src/cli/zorvanta-cli filter dialog-all samples/dialog_session.log --out-dir "$out"
echo
echo "Outputs are in $out: dialog_session.PRO (records), dialog_session.NDX (index), dialog_session.FSC (search strategy)."
echo "The index:"
build/release/src/cli/zorvanta-cli ndx "$out/dialog_session.NDX"
