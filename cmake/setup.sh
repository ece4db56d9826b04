# What `run` and `test` share: installing what is missing and building; to be sourced after
# wine-env.sh.

# Packages that every build needs; callers may add theirs before calling tessera_install.
tessera_packages=(cmake ninja-build g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
    mingw-w64-tools faketime libz-mingw-w64-dev nlohmann-json3-dev libcli11-dev wine wine64
    libwine-dev)

tessera_is_installed() {
    [ "$(dpkg-query -W -f '${db:Status-Abbrev}' "$1" 2>/dev/null | cut -c1-2)" = ii ]
}

# Installs the missing ones of tessera_packages. Nothing is fetched when all are there.
tessera_install() {
    local package missing=() as_root=()
    for package in "${tessera_packages[@]}"; do
        tessera_is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "-- installing ${missing[*]}" >&2
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -q >/dev/null
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}" >/dev/null
}

# Configures and builds a preset, quietly unless it fails.
tessera_build() {
    local preset=$1 log
    log=$(mktemp)
    echo "-- building ($preset)" >&2
    if ! { cmake --preset "$preset" && cmake --build "build/$preset"; } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}
