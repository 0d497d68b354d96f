#include "quillon/files/FileAccess.h"

#include "tests/files/FileTestSupport.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;
using test::chainOf;
using test::error;
using test::runAsNobody;
using test::StatusChain;

/// A directory that other users may enter.
class OpenScratch : public ScratchDirectory {
public:
    OpenScratch() { chmod(path().c_str(), 0755); }
};

void makeSocket(const std::string& path) {
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.c_str(), path.size());
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(listener);
}

TEST(CheckFileReadable, AcceptsAFile) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", "");
    LmStatus status;
    EXPECT_TRUE(checkFileReadable((scratch / "a").c_str(), status));
    EXPECT_EQ(chainOf(status), StatusChain{});
}

TEST(CheckFileReadable, ReportsAMissingFile) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "a";
    LmStatus status;
    EXPECT_FALSE(checkFileReadable(path.c_str(), status));
    EXPECT_EQ(chainOf(status),
              (StatusChain{error("Unable to open \"" + path + "\"."), error("File does not exist.")}));
}

TEST(CheckFileReadable, ReportsOnTheCurrentStatusByDefault) {
    const test::CleanStatus clean;
    EXPECT_FALSE(checkFileReadable("/no/such/file"));
    EXPECT_EQ(chainOf(),
              (StatusChain{error("Unable to open \"/no/such/file\"."), error("File does not exist.")}));
}

TEST(CheckFileReadable, ReportsAnEmptyNameAsMissing) {
    LmStatus status;
    EXPECT_FALSE(checkFileReadable("", status));
    EXPECT_EQ(chainOf(status), (StatusChain{error("Unable to open \"\"."), error("File does not exist.")}));
}

TEST(CheckFileReadable, ReportsADirectoryInOneLine) {
    const ScratchDirectory scratch;
    LmStatus status;
    EXPECT_FALSE(checkFileReadable(scratch.path().c_str(), status));
    EXPECT_EQ(chainOf(status), (StatusChain{error(scratch.path().string() + " is a directory.")}));
}

TEST(CheckFileReadable, ReportsMissingRights) {
    const OpenScratch scratch;
    const std::string path = scratch / "a";
    writeBytes(path, "");
    chmod(path.c_str(), 0200);
    const auto result = runAsNobody([&] {
        LmStatus status;
        std::cout << checkFileReadable(path.c_str(), status) << '\n';
        test::printChain(status);
    });
    EXPECT_EQ(result.out, "0\nerror: \"Unable to read \"" + path +
                              "\".\"\nerror: \"Insufficient access to read file.  Check permissions.\"\n");
}

TEST(CheckFileReadable, ReportsADirectoryWithoutRightsLikeAFile) {
    const OpenScratch scratch;
    const std::string path = scratch / "d";
    std::filesystem::create_directory(path);
    chmod(path.c_str(), 0);
    const auto result = runAsNobody([&] {
        LmStatus status;
        std::cout << checkFileReadable(path.c_str(), status) << '\n';
        test::printChain(status);
    });
    EXPECT_EQ(result.out, "0\nerror: \"Unable to read \"" + path +
                              "\".\"\nerror: \"Insufficient access to read file.  Check permissions.\"\n");
}

TEST(CheckFileReadable, TakesASocketThatDoesNotOpenForADirectory) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "socket";
    makeSocket(path);
    LmStatus status;
    EXPECT_FALSE(checkFileReadable(path.c_str(), status));
    EXPECT_EQ(chainOf(status),
              (StatusChain{error("Unable to read \"" + path + "\"."), error("File is a directory.")}));
}

TEST(CheckFileReadable, AcceptsAFileThatDoesNotOpenForAnotherReason) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "a";
    writeBytes(path, "");
    const auto result = support::runFunction([&] {
        rlimit usual = {};
        getrlimit(RLIMIT_NOFILE, &usual);
        const rlimit noMoreFiles = {0, usual.rlim_max};
        setrlimit(RLIMIT_NOFILE, &noMoreFiles);
        LmStatus status;
        const bool readable = checkFileReadable(path.c_str(), status);
        setrlimit(RLIMIT_NOFILE, &usual);
        std::cout << readable << '\n';
        test::printChain(status);
    });
    EXPECT_EQ(result.out, "1\n");
}

TEST(CheckFileReadable, IsNotHeldUpByAPipe) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const auto result = support::runFunction([&] { std::cout << checkFileReadable(path.c_str()) << '\n'; });
    EXPECT_EQ(result.out, "1\n");
    EXPECT_EQ(result.outcome, "0");
}

TEST(CheckFileReadable, LeavesTheWriterOfAPipeToTheReader) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const test::OpeningWatch watch(path);
    LmStatus status;
    EXPECT_TRUE(checkFileReadable(path.c_str(), status));
    EXPECT_FALSE(watch.hasSeenOne());
    EXPECT_EQ(chainOf(status), StatusChain{});
}

