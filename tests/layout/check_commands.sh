#!/usr/bin/env bash
# check_commands.sh ROOT - both commands, with stand-ins for the tools that they call: they work from
# elsewhere in a path with blanks and letters beyond ASCII, and say what is missing before they build.
set -eu
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
clone="$dir/ein Prüf stand"
tools="$dir/its tools"
mkdir -p "$clone/build/release/bin" "$tools"
cp -r "$1/run.sh" "$1/test.sh" "$1/scripts" "$clone"
stub() { # FILE COMMANDS
    printf '#!/bin/sh\n{ printf "%%s" "${0##*/}"; printf " [%%s]" "$PWD" "$@"; echo; } >>"%s/calls"\n%s\n' \
        "$dir" "$2" >"$1"
    chmod +x "$1"
}
for tool in cmake ctest; do
    stub "$tools/$tool" ''
done
stub "$tools/taskset" '[ "$1" = -cp ] && echo "list: 0" || { shift 2; exec "$@"; }'
stub "$tools/dpkg-query" 'echo install ok installed'
stub "$clone/build/release/bin/ps_zolvm" ''
wanted() { # COMMAND TEXT: what it called and printed, one of whose lines has the text
    : >"$dir/calls"
    (cd / && PATH="$tools:$PATH" "$clone/$1") >>"$dir/calls" 2>&1 || true
    grep -qF -- "$2" "$dir/calls" || { echo "$1: no '$2' in"; cat "$dir/calls"; exit 1; }
}
wanted run.sh "ps_zolvm [$clone] [-B] [-LPERF] [-l$clone/results] [-r] [-o] [-u]"
wanted test.sh "ctest [$clone] [--preset] [release]"

stub "$tools/dpkg-query" 'false'
stub "$tools/apt-get" ''
stub "$tools/sudo" 'false'
stub "$tools/id" 'echo 1000'
for command in run.sh test.sh scripts/analyze.sh scripts/coverage.sh; do
    wanted $command 'please install: g++ cmake ninja-build'
    if grep '^cmake' "$dir/calls"; then exit 1; fi
done
