#!/usr/bin/env bash
# Registers both DLLs in a prefix of its own, runs script clients against them by name, and takes
# the registration out again. Arguments: the folder of the DLLs, the folder of the sources.
set -u
bin=$1
source_dir=$2
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

"$wine" cscript //nologo tests/late/script_clients.vbs tests/support/small_project.xml || fail "script_clients.vbs"
printed=$("$wine" cscript //nologo samples/fixed_values.vbs tests/support/small_project.xml | tr -d '\r')
[ "$printed" = $'Cover!B2: Werk\nCover!B3: AB' ] || fail "fixed_values.vbs printed: $printed"

for dll in Tessera KelosHostKit; do
    "$wine" regsvr32 /s /u "$bin/$dll.dll" || fail "regsvr32 /u $dll"
done
for name in Tessera.Tessera Tessera.SCGlobal.1 Kelos.Service; do
    key_exists "$name" && fail "$name is still registered"
done
exit $failed
