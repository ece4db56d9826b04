#!/usr/bin/env bash
# Takes a picture of the progress form in each language, on a private X display and in a Wine
# prefix of its own:
#
#     tools/form_picture/picture.sh [FOLDER]
#
# writes FOLDER/progress-form-de.png and FOLDER/progress-form-en.png (build/pictures/ if no folder
# is named). Runs the programs of the test build, or those in TESSERA_BIN.
set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
bin=${TESSERA_BIN:-$root/build/test/bin}
mkdir -p "${1:-$root/build/pictures}"
out=$(cd "${1:-$root/build/pictures}" && pwd)
if [ ! -e "$bin/form_picture.exe" ]; then
    echo "picture.sh: there is no form_picture.exe in $bin; build the tests first" >&2
    exit 1
fi

# Xvfb takes a free display and tells its number.
number=$(mktemp)
Xvfb -displayfd 3 -screen 0 800x600x24 -nolisten tcp 3>"$number" 2>/dev/null &
server=$!
trap 'kill "$server" 2>/dev/null; rm -f "$number"' EXIT
until [ -s "$number" ]; do
    kill -0 "$server" 2>/dev/null || { echo "picture.sh: Xvfb does not start" >&2; exit 1; }
    sleep 0.1
done

export TESSERA_BUILD=$out TESSERA_DRIVER=x11
source "$root/cmake/wine-env.sh"
tessera_wine_prefix
DISPLAY=:$(cat "$number")
export DISPLAY
# Without a window manager, Wine itself draws the title bar.
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1

cd "$out"
for language in de en; do
    "$root/cmake/wine" "$bin/form_picture.exe" "$language" "progress-form-$language.png"
    echo "$out/progress-form-$language.png"
done
wineserver -w
