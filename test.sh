#!/usr/bin/env bash
# Installs what is missing, builds and runs the tests.
# usage: ./test.sh [--no-install] [--dev] [--asan] [--tsan] [--clang] [--coverage] [--all]
#   --dev    the tests as developers run them (the default)
#   --asan   the same under the address and undefined behaviour sanitizers
#   --tsan   the same under the thread sanitizer
#   --clang  the same built with clang
#   --coverage  the same with counters; prints which lines and branches of the library were run, and fails when
#               they are too few (gcovr.cfg)
#   --all    all of these but the coverage, one after the other
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
        --coverage) presets+=(coverage) ;;
        --all) presets+=(dev asan-ubsan tsan dev-clang) ;;
        *)
            echo "test.sh: $argument: not one of --no-install --dev --asan --tsan --clang --coverage --all" >&2
            exit 2
            ;;
    esac
done
[ ${#presets[@]} -gt 0 ] || presets=(dev)

if [ "$install" = yes ]; then
    packages_install packages/apt.txt packages/apt-test.txt
    case " ${presets[*]} " in *" dev-clang "*) packages_install packages/apt-check.txt ;; esac
    case " ${presets[*]} " in *" coverage "*) packages_install packages/apt-coverage.txt ;; esac
fi
for preset in "${presets[@]}"; do
    if [ "$preset" = coverage ] && [ -d build/coverage ]; then
        find build/coverage -name '*.gcda' -delete # the counts of earlier runs
    fi
    cmake --workflow --preset "$preset"
    if [ "$preset" = coverage ]; then
        tools/coverage.sh build/coverage
    fi
done
