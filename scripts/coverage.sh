#!/usr/bin/env bash
# Runs all tests on a build that counts the lines run, and prints the line coverage of the library.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

build_dir=$source_dir/build/coverage

need "${build_packages[@]}" "${test_packages[@]}" "${coverage_packages[@]}"
configure coverage QUILLON_BUILD_TESTS=ON
build coverage

cd "$source_dir"
find "$build_dir" -name '*.gcda' -delete
quietly ctest --preset coverage --parallel "$(nproc)"
gcovr --root "$source_dir" --filter 'quillon/' --print-summary "$@" "$build_dir"
