#!/usr/bin/env bash
# Installs what is missing, builds and runs the tests.
# usage: ./test.sh [--no-install] [--dev] [--asan] [--tsan] [--clang] [--coverage] [--fuzz SECONDS]
#                  [--browser] [--all]
#   --dev    the tests as developers run them (the default)
#   --asan   the same under the address and undefined behaviour sanitizers
#   --tsan   the same under the thread sanitizer
#   --clang  the same built with clang
#   --coverage  the same with counters; prints which lines and branches of the library were run, and fails when
#               they are too few (gcovr.cfg)
#   --fuzz SECONDS  runs each fuzzer that long from its corpus and fails when one finds something
#   --browser  uses the report of the dev build in headless Chromium, as its reader would
#   --all    all of these but the coverage, the fuzzers and the browser, one after the other
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

install=yes
presets=()
browser=no
fuzzSeconds=
while [ $# -gt 0 ]; do
    case "$1" in
        --no-install) install=no ;;
        --dev) presets+=(dev) ;;
        --asan) presets+=(asan-ubsan) ;;
        --tsan) presets+=(tsan) ;;
        --clang) presets+=(dev-clang) ;;
        --coverage) presets+=(coverage) ;;
        --browser) browser=yes ;;
        --all) presets+=(dev asan-ubsan tsan dev-clang) ;;
        --fuzz)
            if ! [[ "${2:-}" =~ ^[1-9][0-9]{0,5}$ ]]; then
                echo "test.sh: --fuzz needs the seconds for each fuzzer, from 1 to 999999" >&2
                exit 2
            fi
            presets+=(fuzz)
            fuzzSeconds=$2
            shift
            ;;
        *)
            echo "test.sh: $1: not one of --no-install --dev --asan --tsan --clang --coverage --fuzz --browser --all" >&2
            exit 2
            ;;
    esac
    shift
done
[ ${#presets[@]} -gt 0 ] || [ "$browser" = yes ] || presets=(dev)

if [ "$install" = yes ]; then
    packages_install packages/apt.txt packages/apt-test.txt
    case " ${presets[*]} " in *" dev-clang "*) packages_install packages/apt-check.txt ;; esac
    case " ${presets[*]} " in *" coverage "*) packages_install packages/apt-coverage.txt ;; esac
    case " ${presets[*]} " in *" fuzz "*) packages_install packages/apt-fuzz.txt ;; esac
    if [ "$browser" = yes ]; then packages_install packages/apt-browser.txt; fi
fi
for preset in "${presets[@]}"; do
    if [ "$preset" = coverage ] && [ -d build/coverage ]; then
        find build/coverage -name '*.gcda' -delete # the counts of earlier runs
    fi
    cmake --workflow --preset "$preset"
    if [ "$preset" = coverage ]; then
        tools/coverage.sh build/coverage
    fi
    if [ "$preset" = fuzz ]; then
        tools/fuzz.sh build/fuzz "$fuzzSeconds"
    fi
done
if [ "$browser" = yes ]; then
    cmake --preset dev
    cmake --build --preset dev --target dotweave_tool
    /usr/bin/python3 tests/browser/check_browser.py build/dev/tools/dotweave/dotweave
fi
