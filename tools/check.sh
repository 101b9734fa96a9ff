#!/usr/bin/env bash
# Everything a change must pass, in the order of what is told soonest:
#   format    layout of the sources (clang-format)
#   build     warnings are errors
#   tests     all of them; include directions are one of the tests
#   tidy      clang-tidy with the project's own configuration
#   asan      store, platform and workspace under address and undefined-behaviour sanitizers
#   budget    size of files and functions, printed
# Usage: tools/check.sh [STAGE ...]; without arguments all of them. Ends with 1 at the first fault.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup.sh clang-format clang-tidy python3 universal-ctags libgtest-dev

cpus=$(nproc)
sources() { git ls-files "$@" | grep -E '\.(cpp|h)$'; }

format() {
  sources | xargs clang-format --dry-run --Werror
}

build() {
  TAVOLIX_PRESET=check ./test --build-only
}

tests() {
  TAVOLIX_PRESET=check ./test
}


tidy() {
  build
  sources src tools | grep '\.cpp$' |
    xargs -P "$cpus" -n 1 clang-tidy --quiet -p build/check
}

asan() {
  [ -f build/asan/build.ninja ] || cmake --preset asan
  cmake --build --preset asan --target test_store test_platform test_workspace archive_files
  ASAN_OPTIONS=detect_leaks=0 ctest --preset asan -L '^(store|platform|workspace)$'
}

budget() {
  python3 tools/budget.py
}

[ $# -gt 0 ] || set -- format build tests tidy asan budget
for stage in "$@"; do
  started=$SECONDS
  echo "== $stage"
  "$stage"
  echo "== $stage: $((SECONDS - started)) s"
done
