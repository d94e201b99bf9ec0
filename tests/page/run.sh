#!/usr/bin/env bash
# run.sh PS_TABLES FOLDER - the pages' tests in a real browser; exit code 77 where they cannot run.
# What npm brings goes to the folder.
set -u
program=$1 folder=$2
here=$(cd "$(dirname "$0")" && pwd)
skip() {
    printf 'The report was not tried in a browser: %s\n' "$*"
    exit 77
}
browser=$(command -v chromium || command -v chromium-browser) || skip "chromium is not installed"
command -v node >/dev/null || skip "nodejs is not installed"
mkdir -p "$folder" && cp "$here/package.json" "$here/package-lock.json" "$folder" || exit 1
if ! cmp -s "$folder/package-lock.json" "$folder/node_modules/complete"; then
    command -v npm >/dev/null || skip "npm is not installed"
    npm ci --prefix "$folder" --ignore-scripts --no-audit --no-fund --fetch-retries=1 \
        --fetch-timeout=30000 >"$folder/npm.log" 2>&1 || skip "npm ci failed, see $folder/npm.log"
    cp "$folder/package-lock.json" "$folder/node_modules/complete"
fi
PS_TABLES=$program PS_MODULES=$folder PS_BROWSER=$browser exec node --test "$here/report_test.mjs"
