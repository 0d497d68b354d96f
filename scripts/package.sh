#!/usr/bin/env bash
# Builds two Debian packages of what stands here and has lintian look at them:
#
#   quillon           the program, its man pages, completions and the examples
#   libquillon-dev    the library with its headers and the documentation
#
# They lie in build/package afterwards. DEBFULLNAME and DEBEMAIL name the maintainer, as for Debian's own tools.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

work=$source_dir/build/package
build_dir=$work/build
staged=$work/staged
version=$(sed -n 's/.*version\[\] = "\(.*\)".*/\1/p' "$source_dir/quillon/tool/Version.h")
maintainer="${DEBFULLNAME:-The quillon authors} <${DEBEMAIL:-quillon@packages.invalid}>"
date=$(git -C "$source_dir" log -1 --format=%cD 2>/dev/null || date -R)

need "${build_packages[@]}" "${package_packages[@]}"
architecture=$(dpkg --print-architecture)
library_dir=lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)

# Debian's compiler flags, and a program that shares the system's libraries, so that their updates reach it.
build_all() {
    say "Building version $version ..."
    quietly env CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
        LDFLAGS="$(dpkg-buildflags --get LDFLAGS)" \
        cmake -S "$source_dir" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_CXX_FLAGS_RELEASE=-DNDEBUG -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_INSTALL_LIBDIR="$library_dir" \
        -DQUILLON_BUILD_TESTS=OFF -DQUILLON_BUILD_BENCH=OFF -DQUILLON_BUILD_EXAMPLES=OFF -DQUILLON_STATIC_TOOL=OFF
    quietly cmake --build "$build_dir"
    rm -rf "$staged"
    quietly env DESTDIR="$staged/all" cmake --install "$build_dir"
}

# move_to PACKAGE PATH...: from what was installed into the tree of a package.
move_to() {
    local package=$1 path
    shift
    for path in "$@"; do
        mkdir -p "$staged/$package/$(dirname "$path")"
        mv "$staged/all/$path" "$staged/$package/$path"
    done
}

# Every package says in its folder of /usr/share/doc who has the rights, and what has changed.
add_documents() {
    local folder=$staged/$1/usr/share/doc/$1
    mkdir -p "$folder"
    cat >"$folder/copyright" <<END
quillon, version $version

Copyright (c) $(date -d "$date" +%Y) the quillon authors.

No licence has been chosen: all rights stay with the quillon authors.
END
    cat >"$folder/changelog" <<END
quillon ($version) unstable; urgency=medium

$(changes_of_version)

 -- $maintainer  $date
END
    gzip -9n "$folder/changelog"
}

# The entries of this version, a list in CHANGELOG.md, in the form of a Debian changelog.
changes_of_version() {
    awk -v heading="## $version" '
        /^## / { inside = $0 == heading }
        inside && /^- / { sub(/^- /, "  * "); print; next }
        inside && /^  / { print "  " $0 }
    ' "$source_dir/CHANGELOG.md" | fmt --tagged-paragraph --width=78
}

split_into_packages() {
    move_to quillon usr/bin/quillon usr/share/man usr/share/bash-completion
    mkdir -p "$staged/quillon/usr/share/zsh/vendor-completions"
    mv "$staged/all/usr/share/zsh/site-functions/_quillon" "$staged/quillon/usr/share/zsh/vendor-completions/"
    move_to libquillon-dev usr/include "usr/$library_dir"
    add_documents quillon
    add_documents libquillon-dev
    cp -r "$source_dir/examples" "$staged/quillon/usr/share/doc/quillon/"
    cp -r "$source_dir/docs" "$staged/libquillon-dev/usr/share/doc/libquillon-dev/"
    rm -f "$staged/libquillon-dev/usr/share/doc/libquillon-dev/docs/"{*.awk,*.dox,Doxyfile}
    # The pages refer to the examples beside them.
    ln -s ../quillon/examples "$staged/libquillon-dev/usr/share/doc/libquillon-dev/examples"

    find "$staged/quillon/usr/share/man" -type f -exec gzip -9n {} +
    strip --remove-section=.comment --remove-section=.note "$staged/quillon/usr/bin/quillon"
    strip --strip-debug --remove-section=.comment --enable-deterministic-archives \
        "$staged/libquillon-dev/usr/$library_dir/libquillon.a"
    find "$staged" -type d -exec chmod 755 {} +
    find "$staged" -type f ! -path '*/bin/*' -exec chmod 644 {} +
}

# The packages of the shared libraries that the program uses.
library_packages() {
    mkdir -p "$work/shlibs/debian"
    printf 'Source: quillon\n' >"$work/shlibs/debian/control"
    (cd "$work/shlibs" && dpkg-shlibdeps -O "$staged/quillon/usr/bin/quillon" 2>/dev/null) |
        sed -n 's/^shlibs:Depends=//p'
}

# make_package NAME FIELDS DESCRIPTION: FIELDS are further lines of the control file.
make_package() {
    local name=$1 folder=$staged/$1
    mkdir -p "$folder/DEBIAN"
    (cd "$folder" && find usr -type f -exec md5sum {} + | LC_ALL=C sort -k 2 >DEBIAN/md5sums)
    cat >"$folder/DEBIAN/control" <<END
Package: $name
Source: quillon
Version: $version
Architecture: $architecture
Maintainer: $maintainer
Installed-Size: $(du -ks --apparent-size "$folder/usr" | cut -f 1)
Priority: optional
$2
Description: $3
END
    sed -i '/^Source: '"$name"'$/d' "$folder/DEBIAN/control"
    quietly dpkg-deb --root-owner-group --build "$folder" "$work"
}

build_all
split_into_packages
rm -f "$work"/*.deb
make_package quillon "Section: utils
Depends: $(library_packages)" "report on the data files of a motion-capture problem
 A solving system for motion capture describes a problem in a family of text
 files. This program reads such a family and prints it as one report, a line
 for each object."
make_package libquillon-dev "Section: libdevel
Recommends: quillon (= $version)" "readers and writers for the data files of motion-capture problems
 A solving system for motion capture describes a problem in a family of text
 files. This package holds a static library that reads, checks, changes and
 writes them, with its headers and documentation."

lintian --allow-root --fail-on error,warning "$work"/*.deb
for package in "$work"/*.deb; do
    printf '%s\n' "$package"
done
