#!/usr/bin/env bash
# picture.sh [TABLE...] - makes docs/report.png again, the first screen of a real report: of tables
# that are there, or of the built-in library on its SSE2 and its AVX2 path, measured for it.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need browser
build programs
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
tables=build/release/bin/ps_tables
if [ $# -eq 0 ]; then
    say "measuring"
    for path in SSE2 AVX2; do
        "$tables" run --passes 3 -o "$folder/$path.csv" -- "-T$path"
    done
    set -- "$folder/AVX2.csv.passes.csv" --against "$folder/SSE2.csv.passes.csv"
fi
"$tables" report "$@" -o "$folder/report.html"
chromium --headless --no-sandbox --disable-gpu --disable-background-networking --no-first-run \
    --disable-component-update --disable-sync --hide-scrollbars --user-data-dir="$folder/browser" \
    --window-size=1280,1100 --screenshot="$folder/report.png" "file://$folder/report.html" \
    >"$folder/log" 2>&1 || die "chromium: $(tail -3 "$folder/log")"
mv "$folder/report.png" docs/report.png
say "docs/report.png: $(stat -c %s docs/report.png) bytes"
