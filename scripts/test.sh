#!/usr/bin/env bash
# Builds everything as users get it and runs all tests. Arguments go to ctest: scripts/test.sh -R core

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need "${build_packages[@]}" "${test_packages[@]}"
if [ ! -e "$source_dir/build/release/tests/CTestTestfile.cmake" ]; then
    say "Building the program and its tests ..."
fi
configure release QUILLON_BUILD_TESTS=ON QUILLON_BUILD_BENCH=ON QUILLON_BUILD_EXAMPLES=ON
build release

cd "$source_dir"
ctest --preset release --parallel "$(nproc)" "$@"
