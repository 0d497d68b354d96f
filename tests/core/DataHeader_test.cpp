#include "quillon/core/DataHeader.h"

#include "quillon/core/LmSStream.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <iomanip>
#include <iterator>
#include <optional>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::CleanStatus;
using test::error;
using test::StatusChain;
using test::takeChain;
using testing::ElementsAre;

/// A format of data files, and its own words.
struct Format {
    DataFileFormat format;
    std::string id;
    int version;
    const char* firstLineFails;
    bool namesTheFile; ///< "File is not a " and the id on top of a bad first line
    const char* idDiffers;
    const char* numberFails;
    const char* refusal; ///< between the number read and the version of the application
};

const Format formats[] = {
    {DataFileFormat::ProblemSpec, "Kym Problem Specification File", 1, "Unable to read from file.", false,
     "Invalid datafile type.", "Unable to read datafile version number.", ".  Application supports version "},
    {DataFileFormat::ProblemDef, "Kym Problem Definition File", 1, "Unable to read data file header.", true,
     "Invalid datafile header id.", "Unable to read data file version.", ". Application uses version "},
    {DataFileFormat::Model, "Kym Model File", 1, "Unable to read Header Identification.", false,
     "Invalid datafile header id.", "Unable to read version number.", ". Application uses version "},
    {DataFileFormat::Limits, "Kym System Variable Limits File", 2, "Error reading file.", false,
     "Invalid datafile header id.", "Unable to read datafile version number.",
     ".  Application uses version "},
    {DataFileFormat::ScaleDef, "Kym Scale Definition File", 1, "Error reading file.", false,
     "Invalid datafile header id.", "Unable to read datafile version number.",
     ".  Application uses version "},
    {DataFileFormat::Measured, "Kym Measured File", 1, "Error reading file.", false,
     "Invalid datafile header id.", "Unable to read datafile version number.",
     ".  Application uses version "},
};

void PrintTo(const Format& format, std::ostream* output) {
    *output << format.id;
}

bool isSpec(const Format& format) {
    return format.format == DataFileFormat::ProblemSpec;
}

/// Formats that read the first line by `get` and skip to the letter, like the generic reader.
bool isGeneric(const Format& format) {
    return format.format == DataFileFormat::ProblemDef || format.format == DataFileFormat::Model;
}

bool isPlain(const Format& format) {
    return !isSpec(format) && !isGeneric(format);
}

StatusChain refusalOf(const Format& format, const std::string& number) {
    return {error("Unsupported datafile version " + number + format.refusal + std::to_string(format.version) +
                  ".00.")};
}

StatusChain badFirstLine(const Format& format, const char* message) {
    if (format.namesTheFile) {
        return {error("File is not a " + format.id), error(message)};
    }
    return {error(message)};
}

/// What reading a header gave.
struct Reading {
    bool good = false;
    StatusChain chain;
    std::string rest;
    float version = -77;
};

Reading readHeader(const Format& format, const std::string& text) {
    std::istringstream input(text);
    Reading reading;
    reading.good = readFormatHeader(input, format.format, currentStatus(), &reading.version);
    reading.chain = takeChain();
    input.clear();
    reading.rest = std::string(std::istreambuf_iterator<char>(input), {});
    return reading;
}

class DataHeader : public testing::TestWithParam<Format> {
protected:
    void accepts(const std::string& text, const std::string& rest) {
        const Reading reading = readHeader(GetParam(), text);
        EXPECT_TRUE(reading.good) << text;
        EXPECT_EQ(reading.chain, StatusChain{}) << text;
        EXPECT_EQ(reading.rest, rest) << text;
    }

    void refuses(const std::string& text, const StatusChain& chain) {
        const Reading reading = readHeader(GetParam(), text);
        EXPECT_FALSE(reading.good) << text;
        EXPECT_EQ(reading.chain, chain) << text;
    }

    /// A header of this format with the given second line.
    std::string withSecondLine(const std::string& line) const { return GetParam().id + "\n" + line; }
    std::string digit() const { return std::to_string(GetParam().version); }

    CleanStatus clean;
};

