#!/usr/bin/env bash
# What ./package made, tried as its users do, in a Wine prefix that nothing else uses: the zip unpacked
# anywhere runs without registration; the installer installs for all users and for one, the samples run,
# a broken installation is repaired, and when it is removed registry and folders are as they were before.
# Argument: the folder of the packages.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
packages=$(cd "$1" && pwd)
export TESSERA_BUILD=$packages
source "$root/cmake/wine-env.sh"
source "$root/cmake/setup.sh"
wine=$root/cmake/wine
installer=$(echo "$packages"/KelosTessera-*-setup.exe)
zip=$(echo "$packages"/KelosTessera-*[0-9].zip)
expected=$root/tests/samples/export_and_query.txt
folder=$(mktemp -d)
drive=$WINEPREFIX/drive_c
failed=0

fail() { echo "FAILED: $*"; failed=1; }
rm -rf "$WINEPREFIX"
tessera_wine_prefix
trap 'rm -rf "$folder"' EXIT

# The uninstaller works on after it has returned: Wine is asked to wait for its programs.
ended() { wineserver -w; }
# state <name>: registry and folders, without what every start of a program changes.
state() {
    local hive
    for hive in HKLM HKCU; do
        "$wine" reg export "$hive\\Software" "$folder/hive" /y >/dev/null 2>&1
        iconv -f UTF-16 -t UTF-8 "$folder/hive" | tr -d '\r'
    done >"$folder/$1.registry"
    ended
    find "$drive" -path '*/Temp/*' -prune -o -print | sort >"$folder/$1.files"
    [ -s "$folder/$1.registry" ] || fail "no export of the registry"
}
same_as_before() {
    local what
    state after
    for what in registry files; do
        diff "$folder/before.$what" "$folder/after.$what" >"$folder/difference" ||
            fail "$1 left in the $what: $(head -20 "$folder/difference")"
    done
}
# prints <name> <lines> <program> <argument>…: run in the folder of the samples.
prints() {
    local name=$1 lines=$2
    shift 2
    "$wine" "$@" 'samples\plant.xml' "Z:$folder/content.xml" | tr -d '\r' >"$folder/printed"
    diff "$lines" "$folder/printed" >"$folder/difference" || fail "$name: $(head -5 "$folder/difference")"
}
sed 's/…/./' "$expected" | iconv -f UTF-8 -t CP437 >"$folder/console.txt"

# dead_links <folder>: what its pages link to and is not there.
dead_links() {
    cd "$1" || return
    grep -roE --include='*.md' '\]\([^)#:]+[)#]' . | while IFS=: read -r page link; do
        link=${link#*(}
        [ -e "$(dirname "$page")/${link%?}" ] || echo "$page: ${link%?}"
    done
}

echo "-- the zip, without registration"
# The script host registers a library of its own when it first runs.
"$wine" cscript //nologo "Z:$root/tests/late/one_library.vbs" Tessera >/dev/null 2>&1
# What every Windows has and Wine does not.
for key in Classes 'Microsoft\Windows\CurrentVersion\Uninstall'; do
    "$wine" reg add "HKCU\\Software\\$key" /f >/dev/null
done
mkdir -p "$drive/users/${USER:-root}/AppData/Local/Programs"
state before
unpacked="$folder/Ausgepackt hier"
mkdir "$unpacked"
(cd "$unpacked" && unzip -q "$zip" && mv KelosTessera-*/* .)
[ "$(dead_links "$unpacked")" ] && fail "dead links: $(dead_links "$unpacked")"
grep -rlF "$root" "$unpacked" && fail "this machine's path in a file of the zip"
(
    cd "$unpacked" || exit 1
    "$wine" x64/tessera.exe export samples/plant.xml --document Kurzliste --out content.xml |
        grep '^8 rows' >/dev/null || fail "tessera.exe of the zip"
    for binding in early late; do
        x86_64-w64-mingw32-g++-posix -std=c++20 -static -municode -I include \
            -o x64/export_and_query.exe samples/cpp_${binding}_bound/export_and_query.cpp \
            -lole32 -loleaut32 -luuid 2>/dev/null || fail "the $binding-bound sample does not compile"
        cp samples/registration_free/export_and_query.exe.manifest x64/
        prints "the $binding-bound sample of the zip" "$expected" x64/export_and_query.exe
    done
    exit $failed
) || failed=1
same_as_before "the zip"

# works <folder> <hive>: the installation. Wine creates classes only by what is registered for all users.
works() {
    cd "$1" || { fail "no folder $1"; return; }
    registered "$2" 'Tessera.VexScript' && registered "$2" 'Kelos.HostKit' || fail "not registered in $2"
    if [ "$2" = HKLM ]; then
        prints "the VBScript sample" "$folder/console.txt" \
            cscript //nologo 'samples\vbscript\export_and_query.vbs'
        prints "the JScript sample" "$folder/console.txt" \
            cscript //nologo 'samples\jscript\export_and_query.js'
    fi
    "$wine" x64/tessera.exe export samples/plant.xml --document Kurzliste --out "Z:$folder/content.xml" |
        grep '^8 rows' >/dev/null || fail "tessera.exe as it is installed"
    cd "$root" || exit 1
}
# registered <hive> <class>
registered() { "$wine" reg query "$1\\Software\\Classes\\$2" >/dev/null 2>&1; }

# installed <scope> <hive> <the other one>: installs, breaks and repairs, and removes again.
installed() {
    local scope=$1 hive=$2 other=$3 key='Software\KelosTessera' target installation
    echo "-- installed for $scope"
    "$wine" "$installer" /S "/$scope" || fail "the installer ends with $?"
    target=$("$wine" reg query "$hive\\$key" /v InstallFolder | tr -d '\r' | sed -n 's/.*REG_SZ *//p')
    [ "$target" ] || { fail "no folder in the registry"; return; }
    installation=$drive/$(sed 's|^C:\\||; s|\\|/|g' <<<"$target")
    registered "$other" Tessera.VexScript && fail "registered in $other, too"
    diff <(unzip -Z1 "$zip" | cut -d / -f 2- | sort) \
        <(cd "$installation" && find . -type f ! -name uninstall.exe ! -name '*-setup.exe' -printf '%P\n' |
            sort) || fail "the installer has other files than the zip"
    cmp "$installation/x64/Tessera.dll" "$unpacked/x64/Tessera.dll" || fail "not the DLL of the zip"
    works "$installation" $hive

    rm "$installation/x64/Kelos.tlb" "$installation/x64/KelosHostKit.dll"
    "$wine" reg delete "$hive\\Software\\Classes\\Tessera.VexScript" /f >/dev/null
    "$wine" "$target\\KelosTessera-setup.exe" /S "/$scope" || fail "the repair ends with $?"
    works "$installation" $hive

    echo mine >"$installation/mine.txt"
    "$wine" "$target\\uninstall.exe" /S || fail "the removal ends with $?"
    ended
    [ "$(find "$installation" -type f)" = "$installation/mine.txt" ] ||
        fail "the removal does not leave exactly what is not its own: $(find "$installation")"
    rm -rf "$installation"
    same_as_before "$scope"
}
installed AllUsers HKLM HKCU
installed CurrentUser HKCU HKLM
exit $failed
