#!/usr/bin/env bash
# Tries ps_tables on a real Slurm: a controller and two nodes on this machine, each with a host name
# of its own, started in a temporary folder and ended with this script. Needs root.
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/setup.sh"

[ "$(id -u)" -eq 0 ] || die "Slurm's daemons need root here"
need fleet
build programs
tests=$PWD/tests/fleet
bin=$PWD/build/release/bin
libraries=$PWD/build/release/lib

work=$(mktemp -d "${TMPDIR:-/tmp}/fleet.XXXXXX")
chmod 755 "$work"
cd "$work"
started=()
finish() {
    local status=$?
    trap - EXIT
    if ((status != 0)); then
        tail -n 15 ./*.log slurm-*.out 2>/dev/null || true
    fi
    if [ -n "${SLURM_CONF-}" ]; then
        timeout 10 scancel --user=root 2>/dev/null || true
    fi
    for ((i = ${#started[@]} - 1; i >= 0; --i)); do # nodes ahead of the controller, munge last
        kill "${started[i]}" 2>/dev/null || true
        wait "${started[i]}" 2>/dev/null || true
    done
    cd /
    rm -rf "$work"
    exit $status
}
trap finish EXIT
trap 'exit 130' INT TERM

# daemon NAME COMMAND...: starts what stays in the foreground.
daemon() {
    local name=$1
    shift
    "$@" >"$name.log" 2>&1 &
    started+=($!)
}

# until_true WHAT COMMAND...: waits half a minute at most.
until_true() {
    local what=$1
    shift
    for ((tries = 0; tries < 150; ++tries)); do
        if "$@" >/dev/null 2>&1; then
            return
        fi
        sleep 0.2
    done
    die "$what"
}

same() {
    diff "$1" "$2" >&2 || die "$3"
}

say "starting Slurm in $work"
mkdir -m 700 key state
mkdir spool
dd if=/dev/urandom of=key/munge.key bs=32 count=1 status=none
chmod 400 key/munge.key
daemon munged munged --foreground --key-file="$work/key/munge.key" --socket="$work/munge.socket" \
    --pid-file="$work/munged.pid" --log-file="$work/munge.log" --seed-file="$work/key/seed" \
    --num-threads=2
port=$((20000 + $$ % 10000))
sed "s|@host@|$(hostname)|; s|@work@|$work|; s|@port@|$port|; s|@port1@|$((port + 1))|
    s|@port2@|$((port + 2))|" "$tests/slurm.conf.in" >slurm.conf
export SLURM_CONF=$work/slurm.conf
until_true "munge doesn't answer" munge --socket="$work/munge.socket" --no-input
daemon slurmctld slurmctld -D
for node in lab1 lab2; do
    daemon $node unshare --uts sh -c "hostname $node && exec slurmd -D -N $node"
done
idle() { [ "$(sinfo -h -t idle -o %D)" = 2 ]; }
until_true "the nodes don't come up" idle

# A comparison whose outcome is known: the same library, by another instruction set.
passes=6
pair() {
    local output=$1
    shift
    "$bin/ps_tables" pair -q --baseline "$libraries" --library "$libraries" --no-confirm \
        --passes $passes -o "$output" "$@" -- -f=zolsSqr_32f_A24 -f=zolsAbs_64f_A53 -TSSE2 \
        -dBaselineFeatures=AVX2
}

# judged COMMAND...: runs it; what was called is no failure.
judged() {
    local status=0
    "$@" || status=$?
    ((status <= 1)) || die "exit code $status of $*"
}

# plan FILES...: what each pass is said to be; machines FILES...: where passes were made.
plan() { grep -hE '^(Pass,[0-9]+$|Kind,|First,|Keys,|Baseline,)' "$@"; }
machines() { cat "$@" | sed -n 's/^Computer,//p' | sort -u | tr '\n' ' '; }

say "on the spot"
judged pair spot.csv >/dev/null

say "a job array on one node"
pair array.csv --array >array.sh
sbatch --wait --quiet -w lab1 array.sh || die "a task of the array failed"
files=(array.csv.passes/00?.csv)
[ ${#files[@]} -eq $passes ] || die "${#files[@]} of $passes passes"
[ "$(machines "${files[@]}")" = "lab1 " ] || die "made on $(machines "${files[@]}")"
same <(plan "${files[@]}") <(plan spot.csv.passes.csv) \
    "the tasks make other passes than a comparison on the spot"
judged "$bin/ps_tables" verdict --format csv "${files[@]}" >files.txt
judged pair array.csv --resume --format csv >whole.txt
same files.txt whole.txt "the files of the array give another verdict than the comparison"
judged "$bin/ps_tables" verdict --format csv array.csv.passes.csv >merged.txt
same files.txt merged.txt "the verdict changes by merging"
[ "$(grep -c '^lab1 .*,slower,' whole.txt)" -gt 0 ] || die "nothing is slower by SSE2"
same <(cut -d, -f2-5,11 whole.txt) \
    <(judged "$bin/ps_tables" verdict --format csv spot.csv.passes.csv | cut -d, -f2-5,11) \
    "other points than on the spot"

say "a job array on both nodes"
passes=12
pair both.csv --array --no-control >array.sh
sbatch --wait --quiet array.sh || die "a task of the array failed"
judged pair both.csv --no-control --resume >both.txt
[ "$(machines both.csv.passes.csv)" = "lab1 lab2 " ] ||
    die "made on $(machines both.csv.passes.csv)"
for node in lab1 lab2; do
    grep -q "^on $node " both.txt || die "no verdict for $node"
    [ "$(grep -c "^Computer,$node$" both.csv)" -eq 1 ] || die "no table of $node"
done
grep -A 1 '^functions by machine' both.txt | grep -q 'A[25][34]' || die "no functions by machine"

say "each pass behind srun"
passes=4
judged pair launched.csv --launch 'srun -n1 --exclusive -w lab2' >/dev/null
[ "$(machines launched.csv.passes.csv)" = "lab2 " ] ||
    die "made on $(machines launched.csv.passes.csv)"
[ "$(grep -c '^Kind,' launched.csv.passes.csv)" -eq $passes ] || die "passes are missing"

say "Ctrl-C while a pass waits for its node"
srun --quiet -w lab2 --exclusive sleep 60 2>/dev/null &
started+=($!)
busy() { squeue -h -t running | grep -q lab2; }
queued() { squeue -h -t pending | grep -q .; }
until_true "the node isn't taken" busy
# A process of the background ignores Ctrl-C unless it is told to heed it.
(trap - INT && exec setsid env --default-signal=INT "$bin/ps_tables" pair -q --passes 4 \
    --baseline "$libraries" -o stopped.csv --launch 'srun -n1 --exclusive -w lab2' \
    -- -f=zolsSqr_32f_A24 2>stopped.txt) &
stopped=$!
started+=("$stopped")
until_true "the pass isn't queued" queued
kill -INT "$stopped"
status=0
wait "$stopped" || status=$?
((status == 130)) || die "exit code $status"
not_queued() { ! queued; }
until_true "its job stays in the queue" not_queued

say "passed"
