#!/usr/bin/env bash
# Builds everything and runs every test.
. "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

need tests
build all -DPS_BUILD_TESTS=ON
for program in chromium node npm; do
    command -v "$program" >/dev/null ||
        say "without $program the report is not tried in a browser (scripts/setup.sh browser npm)"
done
say "testing"
ctest --preset release -j 2 "$@"