TEST(CheckFileReadable, ReportsAPipeWithoutRights) {
    const OpenScratch scratch;
    const std::string path = scratch / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0200), 0);
    const auto result = runAsNobody([&] {
        LmStatus status;
        std::cout << checkFileReadable(path.c_str(), status) << '\n';
        test::printChain(status);
    });
    EXPECT_EQ(result.out, "0\nerror: \"Unable to read \"" + path +
                              "\".\"\nerror: \"Insufficient access to read file.  Check permissions.\"\n");
}

TEST(CheckFileReadable, OfANullPathEndsTheProcess) {
    EXPECT_EQ(support::runFunction([] { checkFileReadable(LmStr()); }).outcome, "SIGSEGV");
}

TEST(CheckFileWritable, AcceptsAFileAndLeavesItAlone) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", "content");
    LmStatus status;
    EXPECT_TRUE(checkFileWritable((scratch / "a").c_str(), status));
    EXPECT_EQ(chainOf(status), StatusChain{});
    EXPECT_EQ(support::readBytes(scratch / "a"), "content");
}

TEST(CheckFileWritable, AcceptsANewFileAndDoesNotCreateIt) {
    const ScratchDirectory scratch;
    LmStatus status;
    EXPECT_TRUE(checkFileWritable((scratch / "a").c_str(), status));
    EXPECT_EQ(chainOf(status), StatusChain{});
    EXPECT_FALSE(test::isThere(scratch / "a"));
}

TEST(CheckFileWritable, ReportsADirectory) {
    const ScratchDirectory scratch;
    LmStatus status;
    EXPECT_FALSE(checkFileWritable(scratch.path().c_str(), status));
    EXPECT_EQ(chainOf(status), (StatusChain{error("File \"" + scratch.path().string() + "\" is unwritable."),
                                            error("File is a directory.")}));
}

TEST(CheckFileWritable, ReportsAMissingParent) {
    const ScratchDirectory scratch;
    const std::string parent = scratch / "none";
    LmStatus status;
    EXPECT_FALSE(checkFileWritable((parent + "/a").c_str(), status));
    EXPECT_EQ(chainOf(status), (StatusChain{error("File \"" + parent + "/a\" is unwritable."),
                                            error("Parent directory \"" + parent + "\" does not exist.")}));
}

TEST(CheckFileWritable, ReportsMissingRightsToTheFileAndToTheDirectory) {
    if (geteuid() != 0) {
        GTEST_SKIP() << test::ownedByAsker;
    }
    const OpenScratch scratch;
    const std::string path = scratch / "a";
    writeBytes(path, "");
    chmod(path.c_str(), 0444);
    const auto result = runAsNobody([&] {
        LmStatus status;
        std::cout << checkFileWritable(path.c_str(), status) << '\n';
        std::cout << checkFileWritable((scratch / "b").c_str(), status) << '\n';
        std::cout << checkFileWritable("/b", status) << '\n';
        test::printChain(status);
    });
    const std::string directory = scratch.path().string();
    EXPECT_EQ(result.out,
              "0\n0\n0\n"
              "error: \"File \"/b\" is unwritable.\"\n"
              "error: \"Insufficient access to create file in \"/\".  Check permissions.\"\n"
              "error: \"File \"" +
                  directory +
                  "/b\" is unwritable.\"\n"
                  "error: \"Insufficient access to create file in \"" +
                  directory +
                  "\".  Check permissions.\"\n"
                  "error: \"File \"" +
                  path +
                  "\" is unwritable.\"\n"
                  "error: \"Insufficient access to write to existing file.  Check permissions.\"\n");
}

TEST(CheckFileWritable, LooksForABareNameInTheWorkingDirectory) {
    if (geteuid() != 0) {
        GTEST_SKIP() << test::ownedByAsker;
    }
    const OpenScratch scratch;
    const auto result = runAsNobody([&] {
        LmStatus status;
        std::filesystem::current_path(scratch.path());
        std::cout << checkFileWritable("b", status) << '\n';
        test::printChain(status);
    });
    EXPECT_EQ(result.out,
              "0\nerror: \"File \"b\" is unwritable.\"\nerror: \"Insufficient access to create file in \"" +
                  scratch.path().string() + "\".  Check permissions.\"\n");
}

TEST(CheckFileWritable, ReportsABareNameWithoutAWorkingDirectory) {
    const ScratchDirectory scratch;
    const std::string gone = scratch / "gone";
    const auto result = support::runFunction([&] {
        std::filesystem::create_directory(gone);
        std::filesystem::current_path(gone);
        std::filesystem::remove(gone);
        LmStatus status;
        std::cout << checkFileWritable("b", status) << '\n';
        test::printChain(status);
    });
    EXPECT_EQ(result.out, "0\nerror: \"File \"b\" is unwritable.\"\n"
                          "error: \"Unable to determine the directory for \"b\".\"\n");
}