std::string nameOf(const testing::TestParamInfo<Format>& each) {
    return std::array{"ProblemSpec", "ProblemDef", "Model", "Limits", "ScaleDef", "Measured"}[each.index];
}

INSTANTIATE_TEST_SUITE_P(Formats, DataHeader, testing::ValuesIn(formats), nameOf);

TEST_P(DataHeader, IsAnIdAndAVersion) {
    const std::string text = withSecondLine("v" + digit() + ".00\ncontent\n");
    accepts(text, isPlain(GetParam()) ? "\ncontent\n" : "content\n");
    EXPECT_EQ(readHeader(GetParam(), text).version, static_cast<float>(GetParam().version));
}

TEST_P(DataHeader, TheIdIsComparedOverItsOwnLength) {
    const std::string rest = isPlain(GetParam()) ? "\n" : "";
    accepts(GetParam().id + ", second edition\nv" + digit() + ".00\n", rest);
    accepts(GetParam().id + "s\r\nv" + digit() + ".00\n", rest);
    const StatusChain differs = badFirstLine(GetParam(), GetParam().idDiffers);
    refuses(GetParam().id.substr(1) + "\nv1.00\n", differs);
    refuses(GetParam().id.substr(0, GetParam().id.size() - 1) + "\nv1.00\n", differs);
    refuses(" " + GetParam().id + "\nv1.00\n", differs);
    refuses("kym" + GetParam().id.substr(3) + "\nv1.00\n", differs);
    refuses("x", differs);
}

TEST_P(DataHeader, AnEmptyFileFailsAtTheFirstLine) {
    refuses("", badFirstLine(GetParam(), GetParam().firstLineFails));
}

TEST_P(DataHeader, AnEmptyFirstLineIsAFailureOrAnotherId) {
    // Taking an empty part of a line fails the stream; taking a whole empty line does not.
    refuses(
        "\n" + withSecondLine("v1.00\n"),
        badFirstLine(GetParam(), isGeneric(GetParam()) ? GetParam().firstLineFails : GetParam().idDiffers));
}

TEST_P(DataHeader, TheFirstLineHasALimit) {
    const std::string version = "\nv" + digit() + ".00\n";
    const auto lineOf = [](std::size_t length) {
        return GetParam().id + std::string(length - GetParam().id.size(), 'x');
    };
    const StatusChain fails = badFirstLine(GetParam(), GetParam().firstLineFails);
    const std::string rest = isPlain(GetParam()) ? "\n" : "";
    accepts(lineOf(79) + version, rest);
    if (isSpec(GetParam())) {
        refuses(lineOf(80) + version, fails);
    } else if (isPlain(GetParam())) {
        accepts(lineOf(80) + version, rest);
        refuses(lineOf(81) + version, fails);
    } else {
        // 79 characters are read, and up to 80 more are discarded, the newline among them.
        accepts(lineOf(80) + version, rest);
        accepts(lineOf(158) + version, rest);
        accepts(lineOf(159) + version, rest);
        refuses(lineOf(160) + version, {error(GetParam().numberFails)});
    }
}

TEST_P(DataHeader, AnyLetterWillDoExceptInTheSpecification) {
    for (const char* letter : {"x", "V", "#", "7"}) {
        const std::string text = withSecondLine(letter + digit() + ".00\n");
        if (isSpec(GetParam())) {
            refuses(text, {error("Version identifier not found.")});
        } else {
            accepts(text, isPlain(GetParam()) ? "\n" : "");
        }
    }
}

TEST_P(DataHeader, SpaceInFrontOfTheLetterIsSkippedInTheCountedFormats) {
    const std::string blank = withSecondLine("  v" + digit() + ".00\n");
    const std::string emptyLine = withSecondLine("\n\tv" + digit() + ".00\n");
    for (const std::string& text : {blank, emptyLine}) {
        if (isPlain(GetParam())) {
            refuses(text, {error(GetParam().numberFails)});
        } else {
            accepts(text, "");
        }
    }
    if (isPlain(GetParam())) {
        accepts(withSecondLine(" " + digit() + ".00\n"), "\n");
    }
}

TEST_P(DataHeader, SpaceBehindTheLetterIsSkipped) {
    accepts(withSecondLine("v \n " + digit() + ".00\n"), isPlain(GetParam()) ? "\n" : "");
}

