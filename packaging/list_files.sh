#!/usr/bin/env bash
# The installer's macros of a folder: one that installs the files of every folder in it, each by name,
# and one that removes them all, and the folders when they are empty.
#     packaging/list_files.sh FOLDER
set -euo pipefail
stage=$1

# install_files <macro> <file>…: the paths begin with "./"; makensis wants its own slashes in the target.
install_files() {
    local file folder last=
    echo "!macro $1"
    shift
    for file; do
        folder=$(dirname "${file#./}")
        folder=${folder#.}
        if [ "$folder" != "$last" ] || [ "$file" = "$1" ]; then
            echo "  SetOutPath \"\$INSTDIR${folder:+\\${folder//\//\\}}\""
        fi
        last=$folder
        echo "  File \"\${STAGE}/${file#./}\""
    done
    echo "!macroend"
}

cd "$stage"
mapfile -t root < <(find . -maxdepth 1 -type f | sort)
install_files InstallRoot "${root[@]}"
for macro in X64:x64 X86:x86 Include:include Samples:samples Documents:docs; do
    mapfile -t files < <(find "./${macro#*:}" -type f | sort)
    install_files "Install${macro%:*}" "${files[@]}"
done

echo "!macro RemoveFiles"
find . -type f -printf '%P\n' | sort | sed 's|/|\\|g; s|.*|  Delete /REBOOTOK "$INSTDIR\\&"|'
find . -mindepth 1 -type d -printf '%P\n' | sort -r | sed 's|/|\\|g; s|.*|  RMDir "$INSTDIR\\&"|'
echo "!macroend"
