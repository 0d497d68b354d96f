#include "quillon/files/LmIFStream.h"

#include "tests/support/CommaLocale.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;

TEST(LmIFStream, ReadsWhatIsInTheFile) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", "some text\r\n");
    LmIFStream input((scratch / "a").c_str());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(input), {}), "some text\r\n");
}

TEST(LmIFStream, ReadsAPointUnderALocaleWithADecimalComma) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a", "1234.5 7");
    const test::CommaLocale comma;
    LmIFStream input((scratch / "a").c_str());
    double real = 0;
    int integer = 0;
    EXPECT_TRUE(input >> real >> integer);
    EXPECT_EQ(real, 1234.5);
    EXPECT_EQ(integer, 7);
}

TEST(LmIFStream, DoesNotLookForACompressedFile) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a.gz", "");
    const LmIFStream input((scratch / "a").c_str());
    EXPECT_TRUE(input.fail());
    EXPECT_FALSE(input.is_open());
}

} // namespace
} // namespace quillon
