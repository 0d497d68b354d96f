#include "quillon/tool/LqProblemSpec.h"

#include "tests/support/ScratchDirectory.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;

/// Writes an empty file that was last changed `seconds` after 1970.
void makeFileOfTime(const std::string& path, std::int64_t seconds) {
    writeBytes(path, "");
    const std::filesystem::file_time_type epoch =
        std::chrono::file_clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(seconds)));
    std::filesystem::last_write_time(path, epoch);
}

LqProblemSpec fullSpec() {
    LqProblemSpec spec;
    for (const LqSpecPath& entry : specPaths) {
        spec.*entry.path = entry.name;
        spec.*entry.time = 7;
    }
    spec.setMatchBy(LqMatchBy::BodyName);
    spec.userValues["operator"] = "A. Reader";
    return spec;
}

TEST(LqProblemSpec, IsNewWithNullPathsZeroTimesAndMatchByBodyID) {
    const LqProblemSpec spec;
    for (const LqSpecPath& entry : specPaths) {
        EXPECT_TRUE((spec.*entry.path).isNull()) << entry.name;
        EXPECT_EQ(spec.*entry.time, 0) << entry.name;
    }
    EXPECT_EQ(spec.matchBy(), LqMatchBy::BodyID);
    EXPECT_TRUE(spec.userValues.empty());
}

TEST(LqProblemSpec, IsBlankWithoutPathsWhateverElseItHolds) {
    LqProblemSpec spec;
    spec.setMatchBy(LqMatchBy::BodyName);
    spec.userValues["a"] = "b";
    EXPECT_TRUE(spec.isBlank());
}

TEST(LqProblemSpec, IsNotBlankWithAnyOnePath) {
    for (const LqSpecPath& entry : specPaths) {
        LqProblemSpec spec;
        spec.*entry.path = "";
        EXPECT_FALSE(spec.isBlank()) << entry.name;
    }
}

TEST(LqProblemSpec, EqualsAnotherOfTheSamePathsTimesMatchAndUserValues) {
    EXPECT_TRUE(fullSpec() == fullSpec());
    EXPECT_FALSE(fullSpec() != fullSpec());
}

TEST(LqProblemSpec, DiffersByAnyOneMember) {
    std::vector<std::function<void(LqProblemSpec&)>> changes = {
        [](LqProblemSpec& spec) { spec.setMatchBy(LqMatchBy::BodyID); },
        [](LqProblemSpec& spec) { spec.userValues["operator"] = "B. Reader"; },
        [](LqProblemSpec& spec) { spec.userValues["another"] = ""; },
    };
    for (const LqSpecPath& entry : specPaths) {
        changes.emplace_back([&entry](LqProblemSpec& spec) { (spec.*entry.path).reset(); });
        changes.emplace_back([&entry](LqProblemSpec& spec) { ++(spec.*entry.time); });
    }
    for (std::size_t i = 0; i < changes.size(); ++i) {
        LqProblemSpec changed;
        changed = fullSpec();
        changes[i](changed);
        EXPECT_TRUE(changed != fullSpec()) << "change " << i;
    }
}

TEST(LqProblemSpec, CopyTakesAllButTheUserValues) {
    const LqProblemSpec original = fullSpec();
    const LqProblemSpec copy(original);
    LqProblemSpec expected;
    expected = original;
    expected.userValues.clear();
    EXPECT_TRUE(copy == expected);
}

TEST(LqProblemSpec, RefreshesTheTimesOfItsPaths) {
    const ScratchDirectory scratch;
    makeFileOfTime(scratch / "definition", 1000);
    makeFileOfTime(scratch / "scale.gz", 2000);
    makeFileOfTime(scratch / "model.gz", 3000);
    LqProblemSpec spec;
    spec.problemDefinition = (scratch / "definition").c_str();
    spec.scaleDefinition = (scratch / "scale").c_str();
    spec.model = (scratch / "model").c_str();
    spec.limits = (scratch / "missing").c_str();
    spec.limitsTime = 5;
    spec.unscaledBodyDefTime = 6;
    spec.refreshTimes();
    EXPECT_EQ(spec.problemDefinitionTime, 1000);
    EXPECT_EQ(spec.modelTime, 3000) << "the model is also looked for in its compressed form";
    EXPECT_EQ(spec.scaleDefinitionTime, 0) << "no other file is";
    EXPECT_EQ(spec.limitsTime, 0);
    EXPECT_EQ(spec.unscaledBodyDefTime, 6) << "a null path keeps its time";
}

} // namespace
} // namespace quillon
