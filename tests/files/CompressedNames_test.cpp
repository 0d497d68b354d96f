#include "quillon/files/CompressedNames.h"

#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;

struct ExtensionCase {
    const char* name;
    const char* key; ///< null when the name is no compressed one
};

TEST(HasCompressedExtension, NeedsAnExactExtensionBehindACharacter) {
    const ExtensionCase cases[] = {
        {"a.Z", "Z"},     {"a.gz", "gz"},     {"a.jpeg", "jpeg"}, {"a.zvx.gz", "gz"},  {"/d/.gz", "gz"},
        {".Z", nullptr},  {".gz", nullptr},   {".jpeg", nullptr}, {"", nullptr},       {"Z", nullptr},
        {"a.z", nullptr}, {"a.GZ", nullptr},  {"a.jpg", nullptr}, {"a.JPEG", nullptr}, {"a.gz.b", nullptr},
        {"agz", nullptr}, {"a.bz2", nullptr}, {"a.tgz", nullptr},
    };
    for (const ExtensionCase& each : cases) {
        LmStr key = "untouched";
        EXPECT_EQ(hasCompressedExtension(each.name, &key), each.key != nullptr) << each.name;
        EXPECT_EQ(hasCompressedExtension(each.name), each.key != nullptr) << each.name;
        EXPECT_EQ(key, each.key != nullptr ? each.key : "untouched") << each.name;
    }
}

struct VariantCase {
    std::vector<const char*> files;
    const char* expected;
};

TEST(FindCompressedVariant, PrefersTheNameItselfThenGzThenZ) {
    const VariantCase cases[] = {
        {{}, "a.zvx"},
        {{"a.zvx"}, "a.zvx"},
        {{"a.zvx", "a.zvx.gz", "a.zvx.Z"}, "a.zvx"},
        {{"a.zvx.gz"}, "a.zvx.gz"},
        {{"a.zvx.Z"}, "a.zvx.Z"},
        {{"a.zvx.gz", "a.zvx.Z"}, "a.zvx.gz"},
        {{"a.zvx.jpeg"}, "a.zvx"},
    };
    for (const VariantCase& each : cases) {
        const ScratchDirectory scratch;
        for (const char* const file : each.files) {
            writeBytes(scratch / file, "");
        }
        EXPECT_EQ(findCompressedVariant((scratch / "a.zvx").c_str()), (scratch / each.expected).c_str());
    }
}

struct StripCase {
    const char* name;
    const char* stripped;
    const char* extension;
};

TEST(StripCompressedExtension, TakesOffGzAndZOnly) {
    const StripCase cases[] = {
        {"a.gz", "a", ".gz"},  {"a.Z", "a", ".Z"},        {".gz", "", ".gz"},   {"a.gz.Z", "a.gz", ".Z"},
        {"abc", "abc", ""},    {"a.jpeg", "a.jpeg", ""},  {"a.GZ", "a.GZ", ""}, {".Z", ".Z", "untouched"},
        {"", "", "untouched"}, {"gz", "gz", "untouched"},
    };
    for (const StripCase& each : cases) {
        LmStr extension = "untouched";
        EXPECT_EQ(stripCompressedExtension(each.name, &extension), each.stripped) << each.name;
        EXPECT_EQ(stripCompressedExtension(each.name), each.stripped) << each.name;
        EXPECT_EQ(extension, each.extension) << each.name;
    }
}

TEST(CompressedFileReadable, ChecksTheVariantThatIsThere) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "a.gz", "");
    LmStatus status;
    EXPECT_TRUE(compressedFileReadable((scratch / "a").c_str(), status));
    EXPECT_EQ(test::chainOf(status), test::StatusChain{});
    EXPECT_FALSE(compressedFileReadable((scratch / "b").c_str(), status));
    EXPECT_EQ(test::chainOf(status),
              (test::StatusChain{test::error("Unable to open \"" + scratch / "b" + "\"."),
                                 test::error("File does not exist.")}));
}

} // namespace
} // namespace quillon
