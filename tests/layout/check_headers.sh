#!/usr/bin/env bash
# check_headers.sh ROOT - guards match paths, and a file includes only its own floor and lower ones.
set -u
cd "$1" || exit 1
bad=0
complain() {
    printf '%s\n' "$*"
    bad=1
}

# A rank for each floor; floors of one rank do not know each other.
declare -A rank=([psbase]=1 [psstream]=2 [psmemory]=3 [pscpu]=3 [psparameter]=4 [pstool]=4
    [pstest]=5 [ps]=6 [zo]=7 [vts]=8 [timing]=9 [families]=10
    [core]=-1 [run]=0 [page]=0 [export]=0 [commands]=1) # of tables, which know none of those above

check_file() { # root of includes, path below it
    local path=$2 floor=${2%%/*} included
    [[ $path == */* ]] || floor=commands # of tables: what lies beside its rooms
    if [[ $path == *.h ]]; then
        local guard=${path//[\/.]/_}
        grep -q "^#ifndef ${guard^^}\$" "$1/$path" || complain "$1/$path: guard is not ${guard^^}"
    fi
    while read -r included; do
        [ "$included" != pscpu/pssentinel.h ] || continue # stands alone, for all to take
        local other=${included%%/*}
        [[ $included == */* && -n ${rank[$other]:-} ]] || continue
        if [ "$other" != "$floor" ] && [ "${rank[$other]}" -ge "${rank[$floor]}" ]; then
            complain "$1/$path: includes $included of a floor that it may not know"
        fi
    done < <(sed -n 's/^#include "\(.*\)"/\1/p' "$1/$path")
}

count=0
for root in testsdk/perflib/src sources/zolvm/perf tables; do
    while read -r path; do
        check_file "$root" "$path"
        count=$((count + 1))
    done < <(cd "$root" && find . -name '*.cpp' -o -path './*/*.h' | sed 's|^\./||')
done
[ "$count" -gt 50 ] || complain "only $count files found"
exit $bad
