# setup.sh - sourced by run.sh and test.sh: moves to the checkout, and installs what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '== %s\n' "$*"; }

die() {
    printf '== failed: %s\n' "$*" >&2
    exit 1
}

# need PACKAGE...: installs the Debian packages that are not there yet.
need() {
    local missing=() package sudo=()
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    command -v apt-get >/dev/null || die "please install: ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "run as root, or install: ${missing[*]}"
        sudo=(sudo)
    fi
    say "installing ${missing[*]}"
    "${sudo[@]}" apt-get update -qq || die "apt-get update"
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
        die "apt-get install ${missing[*]}"
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
