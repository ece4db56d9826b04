#!/usr/bin/env bash
# Makes pages with tessera.exe and looks at them in a browser.
#     preview_test.sh WINE-ENVIRONMENT TESSERA.EXE CHROMIUM
set -eu
tests=$(cd "$(dirname "$0")" && pwd)
source "$1"
program=$2
browser=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

python3 "$tests/pages.py"
for name in empty hostile large; do
    wine "$program" preview $name.xml --out $name.html --quiet
done
wine "$program" preview new.xml --against old.xml --out changes.html --quiet
python3 "$tests/page_test.py" "$browser" "$folder"
