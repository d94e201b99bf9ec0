#!/usr/bin/env bash
# Static analysis of the product: clang-tidy by .clang-tidy and cppcheck by .cppcheck. Prints what
# they find; nothing means clean.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need analysis
build programs
# The analyzer would walk the kernels' templates for many minutes.
kernels=(platform/zolvm/zolvmreal.cpp platform/zolvm/zolvmcomplex.cpp)
mapfile -t sources < <(find testsdk sources platform tables -name '*.cpp' |
    grep -vxF "$(printf '%s\n' "${kernels[@]}")" | sort)
status=0
printf '%s\0' "${sources[@]}" |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy -p build/release --quiet 2>/dev/null || status=1
# Of their flags, clang doesn't know all.
clang-tidy --quiet --checks='-clang-analyzer-*' "${kernels[@]}" -- -std=c++20 -O2 -mavx2 -mfma \
    -D__FAST_MATH__ -DZOLVM_PATH=avx2 -Iplatform -Iplatform/include 2>/dev/null || status=1
cppcheck --quiet --error-exitcode=1 --enable=warning,performance,portability --inline-suppr \
    --std=c++20 --language=c++ --suppressions-list=.cppcheck \
    -I testsdk/perflib/src -I sources/zolvm/perf -I platform -I platform/include -I tables \
    testsdk sources platform tables || status=1
exit $status
