#!/usr/bin/env bash
# Ctrl-C while tessera.exe works: under Wine the terminal's interrupt arrives as this signal.
#     interrupt_test.sh WINE-ENVIRONMENT TESSERA.EXE PROJECT
set -u
source "$1"
program=$2
project=$3
source "$(dirname "$0")/interruption.sh"

start() {
    rm -f marker
    # Without a program between them that would keep the signal.
    wine "$program" "$@" >out 2>error &
    pid=$!
}
# What is not complete stands beside its place.
is_begun() { test -s tessera-*.tmp; }
# Starts the program and interrupts it while it writes what the given command makes of a number of
# cells. An interrupt takes its time: a program that was faster gets more cells.
interrupt_writing_of() {
    local make=$1 cells code
    shift
    for cells in 30000 60000 120000 240000; do
        "$make" "$cells"
        start "$@"
        until is_begun || ! kill -0 "$pid" 2>/dev/null; do :; done
        kill -INT "$pid" 2>/dev/null
        wait "$pid"
        code=$?
        [ "$code" -eq 0 ] || break
    done
    check_code "$code" 1
}
# The document ends with its root element, which may be empty: the interrupt may come before a row.
check_whole() {
    tail -c 100 "$1" | tr -d '\0\r' | tail -n 1 | grep -Eq "^(</$2>|<$2[^<]*/>)\$" ||
        fail "the document has no end"
}
check_told() { grep -q "$1" error || fail "standard error does not say: $1"; }

# Makes the file that the test waits for, then runs the given loop.
script() {
    cat <<EOF
Sub DoVex()
  ContentFix "S!A1", 1
  CreateObject("Scripting.FileSystemObject").CreateTextFile("marker").Close
  $1
End Sub
EOF
}

echo "an export that calls the host stops at its next calls and writes nothing"
for loop in 'Do : X = MappingTableExcel.GetCount : Loop' \
    'On Error Resume Next : Do : X = MappingTableExcel.GetCount : Loop' \
    'Do : ContentFix "S!A1", 1 : Loop' \
    'On Error Resume Next : Set P = Project : Do : Content "S!A1", P, "Name", "", "", "" : Loop'; do
    script "$loop" >host.vbs
    start export "$project" --script host.vbs --out content.xml
    wait_until test -e marker
    kill -INT "$pid"
    check_ended_with 1
    check_told '^tessera: stopped; nothing was written$'
    [ -e content.xml ] && fail "a content document was written"
    [ -s out ] && fail "standard output is not empty"
done

echo "whichever row an export is at, it stops there and leaves what was there"
rows='1 2 299 300'
[ -z "${TESSERA_FULL-}" ] || rows=$(seq 300)
for row in $rows; do
    cat >rows.vbs <<EOF
Sub DoVex()
  Set Files = CreateObject("Scripting.FileSystemObject")
  For Row = 1 To 301
    ContentFix "S!A" & Row, Row
    If Row = $row Then
      Files.CreateTextFile("marker").Close
      Do Until Files.FileExists("interrupted") : Loop
    End If
  Next
End Sub
EOF
    echo before >content.xml
    rm -f interrupted
    start export "$project" --script rows.vbs --out content.xml
    wait_until test -e marker
    kill -INT "$pid"
    wait_until grep -q stopping error
    touch interrupted
    check_ended_with 1
    check_told '^tessera: stopped; nothing was written$'
    [ "$(cat content.xml)" = before ] || fail "the document that was there is changed at row $row"
done
rm content.xml
[ -z "${TESSERA_FULL-}" ] || echo "figure: rows of an export that Ctrl-C stopped at $(wc -w <<<"$rows")"

echo "a script that calls nobody is ended by the second Ctrl-C"
script 'Do : X = X : Loop' >alone.vbs
start export "$project" --script alone.vbs --out content.xml
wait_until test -e marker
kill -INT "$pid"
wait_until grep -q stopping error
kill -INT "$pid"
check_ended_with 1
[ -e content.xml ] && fail "a content document was written"

echo "a query keeps the rows that were read, and says how many they are"
start query "$project" --query Signalliste --format strings --encode --out rows.txt
wait_until is_begun
kill -INT "$pid"
check_ended_with 1
rows=$(wc -l <rows.txt)
check_told "^tessera: broken off; $rows rows were written$"
[ "$rows" -lt 100000 ] || fail "all rows were written"

echo "so is the document of all rows, when it is ended before its last one"
start query "$project" --query Signalliste --format complete --out complete.xml
wait_until is_begun
kill -INT "$pid"
check_ended_with 1
check_told '^tessera: broken off; '
check_whole complete.xml Contents

echo "rows that are broken off are a whole document"
start query "$project" --query Signalliste --format rows --out rows.xml
wait_until is_begun
kill -INT "$pid"
check_ended_with 1
check_told '^tessera: broken off; '
check_whole rows.xml Rows

echo "a page that is stopped leaves what was there"
make_sheet() {
    awk -v cells="$1" 'BEGIN {
        print "<Contents Version=\"1\">"
        for (i = 1; i <= cells; ++i)
            printf "<Content Version=\"1\"><Document Version=\"1\"><Pointer Type=\"String\"" \
                " Data=\"S!A%d\"/></Document></Content>", i
        print "</Contents>" }' >sheet.xml
    echo before >page.html
}
interrupt_writing_of make_sheet preview sheet.xml --out page.html
check_told '^tessera: stopped; nothing was written$'
[ "$(cat page.html)" = before ] || fail "the page that was there is changed"

echo "a workbook that is not complete is none"
make_two_sheets() {
    {
        echo '<?xml version="1.0" encoding="UTF-8"?><Contents Version="1">'
        for sheet in First Second; do
            seq -f "<Content><Value><KelosValue Type='Long' Data='1'/></Value><Document><Pointer \
Type='String' Data='$sheet!A%.0f'/></Document></Content>" "$1"
        done
        echo '</Contents>'
    } >content-of-two.xml
    rm -f book.xlsx
}
interrupt_writing_of make_two_sheets spreadsheet content-of-two.xml --out book.xlsx
check_told '^tessera: stopped; nothing was written$'
[ -e book.xlsx ] && fail "a workbook was written"

echo "a file that was there stays when the program is killed before it is done"
cp rows.xml before.xml
start query "$project" --query Signalliste --format rows --out rows.xml
wait_until is_begun
kill -KILL "$pid"
wait "$pid" 2>/dev/null
pid=
# The system takes leave of the killed program before it meets the next one.
wine "$program" --version >out
is_begun && fail "a temporary file was left"
cmp rows.xml before.xml || fail "what was there before is changed"
