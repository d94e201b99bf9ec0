#!/bin/sh
# weak_symbols.sh - no kernel object may define a weak symbol: the linker keeps a single copy of
# such a function, and it may be the one that only new processors can run.
status=0
for object in "$@"; do
    # A pointer to the handler of exceptions is data, the same in every object.
    if nm -C "$object" | grep -v DW.ref. | grep -E ' [VWu] '; then
        echo "weak symbols in $object"
        status=1
    fi
done
exit $status
