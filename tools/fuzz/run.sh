#!/usr/bin/env bash
# The long fuzzing runs, outside the tests: every filter and the index builder under
# libFuzzer with AddressSanitizer and UndefinedBehaviorSanitizer.
#
#   tools/fuzz/run.sh                 fuzz for 10 minutes (or --time SECONDS)
#   tools/fuzz/run.sh --runs N        fuzz N inputs
#   tools/fuzz/run.sh --one FILE...   run the given inputs once (a crash to look at)
#
# The corpus grows in build/fuzz/corpus, seeded from tests/fuzz/corpus and samples/;
# inputs that break a rule or crash are kept as build/fuzz/crash-*. Extra arguments
# after -- go to libFuzzer (e.g. -- -jobs=2 -workers=2).
set -euo pipefail
cd "$(dirname "$0")/../.."

time=600
runs=""
one=()
extra=()
while [ $# -gt 0 ]; do
  case "$1" in
    --time) time="$2"; shift 2 ;;
    --runs) runs="$2"; shift 2 ;;
    --one) shift; one=("$@"); break ;;
    --) shift; extra=("$@"); break ;;
    *) echo "usage: $0 [--time SECONDS | --runs N] [-- libFuzzer options] | --one FILE..." >&2; exit 2 ;;
  esac
done

scripts/setup.sh --fuzz
build=build/fuzz
CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZV_BUILD_FUZZ=ON -DZV_SANITIZE=ON -DZV_BUILD_GUI=OFF -DZV_BUILD_TESTS=OFF -DZV_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target zv_fuzz -j "$(nproc)"

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
if [ ${#one[@]} -gt 0 ]; then
  exec "$build/tools/fuzz/zv_fuzz" "${one[@]}"
fi

mkdir -p "$build/corpus"
limit=(-max_total_time="$time")
if [ -n "$runs" ]; then limit=(-runs="$runs"); fi
exec "$build/tools/fuzz/zv_fuzz" "$build/corpus" tests/fuzz/corpus samples \
  -max_len=262144 -timeout=60 -rss_limit_mb=4096 -artifact_prefix="$build/" "${limit[@]}" "${extra[@]}"
