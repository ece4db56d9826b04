#!/usr/bin/env bash
# Builds the benchmarks and runs them. They print ratios within one run: absolute times differ from
# machine to machine.
set -euo pipefail
cd "$(dirname "$0")"
source cmake/wine-env.sh
source cmake/setup.sh

tessera_packages+=(g++)
tessera_install
tessera_build bench
exec build/bench/bin/codec_bench "$@"