TEST(CheckFileWritable, OfANullPathEndsTheProcess) {
    EXPECT_EQ(support::runFunction([] { checkFileWritable(LmStr()); }).outcome, "SIGSEGV");
}

/// One of each kind of file, by the name of its kind.
class FileKinds : public testing::Test {
protected:
    void SetUp() override {
        writeBytes(scratch / "file", "12345");
        std::filesystem::create_directory(scratch / "directory");
        ASSERT_EQ(mkfifo((scratch / "pipe").c_str(), 0600), 0);
        makeSocket(scratch / "socket");
        ASSERT_EQ(symlink("file", (scratch / "link_to_file").c_str()), 0);
        ASSERT_EQ(symlink("directory", (scratch / "link_to_directory").c_str()), 0);
        ASSERT_EQ(symlink("none", (scratch / "dangling").c_str()), 0);
    }

    LmStr at(const char* name) const { return (name[0] == '/' ? name : scratch / name).c_str(); }

    const ScratchDirectory scratch;
};

struct KindCase {
    const char* name;
    bool exists;
    bool isDirectory;
    bool isDirectoryItself;
    bool isFileLike;
    bool isPipeLike;
    bool isSymLink;
};

TEST_F(FileKinds, AreToldByBitsOfTheMode) {
    // The mode is 0x8000 for a file, 0x4000 for a directory, 0x1000 for a pipe, 0xC000 for a socket, 0x2000
    // for a character device and 0xA000 for a link.
    const KindCase cases[] = {
        {"file", true, false, false, true, false, false},
        {"directory", true, true, true, true, false, false},
        {"pipe", true, false, false, false, true, false},
        {"socket", true, true, true, true, false, false},
        {"/dev/null", true, false, false, false, false, false},
        {"link_to_file", true, false, false, true, false, true},
        {"link_to_directory", true, true, false, true, false, true},
        {"dangling", false, false, false, false, false, true},
        {"none", false, false, false, false, false, false},
    };
    for (const KindCase& each : cases) {
        EXPECT_EQ(fileExists(at(each.name)), each.exists) << each.name;
        EXPECT_EQ(isDirectory(at(each.name)), each.isDirectory) << each.name;
        EXPECT_EQ(isDirectory(at(each.name), false), each.isDirectoryItself) << each.name;
        EXPECT_EQ(isFileLike(at(each.name)), each.isFileLike) << each.name;
        EXPECT_EQ(isPipeLike(at(each.name)), each.isPipeLike) << each.name;
        EXPECT_EQ(isSymLink(at(each.name)), each.isSymLink) << each.name;
    }
}

TEST_F(FileKinds, IsExecutableFileNeedsARegularFileWithTheOwnersBit) {
    EXPECT_FALSE(isExecutableFile(at("file")));
    EXPECT_FALSE(isExecutableFile(at("directory")));
    EXPECT_FALSE(isExecutableFile(at("none")));
    chmod(at("file").c_str(), 0677);
    EXPECT_FALSE(isExecutableFile(at("file")));
    chmod(at("file").c_str(), 0100);
    EXPECT_TRUE(isExecutableFile(at("file")));
    EXPECT_TRUE(isExecutableFile(at("link_to_file")));
}

TEST_F(FileKinds, FileSizeIsZeroForWhatIsNotThere) {
    EXPECT_EQ(fileSize(at("file")), 5);
    EXPECT_EQ(fileSize(at("link_to_file")), 5);
    EXPECT_EQ(fileSize(at("none")), 0);
    EXPECT_EQ(fileSize(at("dangling")), 0);
}

TEST_F(FileKinds, RightsAreThoseOfTheUser) {
    if (geteuid() != 0) {
        GTEST_SKIP() << test::ownedByAsker;
    }
    chmod(scratch.path().c_str(), 0755);
    struct {
        unsigned mode;
        const char* rights;
    } const cases[] = {{0000, "1000"}, {0004, "1100"}, {0002, "1010"}, {0001, "1001"}, {0007, "1111"}};
    for (const auto& each : cases) {
        chmod(at("file").c_str(), each.mode);
        const auto result = runAsNobody([&] {
            std::cout << fileExists(at("file")) << fileReadable(at("file")) << fileWritable(at("file"))
                      << fileExecutable(at("file"));
        });
        EXPECT_EQ(result.out, each.rights) << std::oct << each.mode;
    }
}

TEST_F(FileKinds, TheFlagLooksForTheCompressedVariant) {
    writeBytes(scratch / "a.gz", "");
    EXPECT_FALSE(fileExists(at("a")));
    EXPECT_TRUE(fileExists(at("a"), true));
    EXPECT_FALSE(fileReadable(at("a")));
    EXPECT_TRUE(fileReadable(at("a"), true));
    EXPECT_FALSE(fileWritable(at("a")));
    EXPECT_TRUE(fileWritable(at("a"), true));
    EXPECT_FALSE(fileExists(at("none"), true));
}

} // namespace
} // namespace quillon
