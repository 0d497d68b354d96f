#include "quillon/files/FilesBeingRead.h"

#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;
using test::chainOf;
using test::CleanStatus;
using test::error;
using test::StatusChain;
using test::takeChain;

class FilesBeingRead : public testing::Test {
protected:
    FilesBeingRead() : outer_(scratch_ / "outer"), inner_(scratch_ / "inner") {
        writeBytes(outer_, "outer");
        writeBytes(inner_, "inner");
    }

    CleanStatus clean_;
    ScratchDirectory scratch_;
    std::string outer_;
    std::string inner_;
};

TEST_F(FilesBeingRead, AnIncludeThatIsNotBeingReadIsNotRefused) {
    const FileBeingRead reading(outer_.c_str());
    EXPECT_FALSE(refuseOwnInclude(inner_.c_str()));
    EXPECT_EQ(chainOf(), StatusChain());
}

TEST_F(FilesBeingRead, AFileIsRefusedAtAnyDepthBelowItself) {
    const FileBeingRead readingOuter(outer_.c_str());
    const FileBeingRead readingInner(inner_.c_str());
    EXPECT_TRUE(refuseOwnInclude(inner_.c_str()));
    EXPECT_EQ(takeChain(), StatusChain{error("\"" + inner_ + "\" includes itself.")});
    EXPECT_TRUE(refuseOwnInclude(outer_.c_str()));
    EXPECT_EQ(takeChain(), StatusChain{error("\"" + outer_ + "\" includes itself.")});
}

TEST_F(FilesBeingRead, AFileMayBeReadAgainOnceItsReadingHasEnded) {
    { const FileBeingRead reading(outer_.c_str()); }
    EXPECT_FALSE(refuseOwnInclude(outer_.c_str()));
    EXPECT_EQ(chainOf(), StatusChain());
}

TEST_F(FilesBeingRead, AFileMarkedTwiceStaysMarkedUntilTheOuterMarkEnds) {
    const FileBeingRead reading(outer_.c_str());
    { const FileBeingRead again(outer_.c_str()); }
    EXPECT_TRUE(refuseOwnInclude(outer_.c_str()));
}

TEST_F(FilesBeingRead, LinksAndOtherSpellingsOfThePathNameTheSameFile) {
    std::filesystem::create_symlink(outer_, scratch_ / "link");
    std::filesystem::create_hard_link(outer_, scratch_ / "twin");
    const FileBeingRead reading(outer_.c_str());
    for (const char* spelling : {"link", "twin", "./outer", ".//./outer"}) {
        const std::string path = scratch_ / spelling;
        EXPECT_TRUE(refuseOwnInclude(path.c_str())) << spelling;
        EXPECT_EQ(takeChain(), StatusChain{error("\"" + path + "\" includes itself.")});
    }
}

TEST_F(FilesBeingRead, ACompressedFileIsTheSameUnderItsPlainName) {
    writeBytes(scratch_ / "packed.gz", "packed");
    const FileBeingRead reading((scratch_ / "packed").c_str());
    EXPECT_TRUE(refuseOwnInclude((scratch_ / "packed").c_str()));
    EXPECT_TRUE(refuseOwnInclude((scratch_ / "packed.gz").c_str()));
}

TEST_F(FilesBeingRead, AMissingFileIsNeitherMarkedNorRefused) {
    const std::string missing = scratch_ / "missing";
    const FileBeingRead reading(missing.c_str());
    EXPECT_FALSE(refuseOwnInclude(missing.c_str()));
    EXPECT_EQ(chainOf(), StatusChain());
}

TEST_F(FilesBeingRead, TheRefusalGoesToTheStatusThatIsGiven) {
    LmStatus status;
    const FileBeingRead reading(outer_.c_str());
    EXPECT_TRUE(refuseOwnInclude(outer_.c_str(), status));
    EXPECT_EQ(chainOf(status), StatusChain{error("\"" + outer_ + "\" includes itself.")});
    EXPECT_EQ(chainOf(), StatusChain());
}

} // namespace
} // namespace quillon
