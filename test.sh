#!/usr/bin/env bash
# Builds everything and runs every test.
. "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

need tests
build all -DPS_BUILD_TESTS=ON
say "testing"
ctest --preset release -j 2 "$@"
