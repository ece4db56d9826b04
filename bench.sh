#!/usr/bin/env bash
# Builds the benchmarks and runs them: the codecs natively against their reference, then the
# component and tessera.exe under Wine against the platform's interfaces called directly. Every
# figure is a ratio of medians within this run: absolute times differ from machine to machine. The
# table goes to the console, the figures to build/bench.json.
#     ./bench.sh             all of them, in some minutes
#     ./bench.sh --list      the names of the component's benchmarks
#     ./bench.sh --profile   where the time of a row goes
#     ./bench.sh write known only the component's whose names begin so
set -euo pipefail
cd "$(dirname "$0")"
source cmake/wine-env.sh
source cmake/setup.sh

tessera_packages+=(g++ python3)
tessera_install
tessera_build bench
tessera_build bench-windows
tessera_wine_prefix
wineserver -p >/dev/null 2>&1 </dev/null || true  # an earlier run's may be there still
wine cmd /c exit >/dev/null 2>&1 </dev/null
trap 'wineserver -k || true' EXIT

status=0
[ $# -gt 0 ] || build/bench/bin/codec_bench || status=1
figures=build/bench.figures
: >$figures
component=(wine build/bench-windows/bin/component_bench.exe)
if [ "${1-}" = --list ] || [ "${1-}" = --profile ]; then
    "${component[@]}" "$1"
    exit
fi
echo
echo "Component and program: measuring"
"${component[@]}" "$@" </dev/null | tee -a $figures | sed 's/", "work".*//; s/.*"/    /'
# The codecs' two programs take turns.
for _ in 1 2 3; do
    build/bench/bin/codec_bench --figures >>$figures
    "${component[@]}" codec </dev/null >>$figures
done
python3 bench/report.py $figures build/bench.json "$@" || status=1
exit $status
