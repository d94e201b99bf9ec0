#!/usr/bin/env bash
# Builds the program and measures all functions at all lengths; the tables go to results/.
# Keys on the command line replace the default ones: ./run.sh -B -fSin -LPERF
. "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

need g++ cmake ninja-build
build ps_zolvm

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
load=$(cut -d ' ' -f 1 /proc/loadavg)
if awk -v load="$load" 'BEGIN { exit !(load > 0.5) }'; then
    say "warning: other work keeps this machine busy (load $load); readings may be too high"
fi
pin=()
if command -v taskset >/dev/null; then
    last=$(taskset -cp $$ | sed 's/.*[^0-9]//')
    pin=(taskset -c "$last")
    say "pinned to processor $last"
fi
exec "${pin[@]}" build/release/bin/ps_zolvm "${keys[@]}"
