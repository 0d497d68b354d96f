#!/usr/bin/env bash
# Builds the release and measures whole runs over generated families; beside them check_urdf, where it is installed
# (package liburdfdom-tools).

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

build_dir=$source_dir/build/release
bench_dir=$build_dir/bench

need "${build_packages[@]}"
if [ ! -e "$build_dir/build.ninja" ]; then
    configure release QUILLON_BUILD_TESTS=OFF QUILLON_BUILD_EXAMPLES=OFF QUILLON_BUILD_BENCH=ON
else
    configure release QUILLON_BUILD_BENCH=ON
fi
build release quillon_tool info_benchmark generate_family generate_urdf hello_ostream

arguments=("$build_dir/quillon" "$bench_dir/hello_ostream" "$bench_dir/generate_family")
if command -v check_urdf >/dev/null; then
    arguments+=("$(command -v check_urdf)" "$bench_dir/generate_urdf")
fi
exec "$bench_dir/info_benchmark" "${arguments[@]}"
