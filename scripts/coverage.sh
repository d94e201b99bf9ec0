#!/usr/bin/env bash
# Line coverage of the product by its tests, file by file.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need tests coverage
preset=coverage
build all
find build/coverage -name '*.gcda' -delete
say "testing"
ctest --preset coverage -j 2 --output-on-failure >build/coverage/tests.log ||
    die "tests; see build/coverage/tests.log"
gcovr --root . --filter testsdk/ --filter sources/ --filter platform/ --filter tables/ -j 2 build/coverage
