#include "quillon/files/FileTimes.h"

#include "tests/files/FileTestSupport.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>

namespace quillon {
namespace {

constexpr time_t someTime = 1000000000;
constexpr time_t laterTime = 1000000007;

/// A file that was read and changed at given times.
class AgedFile : public testing::Test {
protected:
    void SetUp() override {
        support::writeBytes(path.c_str(), "x");
        setTimes(someTime, someTime);
    }

    void setTimes(time_t access, time_t change) const {
        const timespec times[2] = {{access, 0}, {change, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    }

    const support::ScratchDirectory scratch;
    const LmStr path = (scratch / "a.gz").c_str();
    const LmStr plainPath = (scratch / "a").c_str();
};

TEST_F(AgedFile, ModifiedTimeIsInSeconds) {
    EXPECT_EQ(fileModifiedTime(path), someTime);
}

TEST_F(AgedFile, ModifiedTimeOfAPipeLeavesItsWriterToTheReader) {
    const std::string pipe = scratch / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const timespec times[2] = {{someTime, 0}, {laterTime, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, pipe.c_str(), times, 0), 0);
    const test::OpeningWatch watch(pipe);
    EXPECT_EQ(fileModifiedTime(pipe.c_str()), laterTime);
    EXPECT_FALSE(watch.hasSeenOne());
}

TEST_F(AgedFile, ModifiedTimeTakesTheCompressedVariantWhenTold) {
    EXPECT_EQ(fileModifiedTime(plainPath), 0);
    EXPECT_EQ(fileModifiedTime(plainPath, true), someTime);
}

TEST_F(AgedFile, ModifiedTimeIsZeroForAFileThatDoesNotOpen) {
    chmod(scratch.path().c_str(), 0755);
    chmod(path.c_str(), 0);
    EXPECT_EQ(test::runAsNobody([&] { std::cout << fileModifiedTime(path); }).out, "0");
}

TEST_F(AgedFile, TouchKeepsTheTimeOfTheLastAccess) {
    const time_t before = std::time(nullptr);
    EXPECT_TRUE(touchFile(path));
    struct stat facts = {};
    ASSERT_EQ(stat(path.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_atime, someTime);
    // The clock of file times may lie a tick behind.
    EXPECT_GE(facts.st_mtime, before - 1);
    EXPECT_LE(facts.st_mtime, std::time(nullptr));
}

TEST_F(AgedFile, TouchOfAMissingFileFailsAndCreatesNone) {
    EXPECT_FALSE(touchFile(plainPath));
    EXPECT_FALSE(test::isThere(plainPath.c_str()));
}

TEST_F(AgedFile, StampSeesAChangeInEitherDirection) {
    LmFileStamp stamp = {.path = path};
    EXPECT_TRUE(stamp.changedSinceStamp());
    stamp.stamp();
    EXPECT_EQ(stamp.time, someTime);
    EXPECT_FALSE(stamp.changedSinceStamp());
    setTimes(someTime, laterTime);
    EXPECT_TRUE(stamp.changedSinceStamp());
    stamp.stamp();
    EXPECT_FALSE(stamp.changedSinceStamp());
    setTimes(someTime, someTime);
    EXPECT_TRUE(stamp.changedSinceStamp());
    std::filesystem::remove(path.c_str());
    EXPECT_TRUE(stamp.changedSinceStamp());
}

TEST(FileStamp, OfAnEmptyPathNeverChanges) {
    LmFileStamp stamp;
    stamp.time = someTime;
    EXPECT_FALSE(stamp.changedSinceStamp());
}

} // namespace
} // namespace quillon
