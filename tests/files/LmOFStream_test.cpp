#include "quillon/files/LmOFStream.h"

#include "tests/support/CommaLocale.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using support::readBytes;
using support::ScratchDirectory;

TEST(LmOFStream, WritesWhatIsInserted) {
    const ScratchDirectory scratch;
    support::writeBytes(scratch / "a", "what was there before");
    {
        LmOFStream output((scratch / "a").c_str());
        output << "text " << 7;
    }
    EXPECT_EQ(readBytes(scratch / "a"), "text 7");
}

TEST(LmOFStream, OpensForOutputWhateverTheModeSays) {
    const ScratchDirectory scratch;
    LmOFStream output;
    output.open((scratch / "a").c_str(), std::ios::binary);
    output << "text";
    output.close();
    output.open((scratch / "a").c_str(), std::ios::app);
    output << " and more";
    output.close();
    EXPECT_TRUE(output.good());
    EXPECT_EQ(readBytes(scratch / "a"), "text and more");
}

TEST(LmOFStream, WritesAPointUnderALocaleWithADecimalComma) {
    const ScratchDirectory scratch;
    const test::CommaLocale comma;
    {
        LmOFStream output((scratch / "a").c_str());
        output << 1234.5 << ' ' << 1000000;
    }
    {
        LmOFStream output;
        output.open((scratch / "a").c_str(), std::ios::app);
        output << ' ' << -0.25;
    }
    EXPECT_EQ(readBytes(scratch / "a"), "1234.5 1000000 -0.25");
}

TEST(LmOFStream, SetsTheFailBitWhenTheFileCannotBeCreated) {
    const ScratchDirectory scratch;
    const LmOFStream output((scratch / "none/a").c_str());
    EXPECT_TRUE(output.fail());
}

} // namespace
} // namespace quillon
