#!/bin/sh
# Stands in for ps_zolvm: writes a table of 12 functions at 4 lengths whose ratios are known, and
# misbehaves in the run that FAKE names: die, hang, crash, nothing or a signal, a colon, and its number
# (or * for each). nothing says FAKE_SAYS and ends with FAKE_CODE.
dir=$(dirname "$0")
run=$(($(cat "$dir/runs" 2>/dev/null || echo 0) + 1))
echo $run >"$dir/runs"
for key; do
    case $key in
        -r*) table=${key#-r} ;;
        -dBaseline=*) baseline=${key#*=} ;;
        -dBaselineFirst=*) first=${key#*=} ;;
        -dBaselineIn=*) where=${key#*=} ;;
        -f=zols*) only="$only ${key#-f=zols}" ;;
    esac
done
echo "$run ${LD_LIBRARY_PATH##*/} first=$first only=$only mhz=$PS_CPU_MHZ $FAKE_WORD in=$where" >>"$dir/log"
case nothing:$run in $FAKE) printf '%b\n' "${FAKE_SAYS:-FATAL ERROR: no such thing}" && exit ${FAKE_CODE:-0} ;; esac
case $FAKE in [A-Z]*:$run) echo begun >"$table" && kill -${FAKE%:*} $PPID && exec sleep 1 ;; esac # its parent's end
for fault in die hang crash; do
    case $fault:$run in $FAKE) how=$fault ;; esac
done
awk -v run=$run -v first="$first" -v only="$only" -v how="$how" -v slow="${FAKE_SLOW:-0}" \
    -v itself="$([ "${LD_LIBRARY_PATH%%:*}" = "${baseline:-none}" ] && echo 1)" -v stray="$FAKE_STRAY" \
    -v table="$table" -v paired="$baseline" '
function chance() { return (state = state * 16807 % 2147483647) / 2147483647 }
BEGIN {
    print "CPU,A chip, 2x2.6 GHz, Max cache size 1 K\nComputer,vm\nLibrary,ZOL" >table
    print "funcBase,funcDataType,funcDescriptor,Len/Size,Parm1,Parm2,Parm3,Parm4,Parm5,Parm6," \
        "scaleFactor,Comment,Clocks,per,Time (usec),MFlops" >table
    state = run * 7919
    count = split("Abs Acos Cos Erf Exp Hypot Ln Pow Sin Sqr Sqrt Tan", names)
    for (i = 1; i <= count; ++i) {
        if (only != "" && index(only, names[i] "_32f_A24") == 0)
            continue
        print "| Function  : zols" names[i] "_32f_A24                         Tue Nov 24 12:00|"
        for (length_ = 32; length_ <= 256; length_ *= 2) {
            if (how == "die" && names[i] == "Pow" && length_ == 64) {
                fflush(table)
                print "-- It came from the baseline"
                fflush(); close(table); system("kill -SEGV $PPID"); exit
            }
            if (how == "hang" && names[i] == "Pow") { fflush(); fflush(table); system("sleep 30") }
            ratio = 1 + 0.002 * (chance() - 0.5)
            if (names[i] == "Sin" && length_ >= 64 && !itself)
                ratio *= 1 + slow / 100
            if (itself && stray != "")
                ratio *= 1.04
            words = paired == "" ? "" : sprintf(" base=2.00 ratio=%.4f lo=%.4f hi=%.4f nPrs=60 quiet", \
                ratio, ratio - 0.001, ratio + 0.001)
            printf "%s,32f,A24,%d,-,-,-,-,-,-,-,nLps=8%s,%.2f,e,1.23,-\n", names[i], length_, words, \
                2 * ratio >table
        }
        print "| -" (how == "crash" && names[i] == "Exp" ? "EXCPTFAIL  " : "OK         ") \
            "zols" names[i] "_32f_A24 |"
    }
}'