TEST_P(DataHeader, AMissingNumberFails) {
    for (const std::string line :
         {"v", "v\n", "vx\n", "v.\n", "vv1.00\n", "v-\n", "v,1\n", "vinf\n", "vnan\n", "v1e999\n"}) {
        refuses(withSecondLine(line), {error(GetParam().numberFails)});
    }
}

TEST_P(DataHeader, TheVersionIsGivenOnceItIsReadEvenWhenItIsRefused) {
    EXPECT_EQ(readHeader(GetParam(), withSecondLine("v9.25\n")).version, 9.25F);
    for (const std::string& text :
         {std::string(), "x" + withSecondLine("v9.25\n"), withSecondLine(""), withSecondLine("vx\n")}) {
        EXPECT_EQ(readHeader(GetParam(), text).version, Reading().version) << text;
    }
}

TEST_P(DataHeader, AMissingSecondLineFails) {
    const char* const message =
        isSpec(GetParam()) ? "Unable to read version identifier." : GetParam().numberFails;
    for (const std::string& text :
         {GetParam().id, withSecondLine(""), withSecondLine("\n"), withSecondLine(" \n ")}) {
        refuses(text, {error(message)});
    }
}

TEST_P(DataHeader, TheWholePartOfTheVersionDecides) {
    const std::string rest = isPlain(GetParam()) ? "\n" : "";
    accepts(withSecondLine("v" + digit() + "\n"), rest);
    accepts(withSecondLine("v" + digit() + ".0e0\n"), rest);
    for (const char* fraction : {".99", ".75", ".50"}) {
        const std::string number = digit() + fraction;
        if (isSpec(GetParam())) {
            refuses(withSecondLine("v" + number + "\n"), refusalOf(GetParam(), number));
        } else {
            accepts(withSecondLine("v" + number + "\n"), rest);
        }
    }
    const std::string below = std::to_string(GetParam().version - 1);
    const std::string above = std::to_string(GetParam().version + 1);
    refuses(withSecondLine("v0.5\n"), refusalOf(GetParam(), "0.50"));
    refuses(withSecondLine("v" + below + ".99\n"), refusalOf(GetParam(), below + ".99"));
    refuses(withSecondLine("v" + below + ".00\n"), refusalOf(GetParam(), below + ".00"));
    refuses(withSecondLine("v" + above + ".00\n"), refusalOf(GetParam(), above + ".00"));
    refuses(withSecondLine("v-" + digit() + ".00\n"), refusalOf(GetParam(), "-" + digit() + ".00"));
    refuses(withSecondLine("v-0.50\n"), refusalOf(GetParam(), "-0.50"));
    refuses(withSecondLine("v1e30\n"), refusalOf(GetParam(), GetParam().format == DataFileFormat::Model
                                                                 ? "1000000015047466219876688855040.00"
                                                                 : "1000000000000000019884624838656.00"));
}

TEST_P(DataHeader, TheRestOfTheVersionLineIsDiscardedOrLeft) {
    accepts(withSecondLine("v" + digit() + ".00 # x\ncontent"),
            isPlain(GetParam()) ? " # x\ncontent" : "content");
    accepts(withSecondLine("v" + digit() + ".00"), "");
    const std::string remark(90, 'r');
    accepts(withSecondLine("v" + digit() + ".00" + remark + "\nc"),
            isPlain(GetParam()) ? remark + "\nc" : remark.substr(80) + "\nc");
}

TEST_P(DataHeader, ReportsOnTheGivenStatus) {
    LmISStream input("");
    LmStatus own;
    EXPECT_FALSE(readFormatHeader(input, GetParam().format, own));
    EXPECT_EQ(takeChain(own), badFirstLine(GetParam(), GetParam().firstLineFails));
    EXPECT_FALSE(currentStatus().hasEntries());
}

