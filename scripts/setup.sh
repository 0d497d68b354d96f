# Sourced by the scripts beside it: what they share, and the set-up of a machine that has nothing yet.

set -euo pipefail

source_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Where ccache is at hand, CMake takes it; a launcher that the caller names stays.
if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
fi

# Debian packages, each with the command or the file by which it is known to be there.
build_packages=(g++:g++ cmake:cmake ninja-build:ninja)
test_packages=(
    libgtest-dev:/usr/include/gtest/gtest.h
    libgmock-dev:/usr/include/gmock/gmock.h
    libbenchmark-dev:/usr/include/benchmark/benchmark.h
    nlohmann-json3-dev:/usr/include/nlohmann/json.hpp
    gzip:gzip
    ncompress:compress
    pkg-config:pkg-config
)
clang_packages=(clang-14:clang++-14 libclang-rt-14-dev:/usr/lib/llvm-14/lib/clang/14.0.6/include/sanitizer)
coverage_packages=(gcovr:gcovr)
package_packages=(dpkg-dev:dpkg-buildflags lintian:lintian)
reference_packages=(doxygen:doxygen)

# Everything that is not the result itself goes to standard error.
say() {
    printf '%s\n' "$*" >&2
}

# Runs a command and keeps its output back, unless it fails.
quietly() {
    local log result=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 </dev/null || result=$?
    if [ "$result" -ne 0 ]; then
        cat "$log" >&2
    fi
    rm -f "$log"
    return "$result"
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

is_there() {
    case $1 in
        /*) [ -e "$1" ] ;;
        *) command -v "$1" >/dev/null ;;
    esac
}

# Installs those of the given packages that the machine lacks.
need() {
    local entry missing=()
    for entry in "$@"; do
        is_there "${entry#*:}" || missing+=("${entry%%:*}")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    if ! command -v apt-get >/dev/null || ! { [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null; }; then
        say "Please install: ${missing[*]}"
        return 1
    fi
    say "Installing with apt-get: ${missing[*]}"
    # A mirror that cannot be asked now may have been asked before.
    quietly as_root apt-get update || say "Going on with the package lists of before."
    quietly as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}

cached() {
    grep -qs "^$2\$" "$source_dir/build/$1/CMakeCache.txt"
}

# configure PRESET [NAME=VALUE...]: nothing is done when the build directory already stands so.
configure() {
    local preset=$1 setting build_dir=$source_dir/build/$1 needed=no arguments=()
    shift
    if [ ! -e "$build_dir/build.ninja" ] || [ "$source_dir/CMakePresets.json" -nt "$build_dir/build.ninja" ]; then
        needed=yes
    fi
    for setting in "$@"; do
        cached "$preset" "${setting%%=*}:BOOL=${setting#*=}" || needed=yes
        arguments+=("-D$setting")
    done
    if [ "$needed" = yes ]; then
        (cd "$source_dir" && quietly cmake --preset "$preset" "${arguments[@]}")
    fi
}

# build PRESET [TARGET...]: says nothing but what goes wrong.
build() {
    local build_dir=$source_dir/build/$1 targets=()
    shift
    if [ $# -gt 0 ]; then
        targets=(--target "$@")
    fi
    quietly cmake --build "$build_dir" "${targets[@]}" -- --quiet
}
