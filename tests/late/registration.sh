#!/usr/bin/env bash
# Registers the DLLs in the test prefix, runs script clients against them by name, and takes the
# registration out again: afterwards the registry is what it was before, in every order, and what
# is still registered still works. Arguments: the folder of the DLLs, the folder of the sources.
set -u
bin=$1
source_dir=$2
project=tests/support/small_project.xml
wine=$source_dir/cmake/wine
snapshots=$(mktemp -d)
failed=0
# Wine's script host takes a path that begins with a slash for an option.
cd "$source_dir" || exit 1

fail() { echo "FAILED: $*"; failed=1; }
register() { for dll; do "$wine" regsvr32 /s "$bin/$dll.dll" || fail "regsvr32 $dll"; done; }
unregister() { for dll; do "$wine" regsvr32 /s /u "$bin/$dll.dll" || fail "regsvr32 /u $dll"; done; }
classes() { "$wine" reg export 'HKLM\Software\Classes' "$snapshots/$1" /y >/dev/null 2>&1; }
utf8() { iconv -f UTF-16 -t UTF-8 "$snapshots/$1" | tr -d '\r'; }
# expect_printed <text> <script> [<argument>…]: what a script prints. One that ends in the middle, at
# an error, ends with exit code 0 all the same.
expect_printed() {
    local expected=$1 printed
    shift
    printed=$("$wine" cscript //nologo "$@" | tr -d '\r')
    [ "$printed" = "$expected" ] || fail "$1 printed: $printed"
}
same_as_before() {
    classes after
    cmp -s "$snapshots/before" "$snapshots/after" ||
        fail "$* left: $(diff -a "$snapshots/before" "$snapshots/after" | tr -d '\0' | head -20)"
}
# One DLL alone: its members find the types of the contract.
works() { expect_printed "all checks hold" tests/late/one_library.vbs "$1" "$project"; }

# A run that was killed may have left something, and Wine's script host registers its own library
# when it first runs. Wine does not register the parser's interfaces as Windows does, so that one is
# put there that must stay.
register Tessera KelosHostKit
"$wine" cscript //nologo tests/late/script_clients.vbs "$project" >/dev/null
unregister Tessera KelosHostKit
foreign='HKLM\Software\Classes\Interface\{2933BF80-7B36-11D2-B20E-00C04F983E60}'
"$wine" reg add "$foreign\TypeLib" /ve /d '{F5078F18-C551-11D3-89B9-0000F81FE221}' /f >/dev/null
trap '"$wine" reg delete "$foreign" /f >/dev/null; rm -rf "$snapshots"' EXIT

classes before
[ -s "$snapshots/before" ] || fail "no export of the registry"

register Tessera KelosHostKit
# What registering writes, a value a line, without the folder of the DLLs; without the 32-bit view and
# the interfaces, which the platform writes from the type libraries.
classes registered
diff <(utf8 before) <(utf8 registered) |
    awk '/^> \[/ { key = substr($0, 40, length - 40) } /^> ["@]/ { print key " " substr($0, 3) }' |
    sed '/^Interface/d; /^Wow6432Node/d; s/="[A-Z]:[^"]*\\\\bin\(\\\\\)*/="/' \
        >"$snapshots/registry.txt"
cmp "$snapshots/registry.txt" tests/server/contract/registry.txt || {
    cp "$snapshots/registry.txt" "$bin/registry.txt"
    fail "tests/server/contract/registry.txt; when the change is meant, copy $bin/registry.txt there"
}
expect_printed "all checks hold" tests/late/script_clients.vbs "$project"
expect_printed $'Cover!B2: Werk\nCover!B3: AB' samples/vbscript/fixed_values.vbs "$project"
expect_printed $'Objekt\tInternal\tText (englisch)\tStep\tLimit
Pumpe\tPumpe\tCentrifugal pump\t\t\n\t\t\tfill\t\n\t\t\t\t0,5\n\t\t\t\t\n\t\t\tdrain\t
\thidden\tSouth plant\t\t\nAnlage\tAnlage\tSouth plant\t\t\n\t\t\tlast\t' \
    samples/vbscript/query_walk.vbs "$project" Plan

expect_printed 'abab Datenblatt Leer Gespeichert Rahmen Delegiert Liste Selbst' \
    tests/late/collections.js "$project"
# The examples of the reference print what stands behind their lines.
expect_printed "$(sed -n "s/.*WScript.Echo .*  ' //p" tools/reference/examples.vbs)" \
    tools/reference/examples.vbs

# The script that README.md shows, and the lines that it promises.
sed -n '/^```vb$/,/^```$/p' README.md | sed '1d;$d' | cmp -s - samples/vbscript/content_list.vbs ||
    fail "README.md does not show samples/vbscript/content_list.vbs"
"$wine" cscript //nologo samples/vbscript/content_list.vbs | tr -d '\r' | grep -x -A 1 'Pumpen!A3  Name' |
    grep -qx 'Pumpen!B3  Description' || fail "content_list.vbs"

# The sample's own mapping table, and the mapping scripts, each by a row that only it maps.
written=$snapshots/content.xml
# expect_row <pattern> <argument>…: a line of what the tool prints for an export.
expect_row() {
    local pattern=$1 printed
    shift
    printed=$("$wine" "$bin/tessera.exe" export samples/plant.xml "$@" --out "Z:$written" 2>&1 |
        tr -d '\r')
    grep -q "$pattern" <<<"$printed" || fail "export $*: no line $pattern in: $printed"
}
expect_row '^[0-9]* rows, 0 messages, 0 errors$' --document Anlagenliste
expect_row '^Pumpen  *C3 .*Process.Flow .* IO$' \
    --document Pumpendatenblatt --script samples/mapping_pumps.vbs
expect_row '^Bereiche  *B1 ' --document Pumpendatenblatt --script samples/mapping_languages.vbs

unregister Tessera
works KelosHostKit
unregister KelosHostKit
same_as_before "Tessera KelosHostKit, out in this order"

# Registered twice, taken out in the reverse order.
register Tessera KelosHostKit Tessera
unregister KelosHostKit
works Tessera
unregister Tessera
same_as_before "Tessera KelosHostKit Tessera, out in the reverse order"

register KelosHostKit Tessera
unregister KelosHostKit Tessera
same_as_before "KelosHostKit Tessera, out in this order"
unregister KelosHostKit
same_as_before "out without being in"

# For the current user alone: nothing of it is the machine's. Wine shows classes of the machine only, so
# that no client can be run.
user_classes() { "$wine" reg export 'HKCU\Software\Classes' "$snapshots/$1" /y >/dev/null 2>&1; }
"$wine" reg add 'HKCU\Software\Classes' /f >/dev/null
user_classes user_before
for dll in Tessera KelosHostKit; do
    "$wine" regsvr32 /s /n /i:user "$bin/$dll.dll" || fail "regsvr32 /n /i:user $dll"
done
user_classes user
for name in Tessera.VexScript 'Tessera.VexScript.1\CLSID' Kelos.HostKit; do
    grep -qF "[HKEY_CURRENT_USER\\Software\\Classes\\$name]" <(utf8 user) || fail "the user has no $name"
done
same_as_before "for the user"
"$wine" regsvr32 /s /n /i:nobody "$bin/Tessera.dll" && fail "registered for nobody"
for dll in KelosHostKit Tessera; do
    "$wine" regsvr32 /s /u /n /i:user "$bin/$dll.dll" || fail "regsvr32 /u /n /i:user $dll"
done
user_classes user_after
cmp -s "$snapshots/user_before" "$snapshots/user_after" || fail "for the user something is left"

# The other width's build is registered, too, as far as this one can see: the names stay until it goes.
of_32_bit='HKLM\Software\Classes\Wow6432Node\CLSID\{A4D2C3E0-7B15-4F6A-8C21-90E5D7F31C31}\InprocServer32'
library='HKLM\Software\Classes\TypeLib\{A4D2C3E0-7B15-4F6A-8C21-90E5D7F31B00}\1.0'
"$wine" reg add "$of_32_bit" /ve /d 'x86\Tessera.dll' /f >/dev/null
register Tessera
"$wine" reg add "$library\0\win32" /ve /d 'x86\Tessera.dll' /f >/dev/null
unregister Tessera
for key in 'HKLM\Software\Classes\Tessera.VexScript\CLSID' 'HKLM\Software\Classes\Tessera.VexScript.1' \
    "$library\FLAGS" "$library\0\win32" "$of_32_bit"; do
    "$wine" reg query "$key" >/dev/null 2>&1 || fail "the other width has lost $key"
done
for key in 'HKLM\Software\Classes\Tessera.HQuery' "$library\0\win64"; do
    "$wine" reg query "$key" >/dev/null 2>&1 && fail "the other width does not need $key"
done
"$wine" reg delete "${of_32_bit%\\InprocServer32}" /f >/dev/null
"$wine" reg delete "$library\0\win32" /f >/dev/null
register Tessera
unregister Tessera
same_as_before "both widths"
exit $failed
