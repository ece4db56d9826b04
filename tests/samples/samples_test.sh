#!/usr/bin/env bash
# The samples whose language can run here print the same lines and save the same content document: the
# C++ ones without registration, then the scripts with it. Arguments: the folder of the DLLs and of the
# built samples, the folder of the sources.
set -u
bin=$1
source_dir=$2
wine=$source_dir/cmake/wine
expected=tests/samples/export_and_query.txt
folder=$(mktemp -d)
failed=0
# Wine's script host takes a path that begins with a slash for an option.
cd "$source_dir" || exit 1

fail() { echo "FAILED: $*"; failed=1; }
registered() { for dll in Tessera KelosHostKit; do "$wine" regsvr32 /s "$@" "$bin/$dll.dll"; done; }
trap 'registered /u; rm -rf "$folder"' EXIT

# expect_lines <name> <expected> <program> <argument>…
expect_lines() {
    local name=$1 lines=$2
    shift 2
    rm -f "$folder/content.xml"
    "$wine" "$@" 'samples\plant.xml' "Z:$folder/content.xml" | tr -d '\r' >"$folder/$name.txt"
    diff "$lines" "$folder/$name.txt" || fail "$name does not print the lines of $expected"
    [ -s "$folder/first.xml" ] || cp "$folder/content.xml" "$folder/first.xml"
    cmp "$folder/first.xml" "$folder/content.xml" || fail "$name saves another content document"
}

registered /u
expect_lines early_bound $expected "$bin/early_bound.exe"
expect_lines late_bound $expected "$bin/late_bound.exe"
grep -q '<Contents Version="1"><Content Version="1">' "$folder/first.xml" || fail "no content document"

# The script host writes in the console's code page, which has no ellipsis.
sed 's/…/./' $expected | iconv -f UTF-8 -t CP437 >"$folder/console.txt"
registered
expect_lines vbscript "$folder/console.txt" cscript //nologo 'samples\vbscript\export_and_query.vbs'
expect_lines jscript "$folder/console.txt" cscript //nologo 'samples\jscript\export_and_query.js'

# A document that does not exist is told, with what the host was reported.
sed 's/"Kurzliste"/"Langliste"/' samples/vbscript/export_and_query.vbs >"$folder/unknown.vbs"
"$wine" cscript //nologo "Z:$folder/unknown.vbs" 'samples\plant.xml' "Z:$folder/none.xml" |
    grep -q '^There is no content document of Langliste' || fail "an unknown document is not told"
exit $failed
