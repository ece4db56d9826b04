#!/usr/bin/env bash
# Ctrl-C at every row of a query with nested levels, while the row is written.
#     interrupt_rows_test.sh WINE-ENVIRONMENT TESSERA.EXE
# The query is short, and long when TESSERA_FULL is set.
set -u
source "$1"
program=$2
groups=2
[ -z "${TESSERA_FULL-}" ] || groups=30
source "$(dirname "$0")/interruption.sh"

# Each row is longer than what a pipe holds: whoever has read its first byte knows that the program is
# writing it and cannot be done before it is read on.
letters=$(head -c 45000 /dev/urandom | base64 -w 0)
query='<column name="N" property="Name"/>'
cat >plant.xml <<END
<?xml version="1.0" encoding="UTF-8"?>
<kelos-project-file version="1" lcid="1033">
  <languages current="English"><language name="English" lcid="1033"/></languages>
  <users current="me"><user login="me" rights="1"/></users>
  <system-types>
    <system-type name="project" number="1"/>
  </system-types>
  <project type="project" name="Plant" uid="P" current="yes"/>
  <queries>
    <query name="Rows">$query<generate rows="$groups"><cell text="{row} $letters"/>
      <query name="Nested">$query<generate rows="9"><cell text="{row} $letters"/></generate></query>
    </generate></query>
  </queries>
</kelos-project-file>
END

echo "a query that is stopped at a row has written whole rows up to it"
walk=(query plant.xml --query Rows --format strings --encode)
wine "$program" "${walk[@]}" >all 2>error || fail "the query failed"
count=$(wc -l <all)
mkfifo pipe
for ((row = 1; row <= count; ++row)); do
    wine "$program" "${walk[@]}" >pipe 2>error &
    pid=$!
    exec 3<pipe
    head -c $(($(head -n $((row - 1)) all | wc -c) + 1)) <&3 >rows
    kill -INT "$pid"
    wait_until grep -q stopping error
    cat <&3 >>rows
    exec 3<&-
    # With the last row there is nothing left to stop.
    check_ended_with $((row < count))
    head -n "$row" all | cmp - rows || fail "row $row: other rows were written"
    [ "$row" -eq "$count" ] ||
        grep -Eq "^tessera: broken off; $row rows? (was|were) written$" error || fail "row $row: not told"
done
[ -z "${TESSERA_FULL-}" ] || echo "figure: rows of a query that Ctrl-C stopped at $count"
