#include "quillon/files/FileOperations.h"

#include "tests/files/FileTestSupport.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

using support::readBytes;
using support::ScratchDirectory;
using support::writeBytes;
using test::chainOf;
using test::error;
using test::permissionsOf;
using test::StatusChain;

std::string bytesOfLength(std::size_t length) {
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = static_cast<char>((i * i + i / 251) & 0xFF);
    }
    return bytes;
}

TEST(CopyFile, CopiesWholeBlocksAndTheirRemainder) {
    const ScratchDirectory scratch;
    for (const std::size_t length : {0UL, 1UL, 65535UL, 65536UL, 65537UL, 200000UL}) {
        const std::string bytes = bytesOfLength(length);
        writeBytes(scratch / "a", bytes);
        LmStatus status;
        EXPECT_TRUE(copyFile((scratch / "a").c_str(), (scratch / "b").c_str(), status)) << length;
        EXPECT_EQ(chainOf(status), StatusChain{});
        EXPECT_EQ(readBytes(scratch / "b") == bytes, true) << length;
        std::filesystem::remove(scratch / "b");
    }
}

TEST(CopyFile, EmptiesAnExistingTarget) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", "new");
    writeBytes(scratch / "b", "old and longer");
    EXPECT_TRUE(copyFile((scratch / "a").c_str(), (scratch / "b").c_str()));
    EXPECT_EQ(readBytes(scratch / "b"), "new");
}

TEST(CopyFile, CreatesTheTargetWithPermissions0644) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", "");
    chmod((scratch / "a").c_str(), 0700);
    const auto result = support::runFunction([&] {
        umask(0);
        copyFile((scratch / "a").c_str(), (scratch / "b").c_str());
    });
    ASSERT_EQ(result.outcome, "0");
    EXPECT_EQ(permissionsOf(scratch / "b"), 0644U);
}

TEST(CopyFile, ReportsAMissingSourceAndCreatesNothing) {
    const ScratchDirectory scratch;
    LmStatus status;
    EXPECT_FALSE(copyFile((scratch / "a").c_str(), (scratch / "b").c_str(), status));
    EXPECT_EQ(chainOf(status), (StatusChain{error("Couldn't open " + scratch / "a")}));
    EXPECT_FALSE(test::isThere(scratch / "b"));
}

TEST(CopyFile, ReportsATargetThatCannotBeCreated) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", "");
    LmStatus status;
    EXPECT_FALSE(copyFile((scratch / "a").c_str(), (scratch / "none/b").c_str(), status));
    EXPECT_EQ(chainOf(status), (StatusChain{error("Couldn't create " + scratch / "none/b")}));
}

TEST(CopyFile, ReportsEachBlockThatCannotBeWritten) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", bytesOfLength(65537));
    LmStatus status;
    EXPECT_FALSE(copyFile((scratch / "a").c_str(), "/dev/full", status));
    EXPECT_EQ(chainOf(status),
              (StatusChain{error("Error writing to /dev/full."), error("Error writing to /dev/full.")}));
}

TEST(CopyFile, ReportsASourceThatCannotBeRead) {
    const ScratchDirectory scratch;
    std::filesystem::create_directory(scratch / "d");
    LmStatus status;
    EXPECT_FALSE(copyFile((scratch / "d").c_str(), (scratch / "b").c_str(), status));
    EXPECT_EQ(chainOf(status), (StatusChain{error("Error reading from " + scratch / "d" + ".")}));
}

TEST(RemoveFile, RemovesFilesAndLinksOnly) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", "");
    EXPECT_TRUE(makeSymLink("a", (scratch / "link").c_str()));
    EXPECT_EQ(std::filesystem::read_symlink(scratch / "link"), "a");
    EXPECT_FALSE(makeSymLink("a", (scratch / "link").c_str()));
    EXPECT_TRUE(removeFile((scratch / "link").c_str()));
    EXPECT_TRUE(test::isThere(scratch / "a"));
    EXPECT_TRUE(removeFile((scratch / "a").c_str()));
    EXPECT_FALSE(removeFile((scratch / "a").c_str()));
    EXPECT_FALSE(removeFile(scratch.path().c_str()));
}

TEST(RemoveFilePermission, TakesOffJustTheBitsInQuestion) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "a";
    writeBytes(path, "");
    chmod(path.c_str(), 01777);
    EXPECT_TRUE(removeFilePermission(path.c_str(), 0015));
    EXPECT_EQ(permissionsOf(path), 01762U);
    EXPECT_TRUE(removeOwnerRead(path.c_str()));
    EXPECT_EQ(permissionsOf(path), 01362U);
    EXPECT_TRUE(removeOwnerWrite(path.c_str()));
    EXPECT_EQ(permissionsOf(path), 01162U);
}

TEST(RemoveFilePermission, TellsFailuresOnStandardError) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "none";
    const auto missing = support::runFunction([&] { std::cout << removeOwnerRead(path.c_str()); });
    EXPECT_EQ(missing.out, "0");
    EXPECT_EQ(missing.err, "Unable to stat file " + path + "\n");
    const auto foreign = test::runAsNobody([] { std::cout << removeOwnerWrite("/"); });
    EXPECT_EQ(foreign.out, "0");
    EXPECT_EQ(foreign.err, "Unable to remove permission\n");
}

} // namespace
} // namespace quillon
