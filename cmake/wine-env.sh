# The environment of the project's private Wine prefix; to be sourced.
#
# TESSERA_BUILD may name another build folder than build/.
tessera_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX="${TESSERA_BUILD:-$tessera_root/build}/wine"
export WINEARCH=win64
export WINEDEBUG="${WINEDEBUG:--all}"
# No .NET, no browser, and no debugger that dumps a crash: the exit code says it.
export WINEDLLOVERRIDES='mscoree,mshtml=;winedbg.exe=d'
# The user's locale decides separators and date forms: the same on every machine, unless
# TESSERA_LOCALE asks for another one.
export LC_ALL="${TESSERA_LOCALE:-C.UTF-8}"

# Makes the prefix when there is none. Windows are drawn by Wine's null driver, so that no display
# is needed; TESSERA_DRIVER=x11 asks for real drawing.
tessera_wine_prefix() {
    if [ ! -e "$WINEPREFIX/.ready" ]; then
        echo "-- making the Wine prefix (once)" >&2
        mkdir -p "$WINEPREFIX"
        DISPLAY='' wineboot -i >/dev/null 2>&1
        wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d "${TESSERA_DRIVER:-null}" /f \
            >/dev/null 2>&1
        wineserver -w
        touch "$WINEPREFIX/.ready"
    fi
}
