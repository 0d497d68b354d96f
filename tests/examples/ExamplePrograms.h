#pragma once

// The example programs as the tests run them: in a directory of their own, over copies of the families.

#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::test {

/// What a run of a program gave.
struct ProgramRun {
    std::string outcome; ///< the exit code in decimal, or the name of a signal
    std::string out;
    std::string err;

    friend bool operator==(const ProgramRun&, const ProgramRun&) = default;
    friend std::ostream& operator<<(std::ostream& output, const ProgramRun& run) {
        return output << run.outcome << "\nstdout: \"" << run.out << "\"\nstderr: \"" << run.err << '"';
    }
};

inline std::string examplesFolder(const std::string& family) {
    return std::string(QUILLON_SOURCE_DIR) + "/examples/" + family;
}

/// Runs `{program, argument...}` with this working directory, behind the words of `launcher`.
inline ProgramRun runExample(std::vector<std::string> command, const support::ScratchDirectory& directory,
                             const std::vector<std::string>& launcher = {}) {
    command.front() = std::string(QUILLON_EXAMPLE_PROGRAMS) + "/" + command.front();
    command.insert(command.begin(), launcher.begin(), launcher.end());
    support::ChildResult run = support::runProgram(command, {.directory = directory.path()});
    return {run.outcome, run.out, run.err};
}

/// The same with a standard output that takes nothing.
inline ProgramRun runOnFullOutput(const std::vector<std::string>& command,
                                  const support::ScratchDirectory& directory) {
    return runExample(command, directory, {"/bin/sh", "-c", R"(exec "$0" "$@" > /dev/full)"});
}

/// A printed chain, of lines as they are wrapped.
inline std::string printed(const std::string& label, const std::vector<std::string>& lines) {
    std::string text = "\n\n";
    for (const std::string& line : lines) {
        text += (text.size() == 2 ? label : std::string(label.size(), ' ')) + line + "\n";
    }
    return text + "\n";
}

inline std::string printedError(const std::vector<std::string>& lines) {
    return printed("ERROR: ", lines);
}

inline std::string printedWarning(const std::vector<std::string>& lines) {
    return printed("WARNING: ", lines);
}

/// Puts copies of the files of a family into a directory.
inline void copyFamily(const std::string& family, const support::ScratchDirectory& directory) {
    for (const auto& entry : std::filesystem::directory_iterator(examplesFolder(family))) {
        std::filesystem::copy(entry.path(), directory / entry.path().filename().string());
    }
}

/// Changes a text that stands in a file once.
inline void replaceIn(const std::string& path, std::string_view text, std::string_view replacement) {
    std::string content = support::readBytes(path);
    const std::size_t place = content.find(text);
    ASSERT_NE(place, std::string::npos) << text;
    ASSERT_EQ(content.find(text, place + 1), std::string::npos) << text;
    support::writeBytes(path, content.replace(place, text.size(), replacement));
}

/// The names of all that lies in a directory.
inline std::set<std::string> namesIn(const std::string& directory) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

} // namespace quillon::test
