#!/usr/bin/env bash
# setup.sh [PURPOSE...] - installs the Debian packages that the purposes need; those of the build
# are always among them. The other scripts source it, to move to the checkout, install and build.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

declare -A packages=(
    [build]='g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libboost-math-dev'
    [tests]='libgtest-dev libgmock-dev libmpfr-dev'
    [bench]='hyperfine libbenchmark-dev python3'
    [coverage]='gcovr'
    [mutation]='git python3'
    [analysis]='clang-tidy cppcheck'
    [browser]='chromium nodejs' # for the report's tests
    [npm]='npm'                 # unless nodejs brings it
    [readers]='libbenchmark-tools python3-scipy python3-junitparser' # of what ps_tables exports
    [fuzz]='clang libclang-rt-14-dev'
    [fleet]='slurm-wlm munge'
)

say() { printf '== %s\n' "$*"; }

die() {
    printf '== failed: %s\n' "$*" >&2
    exit 1
}

# need PURPOSE...: installs what the build and the purposes need and is not there yet.
need() {
    local missing=() purpose package sudo=()
    for purpose in build "$@"; do
        [ -n "${packages[$purpose]-}" ] || die "purposes are: ${!packages[*]}"
        for package in ${packages[$purpose]}; do
            dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
                missing+=("$package")
        done
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    local please="please install: ${missing[*]}"
    command -v apt-get >/dev/null || die "$please"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "neither root nor sudo; $please"
        sudo=(sudo)
    fi
    say "installing ${missing[*]}"
    "${sudo[@]}" apt-get update -qq || die "apt-get update; $please"
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
        die "apt-get install; $please"
}

# build TARGET [CMAKE-OPTION...]: configures the preset and builds the target.
preset=release
build() {
    local target=$1
    shift
    say "building ($target)"
    cmake --preset "$preset" "$@" --log-level=WARNING >/dev/null || die "cmake"
    cmake --build --preset "$preset" --target "$target" || die "build"
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
    need "$@"
fi