TEST(GenericHeader, TakesAnyIdAndVersion) {
    const CleanStatus clean;
    const struct {
        const char* text;
        StatusChain chain;
    } cases[] = {
        {"Some Id\nv3.25\nrest", {}},
        {"Some Id and more\nw3\nrest", {}},
        {"Some Ix\nv3\n", {error("File is not a Some Id"), error("Invalid datafile header id.")}},
        {"", {error("File is not a Some Id"), error("Unable to read data file header.")}},
        {"Some Id\nv", {error("Unable to read data file version.")}},
        {"Some Id\n", {error("Unable to read data file version.")}},
        {"Some Id\nv4.00\n", {error("Unsupported datafile version 4.00. Application uses version 3.50.")}},
        {"Some Id\nv2.999\n", {error("Unsupported datafile version 3.00. Application uses version 3.50.")}},
    };
    for (const auto& each : cases) {
        std::istringstream input(each.text);
        LmStatus status;
        EXPECT_EQ(readDataHeader(input, "Some Id", status, 3.5F), each.chain.empty()) << each.text;
        EXPECT_EQ(takeChain(status), each.chain) << each.text;
    }
    EXPECT_FALSE(currentStatus().hasEntries());
}

TEST(HeaderConstants, HoldIdsAndVersions) {
    const std::array ids{&problemSpecFileId, &problemDefFileId, &modelFileId,
                         &limitsFileId,      &scaleDefFileId,   &measuredFileId};
    const std::array versions{problemSpecFileVersion, problemDefFileVersion, modelFileVersion,
                              limitsFileVersion,      scaleDefFileVersion,   measuredFileVersion};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        EXPECT_EQ(ids[i]->c_str(), formats[i].id);
        EXPECT_EQ(versions[i], static_cast<float>(formats[i].version));
    }
}

// --- Writing ------------------------------------------------------------------------------------------

TEST(HeaderWriter, WritesTwoLinesAndPutsTheFormatBack) {
    std::ostringstream output;
    output << std::scientific << std::right << std::showpoint << std::setprecision(4);
    const std::ios::fmtflags flags = output.flags();
    writeDataHeader(output, modelFileId, 1.0F);
    writeDataHeader(output, "Other", 12.345F);
    EXPECT_EQ(output.str(), "Kym Model File\nv1.00\nOther\nv12.35\n");
    EXPECT_EQ(output.flags(), flags);
    EXPECT_EQ(output.precision(), 4);
}

TEST(HeaderWriter, WhatIsWrittenIsReadBack) {
    for (const Format& format : formats) {
        std::stringstream file;
        writeDataHeader(file, format.id.c_str(), static_cast<float>(format.version));
        LmStatus status;
        EXPECT_TRUE(readFormatHeader(file, format.format, status)) << format.id;
        EXPECT_FALSE(status.hasEntries());
    }
}

/// Takes a number of characters, then no more.
class ShortBuf : public std::streambuf {
public:
    explicit ShortBuf(std::size_t room) : room(room) {}

protected:
    int_type overflow(int_type c) override {
        return room == 0 ? traits_type::eof() : (--room, traits_type::not_eof(c));
    }

private:
    std::size_t room;
};

TEST(HeaderWriter, TestsTheStreamAfterEachLine) {
    const CleanStatus clean;
    std::ostringstream good;
    EXPECT_TRUE(writeCheckedDataHeader(good, limitsFileId, limitsFileVersion));
    EXPECT_EQ(good.str(), "Kym System Variable Limits File\nv2.00\n");
    EXPECT_FALSE(currentStatus().hasEntries());
    const std::size_t firstLine = good.str().find('\n') + 1;
    for (std::size_t room = 0; room < good.str().size(); ++room) {
        ShortBuf buffer(room);
        std::ostream output(&buffer);
        EXPECT_FALSE(writeCheckedDataHeader(output, limitsFileId, limitsFileVersion)) << room;
        EXPECT_THAT(takeChain(), ElementsAre(error(room < firstLine ? "Unable to write data file id."
                                                                    : "Unable to write data file version.")))
            << room;
    }
}

TEST(HeaderWriter, TheLimitsHeaderLeavesItsFormat) {
    std::ostringstream output;
    writeCheckedDataHeader(output, limitsFileId, limitsFileVersion);
    EXPECT_EQ(output.flags() & (std::ios::fixed | std::ios::left), std::ios::fixed | std::ios::left);
    EXPECT_EQ(output.precision(), 2);
}

} // namespace
} // namespace quillon
