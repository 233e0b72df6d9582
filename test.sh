#!/usr/bin/env bash
# Installs what is missing, builds and runs the tests.
# usage: ./test.sh [--no-install] [--dev] [--asan] [--tsan] [--clang] [--all]
#   --dev    the tests as developers run them (the default)
#   --asan   the same under the address and undefined behaviour sanitizers
#   --tsan   the same under the thread sanitizer
#   --clang  the same built with clang
#   --all    all of these, one after the other
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

install=yes
presets=()
for argument in "$@"; do
    case "$argument" in
        --no-install) install=no ;;
        --dev) presets+=(dev) ;;
        --asan) presets+=(asan-ubsan) ;;
        --tsan) presets+=(tsan) ;;
        --clang) presets+=(dev-clang) ;;
        --all) presets+=(dev asan-ubsan tsan dev-clang) ;;
        *)
            echo "test.sh: $argument: not one of --no-install --dev --asan --tsan --clang --all" >&2
            exit 2
            ;;
    esac
done
[ ${#presets[@]} -gt 0 ] || presets=(dev)

if [ "$install" = yes ]; then
    packages_install packages/apt.txt packages/apt-test.txt
    case " ${presets[*]} " in *" dev-clang "*) packages_install packages/apt-check.txt ;; esac
fi
for preset in "${presets[@]}"; do
    cmake --workflow --preset "$preset"
done
