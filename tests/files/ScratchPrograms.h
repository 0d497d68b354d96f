#pragma once

#include "tests/support/ScratchDirectory.h"

#include <filesystem>
#include <string>

namespace quillon::test {

/// Makes a program of the body of a shell script, with all directories above it.
inline void writeProgram(const std::string& path, const std::string& body) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    support::writeBytes(path, "#!/bin/sh\n" + body + "\n");
    std::filesystem::permissions(path, std::filesystem::perms::all);
}

/// The body of a script that prints its name and its arguments, each in brackets, on one line.
inline constexpr const char* printArguments = "line=${0##*/}\n"
                                              "for argument; do line=\"$line [$argument]\"; done\n"
                                              "echo \"$line\"";

} // namespace quillon::test
