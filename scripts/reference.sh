#!/usr/bin/env bash
# Makes the reference of the library from its headers: build/reference/html/index.html. Fails when a public name is not
# described.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need "${reference_packages[@]}"
version=$(sed -n 's/.*version\[\] = "\(.*\)".*/\1/p' "$source_dir/quillon/tool/Version.h")
output=$source_dir/build/reference

mkdir -p "$output"
cd "$source_dir"
{
    cat docs/Doxyfile
    printf 'PROJECT_NUMBER = %s\nOUTPUT_DIRECTORY = %s\n' "$version" "$output"
} | doxygen -
printf '%s\n' "$output/html/index.html"
