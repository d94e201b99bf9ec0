#!/usr/bin/env bash
# Builds the program and measures all functions at all lengths; the tables go to results/.
# Keys on the command line replace the default ones: ./run.sh -B -fSin -LPERF
. "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

need
build programs

keys=("$@")
if [ ${#keys[@]} -eq 0 ]; then
    mkdir -p results
    keys=(-B -LPERF "-l$PWD/results" -r -o -u)
    say "results go to results/: ps_zolvm.csv (performance), ps_zolvm_sum.csv (summary)," \
        "ps_zolvm.txt (this text)"
fi

# What disturbs a measurement is named; one processor is kept for it where that can be done.
governor=/sys/devices/system/cpu/cpu0/cpufreq/scaling_governor
if [ -r "$governor" ]; then
    say "frequency governor: $(cat "$governor")"
fi
# Ticks of all processors, and of them those in which they idled.
ticks() { awk '{ for (i = 2; i <= NF; ++i) all += $i; print all, $5 + $6; exit }' /proc/stat; }
before=$(ticks)
sleep 1
busy=$(awk -v before="$before" -v after="$(ticks)" \
    'BEGIN { split(before, b); split(after, a); print int(100 - 100 * (a[2] - b[2]) / (a[1] - b[1])) }')
if ((busy > 10)); then
    say "warning: other work keeps this machine busy ($busy % of its processors' time);" \
        "readings may be too high"
fi
pin=()
if command -v taskset >/dev/null; then
    last=$(taskset -cp $$ | sed 's/.*[^0-9]//')
    pin=(taskset -c "$last")
    say "pinned to processor $last"
fi
status=0
"${pin[@]}" build/release/bin/ps_zolvm "${keys[@]}" || status=$?
say "$("${pin[@]}" build/release/bin/ps_tables machine | head -n 1)"
say "to compare with another library: build/release/bin/ps_tables pair --baseline FOLDER"
exit $status
