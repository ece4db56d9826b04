#!/usr/bin/env bash
# Registers both DLLs in a prefix of its own, runs script clients against them by name, and takes
# the registration out again. Arguments: the folder of the DLLs, the folder of the sources.
set -u
bin=$1
source_dir=$2
project=tests/support/small_project.xml
wine=$source_dir/cmake/wine
failed=0
# Wine's script host takes a path that begins with a slash for an option.
cd "$source_dir" || exit 1

fail() { echo "FAILED: $*"; failed=1; }
key_exists() { "$wine" reg query "HKEY_CLASSES_ROOT\\$1" >/dev/null 2>&1; }

for dll in Tessera KelosHostKit; do
    "$wine" regsvr32 /s "$bin/$dll.dll" || fail "regsvr32 $dll"
done
for name in Tessera.Tessera Tessera.SCGlobal.1 Tessera.XMLOptions Kelos.Service; do
    key_exists "$name\\CLSID" || fail "$name is not registered"
done

# expect_printed <text> <script> [<argument>…]: what a script prints. One that ends in the middle, at
# an error, ends with exit code 0 all the same.
expect_printed() {
    local expected=$1 printed
    shift
    printed=$("$wine" cscript //nologo "$@" | tr -d '\r')
    [ "$printed" = "$expected" ] || fail "$1 printed: $printed"
}
expect_printed "all checks hold" tests/late/script_clients.vbs "$project"
expect_printed $'Cover!B2: Werk\nCover!B3: AB' samples/fixed_values.vbs "$project"
expect_printed $'Objekt\tInternal\tText (englisch)\tStep\tLimit
Pumpe\tPumpe\tCentrifugal pump\t\t\n\t\t\tfill\t\n\t\t\t\t0,5\n\t\t\t\t\n\t\t\tdrain\t
\thidden\tSouth plant\t\t\nAnlage\tAnlage\tSouth plant\t\t\n\t\t\tlast\t' \
    samples/query_walk.vbs "$project" Plan

# The script that README.md shows, and the lines that it promises.
sed -n '/^```vb$/,/^```$/p' README.md | sed '1d;$d' | cmp -s - samples/content_list.vbs ||
    fail "README.md does not show samples/content_list.vbs"
"$wine" cscript //nologo samples/content_list.vbs | tr -d '\r' | grep -x -A 1 'Pumpen!A3  Name' |
    grep -qx 'Pumpen!B3  Description' || fail "content_list.vbs"

# The sample's own mapping table, and the mapping scripts, each by a row that only it maps.
written=$(mktemp)
"$wine" "$bin/tessera.exe" export samples/plant.xml --document Anlagenliste --out "Z:$written" |
    tr -d '\r' | grep -q '^[0-9]* rows, 0 messages, 0 errors$' || fail "plant.xml was not mapped"
expect_row() {
    "$wine" "$bin/tessera.exe" export samples/plant.xml --document Pumpendatenblatt --script "$1" \
        --out "Z:$written" | tr -d '\r' | grep -q "$2" || fail "$1 did not map: $2"
}
expect_row samples/mapping_pumps.vbs '^Pumpen  *C3 .*Process.Flow .* IO$'
expect_row samples/mapping_languages.vbs '^Bereiche  *B1 '
rm -f "$written"

for dll in Tessera KelosHostKit; do
    "$wine" regsvr32 /s /u "$bin/$dll.dll" || fail "regsvr32 /u $dll"
done
for name in Tessera.Tessera Tessera.SCGlobal.1 Kelos.Service; do
    key_exists "$name" && fail "$name is still registered"
done
exit $failed
