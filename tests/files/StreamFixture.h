#pragma once

#include "tests/files/FileTestSupport.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <istream>
#include <iterator>
#include <string>
#include <thread>

namespace quillon::test {

/// A scratch directory with files in all forms, and stand-ins for the image tools on a search path of its
/// own: they copy what they are given.
class StreamFixture : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directory(scratch / "bin");
        addTool("djpeg", "#!/bin/sh\ntest \"$1\" = -gsi && exec cat \"$2\"\n");
        addTool("cjpeg", "#!/bin/sh\ntest \"$1\" = -gsi && exec cat\n");
    }

    void addTool(const char* name, const char* script) const {
        const std::string path = (scratch / "bin") + "/" + name;
        support::writeBytes(path, script);
        chmod(path.c_str(), 0755);
    }

    std::string at(const char* name) const { return scratch / name; }

    /// Writes `content` in the form that the extension of the name stands for.
    void writeCompressed(const char* name, const std::string& content) const {
        const std::string plain = at("content");
        support::writeBytes(plain, content);
        const std::string target = at(name);
        const char* const tool = target.ends_with(".gz")  ? "gzip -c"
                                 : target.ends_with(".Z") ? "compress -fc"
                                                          : "cat";
        const std::string line = std::string(tool) + " <" + plain + " >'" + target + "'";
        ASSERT_EQ(std::system(line.c_str()), 0);
        std::filesystem::remove(plain);
    }

    /// Runs `body` in a child process whose search path begins with the stand-ins. No pipe may be left.
    support::ChildResult runWithTools(const std::function<void()>& body) const {
        const support::ChildResult result = support::runFunction([&] {
            setenv("PATH", ((scratch / "bin") + ":/usr/bin:/bin").c_str(), 1);
            std::cout << std::unitbuf;
            body();
            for (const std::string& name : pipesOf()) {
                std::cout << "left behind: " << name << '\n';
            }
        });
        EXPECT_FALSE(result.leftProcesses);
        return result;
    }

    const support::ScratchDirectory scratch;
};

/// All that the stream still has.
inline std::string restOf(std::istream& input) {
    return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

/// Text that does not compress to nothing.
inline std::string textOfLength(std::size_t length) {
    std::string text;
    for (unsigned state = 1; text.size() < length; state = state * 1664525U + 1013904223U) {
        text += std::to_string(state);
        text += '\n';
    }
    text.resize(length);
    return text;
}

} // namespace quillon::test
