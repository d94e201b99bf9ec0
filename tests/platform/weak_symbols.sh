#!/bin/sh
# weak_symbols.sh - no kernel object may define a weak symbol: the linker keeps a single copy of
# such a function, and it may be the one that only new processors can run.
status=0
for object in "$@"; do
    if nm -C "$object" | grep -E ' [VWu] '; then
        echo "weak symbols in $object"
        status=1
    fi
done
exit $status
