#!/usr/bin/env bash
# Builds the program and prints the report on a problem.
#
#   scripts/demo.sh            the example, examples/walker/walker.zvx, in its folder
#   scripts/demo.sh FILE.zvx   that file, as `quillon info FILE.zvx` would from here

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

tool=$source_dir/build/release/quillon

need "${build_packages[@]}"
if [ ! -e "$tool" ]; then
    say "Building the program ..."
fi
if [ ! -e "$source_dir/build/release/build.ninja" ]; then
    configure release QUILLON_BUILD_TESTS=OFF QUILLON_BUILD_BENCH=OFF QUILLON_BUILD_EXAMPLES=OFF
fi
build release quillon_tool

if [ $# -eq 0 ]; then
    cd "$source_dir/examples/walker"
    set -- walker.zvx
fi
exec "$tool" info "$@"
