// What the readers of all files do when the device that a file lies on fails before the file's end.

#include "quillon/limits/LimitsReader.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqMeasuredData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"
#include "tests/support/FailingDevice.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <istream>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::error;
using test::StatusChain;

std::string example(const std::string& name) {
    return support::readBytes(std::filesystem::path(QUILLON_SOURCE_DIR) / "examples/pendulum" / name);
}

/// The text up to the end of its last `word`.
std::string upTo(const std::string& word, const std::string& text) {
    return text.substr(0, text.rfind(word) + word.size());
}

class FailingFile : public testing::Test {
protected:
    struct Reader {
        const char* name;
        std::string text; ///< as far as it is read
        std::function<void(std::istream&)> read;
        StatusChain toldBehindTheText;
    };

    void SetUp() override {
        const std::string path =
            (std::filesystem::path(QUILLON_SOURCE_DIR) / "examples/pendulum/pendulum.probdef").string();
        definition.readProblemDefFile(path.c_str(), false);
        ASSERT_EQ(test::chainOf(), StatusChain{});
    }

    std::vector<Reader> readers() const {
        const std::string include = "INCLUDE {\n  FILE_NAME: a\n}\n";
        const StatusChain unread = {error("Error reading file.")};
        return {
            {"specification", example("pendulum.zvx"),
             [](std::istream& input) {
                 LqProblemSpec spec;
                 readProblemSpecStream(spec, input, currentStatus());
             },
             unread},
            {"problem definition", example("pendulum.probdef") + include,
             [](std::istream& input) { LqProblemDefData().readProblemDefStream(input, false); }, unread},
            {"model", example("pendulum.model") + include,
             [this](std::istream& input) { LqBodyDefData().readModelSections(input, definition, ""); },
             unread},
            {"limits", example("pendulum.limits") + include, readLimits, unread},
            {"older limits",
             example("pendulum.older_limits"),
             readLimits,
             {error("Unable to read var limits.  Last read was var id 3."),
              error("Unable to read mode for limit.")}},
            {"scale definition",
             upTo("}\n", example("pendulum.scaledef")),
             [this](std::istream& input) { LqScaleDefData().read(input, definition, false); },
             {}},
            {"measured data",
             upTo("0.12 ", example("pendulum.measured")),
             [](std::istream& input) { LqMeasuredData().read(input); },
             {}},
        };
    }

    static void readLimits(std::istream& input) {
        LqLimitsData limits;
        readLimitsStream(limits, input, false);
    }

    test::CleanStatus clean;
    LqProblemDefData definition;
};

// What was read until then must not pass for a whole file.
TEST_F(FailingFile, IsToldWhereverItFails) {
    for (const Reader& reader : readers()) {
        // The brace of the scale definition's last block needs no newline.
        for (std::size_t length = 0; length + 1 < reader.text.size(); ++length) {
            test::FailingDevice device(reader.text.substr(0, length));
            std::istream input(&device);
            reader.read(input);
            EXPECT_TRUE(errorStands()) << reader.name << " behind " << length << " characters";
            currentStatus().clear();
        }
    }
}

TEST_F(FailingFile, IsToldWhereAFileMayEnd) {
    for (const Reader& reader : readers()) {
        test::FailingDevice device(reader.text);
        std::istream input(&device);
        reader.read(input);
        EXPECT_EQ(test::takeChain(), reader.toldBehindTheText) << reader.name;
    }
}

} // namespace
} // namespace quillon
