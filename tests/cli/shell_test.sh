#!/usr/bin/env bash
# tessera.exe in a shell: completion, pipes, colours.
#     shell_test.sh WINE-ENVIRONMENT TESSERA.EXE PROJECT
set -u
source "$1"
program=$2
project=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1

fail() {
    echo "FAILED: $1"
    exit 1
}
tessera() { wine "$program" "$@"; }

tessera completion bash >completion.sh || fail "no completion script"
source completion.sh
touch plant.xml 'pump list.xml'
# What bash would offer for the last of the words.
expect() {
    local wanted=$1 COMP_WORDS=("${@:2}") COMP_CWORD=$(($# - 2)) COMPREPLY
    _tessera
    local got
    got=$(printf '%s,' "${COMPREPLY[@]+"${COMPREPLY[@]}"}")
    [ "$got" = "$wanted," ] || fail "\"${*:2}\" is completed as \"$got\""
}
echo "bash completes commands, options and what they take"
expect decode,diff tessera d
expect --no-scripts tessera export plant.xml --n
expect columns,complete tessera query plant.xml --format co
expect columns,complete tessera query plant.xml --format = co
expect project tessera import book.xlsx --prefer p
expect plant.xml,'pump list.xml' tessera export p
expect plant.xml tessera check content.xml --project = plant
expect '' tessera export plant.xml --document p
expect bash tessera completion b
expect export tessera help exp
complete -p tessera >/dev/null || fail "nothing is registered with bash"

echo "results go through pipes as they go into files"
tessera export "$project" --out - 2>told >content.xml || fail "the export failed"
grep -q '^109 rows' told || fail "nothing is told beside the result"
tessera export - --out - <"$project" 2>/dev/null | cmp - content.xml || fail "another document"
tessera export "$project" --out - --quiet 2>told | tessera diff content.xml - >differences ||
    fail "$(cat differences)"
[ -s told ] && fail "a quiet export told something"
tessera spreadsheet content.xml --out file.xlsx --quiet >/dev/null || fail "no workbook"
tessera spreadsheet - --out - <content.xml 2>/dev/null | cat >piped.xlsx
cmp file.xlsx piped.xlsx || fail "another workbook"
cat piped.xlsx | tessera diff content.xml - >/dev/null || fail "another content document"
tessera preview - --out - <content.xml 2>/dev/null | grep -q '<title>.*standard input' ||
    fail "no page"

echo "problems have a colour on a terminal only, and not where nobody wants one"
on_terminal() { script -qec "wine '$program' export none.xml" /dev/null; }
has_colour() { grep -q $'\e\\[[0-9;]*[39]1[;m]'; }
on_terminal | has_colour || fail "no colour on a terminal"
NO_COLOR=1 on_terminal | has_colour && fail "a colour in spite of NO_COLOR"
tessera export none.xml 2>&1 | grep -q $'\e' && fail "a colour in a pipe"
exit 0
