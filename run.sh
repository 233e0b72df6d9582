#!/usr/bin/env bash
# Installs what is missing, builds the library and writes the masks of a common production mode and the report about it.
# usage: ./run.sh [--no-install] [options of "dotweave build" ...]
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

if [ "${1:-}" = --no-install ]; then
    shift
else
    packages_install packages/apt.txt
fi
cmake --workflow --preset release
echo
build/release/tools/dotweave/dotweave build --out out/masks "$@"
build/release/tools/dotweave/dotweave report --preset production --out out/report.html
