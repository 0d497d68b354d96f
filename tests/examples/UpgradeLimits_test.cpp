#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsReader.h"
#include "tests/examples/ExamplePrograms.h"
#include "tests/support/StatusChain.h"

namespace quillon::test {
namespace {

constexpr const char* firstLine = "            1               Field Number\n";
constexpr const char* header = "Kym System Variable Limits File\nv2.00\n";

class UpgradeLimits : public testing::Test {
protected:
    /// What `upgrade_limits old new` gives for a file of the older form that holds `text`.
    ProgramRun upgrade(const std::string& text) const {
        support::writeBytes(scratch / "old", text);
        return runExample({"upgrade_limits", "old", "new"}, scratch);
    }

    void expectRefused(const std::string& text, const std::vector<std::string>& chain) const {
        EXPECT_EQ(upgrade(text), (ProgramRun{"1", "", printedError(chain)})) << text;
        EXPECT_EQ(namesIn(scratch.path().string()), (std::set<std::string>{"old"}));
    }

    support::ScratchDirectory scratch;
    const ProgramRun silence{"0", "", ""};
};

TEST_F(UpgradeLimits, WritesThePendulumsInTheTaggedForm) {
    EXPECT_EQ(upgrade(support::readBytes(examplesFolder("pendulum/pendulum.older_limits"))), silence);
    EXPECT_EQ(support::readBytes(scratch / "new"), std::string(header) + "VARIABLE {\n"
                                                                         "  ID: 1\n"
                                                                         "  LOWER {\n"
                                                                         "    VALUE: -1.20\n"
                                                                         "  }\n"
                                                                         "  UPPER {\n"
                                                                         "    VALUE: 1.20\n"
                                                                         "  }\n"
                                                                         "}\n"
                                                                         "VARIABLE {\n"
                                                                         "  ID: 3\n"
                                                                         "  LOWER {\n"
                                                                         "    VALUE: -0.50\n"
                                                                         "  }\n"
                                                                         "}\n");

    // The same limits as those of the tagged example, but for the weight and the guide.
    const CleanStatus clean;
    LqLimitsData tagged;
    LqLimitsData upgraded;
    readLimitsFile(tagged, examplesFolder("pendulum/pendulum.limits").c_str(), true);
    readLimitsFile(upgraded, (scratch / "new").c_str(), true);
    EXPECT_EQ(chainOf(), StatusChain{});
    tagged.findVar(1)->lowerWeight = LqLimitWeight();
    tagged.findVar(2)->guideWeight = 0;
    EXPECT_TRUE(upgraded.equalEffective(tagged));
}

TEST_F(UpgradeLimits, KeepsEveryModeAndLeavesOutVariablesWithoutLimits) {
    EXPECT_EQ(upgrade(std::string(firstLine) + "0 1\n1 2 0.25\n-1 3 -0.75\n2 4 -1 1e3\n"), silence);
    EXPECT_EQ(support::readBytes(scratch / "new"),
              std::string(header) + "VARIABLE {\n  ID: 2\n  UPPER {\n    VALUE: 0.25\n  }\n}\n"
                                    "VARIABLE {\n  ID: 3\n  LOWER {\n    VALUE: -0.75\n  }\n}\n"
                                    "VARIABLE {\n  ID: 4\n  LOWER {\n    VALUE: -1.00\n  }\n"
                                    "  UPPER {\n    VALUE: 1000.00\n  }\n}\n");
    EXPECT_EQ(upgrade(firstLine), silence);
    EXPECT_EQ(support::readBytes(scratch / "new"), header);
}

TEST_F(UpgradeLimits, WarnsOfWhatIsRounded) {
    EXPECT_EQ(
        upgrade(std::string(firstLine) + "2 5 -0.6981 0.8727\n0 6\n-1 7 -0.5000\n1 8 0.1250001\n"),
        (ProgramRun{"0", "", printedWarning({"Rounded to two decimals are the limits of variables: 5, 8"})}));
    EXPECT_EQ(support::readBytes(scratch / "new"),
              std::string(header) + "VARIABLE {\n  ID: 5\n  LOWER {\n    VALUE: -0.70\n  }\n"
                                    "  UPPER {\n    VALUE: 0.87\n  }\n}\n"
                                    "VARIABLE {\n  ID: 7\n  LOWER {\n    VALUE: -0.50\n  }\n}\n"
                                    "VARIABLE {\n  ID: 8\n  UPPER {\n    VALUE: 0.13\n  }\n}\n");
}

TEST_F(UpgradeLimits, TellsItsUse) {
    const ProgramRun usage{"1", "", "Usage: upgrade_limits OLD NEW\n"};
    EXPECT_EQ(runExample({"upgrade_limits"}, scratch), usage);
    EXPECT_EQ(runExample({"upgrade_limits", "old"}, scratch), usage);
    EXPECT_EQ(runExample({"upgrade_limits", "old", "new", "more"}, scratch), usage);
}

TEST_F(UpgradeLimits, RefusesBadInput) {
    EXPECT_EQ(runExample({"upgrade_limits", "missing", "new"}, scratch),
              (ProgramRun{"1", "", printedError({"Unable to open \"missing\".", "File does not exist."})}));
    expectRefused("", {"\"old\" is empty, or cannot be read."});
    expectRefused(header, {"\"old\" is not in the older form."});
    expectRefused(std::string(firstLine) + "-1 3 -0.5", {"The last line of \"old\" has no line end."});
    expectRefused(std::string(firstLine) + "-1 3 -0.5\n7 4 1\n",
                  {"Unable to read the limits of \"old\".",
                   "Unable to read var limits.  Last read was var id 3.", "Invalid limit mode of 7."});
    expectRefused(std::string(firstLine) + "2 3 1 -1\n",
                  {"Unable to read the limits of \"old\".", "Unable to read first var limit.",
                   "The lower limit for var id 3 is greater than the upper limit."});
    expectRefused(std::string(firstLine) + "2 3 1\n",
                  {"Unable to read the limits of \"old\".", "Unable to read upper bound for limit."});
}

TEST_F(UpgradeLimits, RefusesToWriteOverWhatItReads) {
    const std::string text = std::string(firstLine) + "-1 3 -0.5\n";
    support::writeBytes(scratch / "old", text);
    std::filesystem::create_symlink("old", scratch / "link");
    EXPECT_EQ(runExample({"upgrade_limits", "old", "link"}, scratch),
              (ProgramRun{"1", "", printedError({"\"link\" is the file that is read."})}));
    EXPECT_EQ(support::readBytes(scratch / "old"), text);
}

TEST_F(UpgradeLimits, ReportsAnOutputThatCannotBeWritten) {
    support::writeBytes(scratch / "old", std::string(firstLine) + "-1 3 -0.125\n");
    const std::string warning = "Rounded to two decimals are the limits of variables: 3";
    EXPECT_EQ(runExample({"upgrade_limits", "old", "nowhere/new"}, scratch),
              (ProgramRun{"1", "",
                          printedError({"File \"nowhere/new\" is unwritable.",
                                        "Parent directory \"nowhere\" does not exist.", warning})}));
    EXPECT_EQ(runExample({"upgrade_limits", "old", "/dev/full"}, scratch),
              (ProgramRun{"1", "",
                          printedError({"Couldn't write file \"/dev/full\".", "Unable to write header info.",
                                        "Unable to write data file id.", warning})}));
}

} // namespace
} // namespace quillon::test
