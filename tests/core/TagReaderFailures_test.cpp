#include "quillon/core/TagReader.h"

#include "tests/support/AddressCheck.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/FailingDevice.h"
#include "tests/support/StatusChain.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>
#include <string>
#include <sys/resource.h>

namespace quillon {
namespace {

using test::chainOf;
using test::error;
using test::StatusChain;

TEST(TagReaderFailures, BlockOnADeviceThatFailsEndsWithTheInput) {
    test::FailingDevice device("BLOCK {\n  a: 1\n");
    std::istream input(&device);
    LmStr tag;
    LmStr value;
    LmStatus status;
    EXPECT_FALSE(readTag(input, tag, value, nullptr, status));
    EXPECT_EQ(chainOf(status), (StatusChain{error("Hit end of file without reading '}' for tag BLOCK")}));
    EXPECT_TRUE(input.bad());
}

TEST(TagReaderFailures, ItemsOnADeviceThatFailsAreNoWholeFile) {
    for (const char* const text : {"", "A: 1\n", "A: 1\n# half a comm", "A: 1\n\n"}) {
        SCOPED_TRACE(text);
        test::FailingDevice device(text);
        std::istream input(&device);
        LmStatus status;
        TaggedItems items(input, status);
        EXPECT_EQ(items.next(), *text != '\0');
        EXPECT_FALSE(items.next());
        EXPECT_TRUE(items.failed());
        EXPECT_EQ(chainOf(status).front(), error("Error reading file."));
    }
}

/// Limits the address space of the process to what it has and `bytes` more.
void leaveAddressSpace(std::size_t bytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = pages * 4096 + bytes;
    setrlimit(RLIMIT_AS, &limit);
}

TEST(TagReaderFailures, BlockWithoutRoomForItsTextIsReported) {
    if (support::checksAddresses) {
        GTEST_SKIP() << "a limit of the address space leaves no room for the checks themselves";
    }
    const std::string text = "BLOCK {\n" + std::string(std::size_t{64} << 20, 'x') + "\n}\n";
    const support::ChildResult child = support::runFunction([&text] {
        std::istringstream input(text);
        leaveAddressSpace(std::size_t{32} << 20);
        LmStr tag;
        LmStr value;
        LmStatus status;
        const bool good = readTag(input, tag, value, nullptr, status);
        leaveAddressSpace(std::size_t{32} << 30);
        std::cout << (good ? "good" : "failed") << "\n" << status.head()->message() << "\n" << std::flush;
    });
    EXPECT_EQ(child.outcome, "0");
    EXPECT_EQ(child.out, "failed\nInsufficient memory.\n");
}

} // namespace
} // namespace quillon
