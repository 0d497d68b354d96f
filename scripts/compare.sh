#!/usr/bin/env bash
# Builds the release and measures quillon, its yardstick and, where they are installed, check_urdf (package
# liburdfdom-tools) and assimp (package assimp-utils) on inputs of equal body count, side by side.
#
#   scripts/compare.sh [BODIES...]    50 1000 10000 100000 when none are named

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

build_dir=$source_dir/build/release

need "${build_packages[@]}"
if [ ! -e "$build_dir/build.ninja" ]; then
    configure release QUILLON_BUILD_TESTS=OFF QUILLON_BUILD_EXAMPLES=OFF QUILLON_BUILD_BENCH=ON
else
    configure release QUILLON_BUILD_BENCH=ON
fi
build release quillon_tool yardstick compare_readers generate_family generate_urdf generate_bvh
exec "$build_dir/bench/compare_readers" "$build_dir" "$@"
