#!/usr/bin/env bash
# Builds everything and runs every test.
. "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

need g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libboost-math-dev \
    libgtest-dev libmpfr-dev
build all -DPS_BUILD_TESTS=ON
say "testing"
ctest --preset release -j 2 "$@"
