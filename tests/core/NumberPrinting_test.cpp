#include "quillon/core/NumberPrinting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <limits>
#include <locale>
#include <ostream>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

// Every number that is printed is compared with what a standard stream prints.

namespace quillon {
namespace {

constexpr unsigned seed = 5150;

/// Takes characters up to a limit, and counts the flushes.
class FixedBuf : public std::streambuf {
public:
    void start(std::size_t limit) {
        setp(block.data(), block.data() + std::min(limit, block.size()));
        syncs = 0;
    }
    std::string_view text() const { return {block.data(), static_cast<std::size_t>(pptr() - pbase())}; }

    int syncs = 0;

protected:
    int sync() override { return ++syncs, 0; }

private:
    std::array<char, 600> block{};
};

constexpr std::size_t unlimited = 600;

class CommaNumbers : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::locale commaLocale() {
    return std::locale(std::locale::classic(), new CommaNumbers);
}

std::uint32_t bitsOf(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float floatOf(std::uint32_t bits) {
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::string formatted(float value) {
    std::array<char, numberTextSize> text{};
    return std::string(text.data(), formatReal(text.data(), value));
}

std::string formattedInt(std::int64_t value) {
    std::array<char, numberTextSize> text{};
    return std::string(text.data(), formatInt(text.data(), value));
}

/// Compares `formatReal` with a standard stream.
class FormatComparison {
public:
    bool agreesOn(float value) {
        standardBuf.start(unlimited);
        standard << static_cast<double>(value);
        std::array<char, numberTextSize> text{};
        const char* const end = formatReal(text.data(), value);
        const std::string_view ours(text.data(), static_cast<std::size_t>(end - text.data()));
        EXPECT_EQ(ours, standardBuf.text()) << "of the bits " << std::hex << bitsOf(value);
        return ours == standardBuf.text();
    }

private:
    FixedBuf standardBuf;
    std::ostream standard{&standardBuf};
};

TEST(FormatReal, KnowsTheFormsThatAStreamPrints) {
    const float infinity = std::numeric_limits<float>::infinity();
    const struct {
        float value;
        const char* text;
    } cases[] = {{0.0F, "0"},
                 {-0.0F, "-0"},
                 {1.0F, "1"},
                 {0.1F, "0.1"},
                 {-12.5F, "-12.5"},
                 {100000.0F, "100000"},
                 {1e6F, "1e+06"},
                 {999999.0F, "999999"},
                 {999999.5F, "1e+06"},
                 {123456.5F, "123456"},
                 {123457.5F, "123458"},
                 {0.0001F, "0.0001"},
                 {0.00001F, "1e-05"},
                 {1e10F, "1e+10"},
                 {3.4028235e38F, "3.40282e+38"},
                 {1.4e-45F, "1.4013e-45"},
                 {infinity, "inf"},
                 {-infinity, "-inf"},
                 {1.0F / 3.0F, "0.333333"},
                 {16777216.0F, "1.67772e+07"}};
    for (const auto& each : cases) {
        EXPECT_EQ(formatted(each.value), each.text);
    }
}

TEST(FormatReal, GivesWhatAStreamGivesForRandomBits) {
    FormatComparison comparison;
    std::mt19937 random(seed);
    int failures = 0;
    for (int i = 0; i < 2000000 && failures < 5; ++i) {
        failures += comparison.agreesOn(floatOf(static_cast<std::uint32_t>(random()))) ? 0 : 1;
    }
}

TEST(FormatReal, GivesWhatAStreamGivesAroundPowersOfTenAndTwo) {
    FormatComparison comparison;
    for (int exponent = -46; exponent <= 38; ++exponent) {
        for (const double factor : {1.0, 9.99999, 9.999995, 9.9999995, 5.0, 1.000005, 1.0000005}) {
            const auto middle = static_cast<std::int64_t>(
                bitsOf(static_cast<float>(std::min(factor * std::pow(10.0, exponent), 3.4e38))));
            for (std::int64_t bits = std::max<std::int64_t>(0, middle - 20); bits <= middle + 20; ++bits) {
                comparison.agreesOn(floatOf(static_cast<std::uint32_t>(bits)));
                comparison.agreesOn(-floatOf(static_cast<std::uint32_t>(bits)));
            }
        }
    }
    for (std::uint32_t exponent = 0; exponent < 256; ++exponent) {
        for (const std::uint32_t mantissa : {0U, 1U, 2U, 0x3FFFFFU, 0x400000U, 0x7FFFFEU, 0x7FFFFFU}) {
            comparison.agreesOn(floatOf(exponent << 23 | mantissa));
            comparison.agreesOn(floatOf(1U << 31 | exponent << 23 | mantissa));
        }
    }
}

TEST(FormatReal, GivesWhatAStreamGivesForTiesInTheSixthDigit) {
    FormatComparison comparison;
    std::mt19937 random(seed + 1);
    int failures = 0;
    for (int i = 0; i < 100000 && failures < 5; ++i) {
        // Six digits and a half, a quarter and so on of the last one: ties, since the fraction is exact in
        // binary.
        const auto sixDigits = static_cast<float>(100000 + random() % 900000);
        const auto fiveDigits = static_cast<float>(10000 + random() % 90000);
        failures += comparison.agreesOn(sixDigits + 0.5F) ? 0 : 1;
        failures += comparison.agreesOn(fiveDigits + 0.25F) ? 0 : 1;
        failures += comparison.agreesOn(fiveDigits + 0.75F) ? 0 : 1;
        failures += comparison.agreesOn(-(sixDigits * 10.0F + 5.0F)) ? 0 : 1;
    }
    for (int digits = 0; digits < 2000; ++digits) {
        comparison.agreesOn(static_cast<float>(digits) + 0.5F);
        comparison.agreesOn(static_cast<float>(digits) / 1000.0F);
    }
}

TEST(FormatReal, GivesWhatAStreamGivesForDenormalsAndNotANumber) {
    FormatComparison comparison;
    for (std::uint32_t bits = 1; bits < 0x800000U; bits = bits * 3 / 2 + 1) {
        comparison.agreesOn(floatOf(bits));
    }
    for (std::uint32_t bits = 0x7F800001U; bits < 0x80000000U; bits += 0x12345U) {
        comparison.agreesOn(floatOf(bits));
        comparison.agreesOn(floatOf(bits | 0x80000000U));
    }
}

TEST(FormatInt, GivesPlainDecimal) {
    std::mt19937_64 random(seed + 2);
    std::vector<std::int64_t> values{0,
                                     1,
                                     -1,
                                     9,
                                     10,
                                     -10,
                                     std::numeric_limits<std::int64_t>::max(),
                                     std::numeric_limits<std::int64_t>::min(),
                                     std::numeric_limits<std::int32_t>::min()};
    for (int i = 0; i < 20000; ++i) {
        values.push_back(static_cast<std::int64_t>(random()) >> random() % 64);
    }
    for (const std::int64_t value : values) {
        ASSERT_EQ(formattedInt(value), std::to_string(value));
    }
}

/// Two streams in the same format: one printed to by our functions and one by `<<`.
class PrintComparison {
public:
    explicit PrintComparison(const std::locale& locale) {
        ours.imbue(locale);
        standard.imbue(locale);
    }

    struct Format {
        std::ios::fmtflags flags = std::ios::skipws | std::ios::dec;
        int precision = 6;
        int width = 0;
        char fill = ' ';
        std::ios::iostate state = std::ios::goodbit;
        std::size_t limit = unlimited;
    };

    bool agreesOn(float value, const Format& format) {
        start(format);
        printReal(ours, value);
        standard << static_cast<double>(value);
        return compare(format, "the real " + std::to_string(value));
    }

    bool agreesOn(std::int64_t value, const Format& format) {
        start(format);
        printInt(ours, value);
        standard << value;
        return compare(format, "the integer " + std::to_string(value));
    }

private:
    FixedBuf ourBuf;
    FixedBuf standardBuf;
    std::ostream ours{&ourBuf};
    std::ostream standard{&standardBuf};

    void start(const Format& format) {
        ourBuf.start(format.limit);
        standardBuf.start(format.limit);
        for (std::ostream* stream : {&ours, &standard}) {
            stream->clear(format.state);
            stream->flags(format.flags);
            stream->precision(format.precision);
            stream->width(format.width);
            stream->fill(format.fill);
        }
    }

    bool compare(const Format& format, const std::string& what) {
        const bool same = ourBuf.text() == standardBuf.text() && ours.rdstate() == standard.rdstate() &&
                          ours.width() == standard.width() && ourBuf.syncs == standardBuf.syncs;
        EXPECT_TRUE(same) << what << " with flags " << format.flags << ", precision " << format.precision
                          << ", width " << format.width << ", limit " << format.limit << ", state "
                          << format.state << ":\n\"" << ourBuf.text() << "\" in state " << ours.rdstate()
                          << ", width " << ours.width() << ", " << ourBuf.syncs << " flushes, and not\n\""
                          << standardBuf.text() << "\" in state " << standard.rdstate() << ", width "
                          << standard.width() << ", " << standardBuf.syncs;
        return same;
    }
};

PrintComparison::Format anyFormat(std::mt19937& random) {
    static constexpr std::array floats{std::ios::fmtflags{}, std::ios::fmtflags{}, std::ios::fixed,
                                       std::ios::scientific, std::ios::fixed | std::ios::scientific};
    static constexpr std::array bases{std::ios::dec, std::ios::dec, std::ios::hex, std::ios::oct,
                                      std::ios::fmtflags{}};
    static constexpr std::array sides{std::ios::fmtflags{}, std::ios::left, std::ios::right,
                                      std::ios::internal};
    static constexpr std::array states{std::ios::goodbit, std::ios::goodbit, std::ios::goodbit,
                                       std::ios::goodbit, std::ios::failbit, std::ios::badbit,
                                       std::ios::eofbit};
    PrintComparison::Format format;
    format.flags =
        floats[random() % floats.size()] | bases[random() % bases.size()] | sides[random() % sides.size()];
    for (const std::ios::fmtflags flag : {std::ios::showpos, std::ios::showpoint, std::ios::uppercase,
                                          std::ios::showbase, std::ios::unitbuf, std::ios::skipws}) {
        if (random() % 4 == 0) {
            format.flags |= flag;
        }
    }
    format.precision = static_cast<int>(random() % 22) - 1;
    format.width = random() % 2 == 0 ? 0 : static_cast<int>(random() % 25);
    format.fill = random() % 2 == 0 ? ' ' : '*';
    format.state = states[random() % states.size()];
    format.limit = random() % 4 == 0 ? random() % 30 : unlimited;
    return format;
}

float anyFloat(std::mt19937& random) {
    return random() % 2 == 0 ? floatOf(static_cast<std::uint32_t>(random()))
                             : static_cast<float>(static_cast<std::int32_t>(random())) / 65536.0F;
}

void comparePrinting(const std::locale& locale, unsigned randomSeed) {
    PrintComparison comparison(locale);
    std::mt19937 random(randomSeed);
    int failures = 0;
    for (int i = 0; i < 60000 && failures < 5; ++i) {
        PrintComparison::Format format = anyFormat(random);
        if (i % 3 == 0) {
            // The format that nearly all is printed in, on a stream that may be full or failed.
            format = {.state = format.state, .limit = format.limit};
        }
        const auto integer =
            static_cast<std::int64_t>(std::uint64_t{random()} << 32 | random()) >> random() % 64;
        failures += comparison.agreesOn(anyFloat(random), format) ? 0 : 1;
        failures += comparison.agreesOn(integer, format) ? 0 : 1;
    }
}

TEST(Printing, GivesWhatAStreamGivesInEveryFormat) {
    comparePrinting(std::locale::classic(), seed + 3);
}

TEST(Printing, GivesWhatAStreamGivesInALocaleWithADecimalComma) {
    comparePrinting(commaLocale(), seed + 4);
    std::ostringstream output;
    output.imbue(commaLocale());
    printReal(output, 1.5F);
    output << ' ';
    printInt(output, 1234567);
    EXPECT_EQ(output.str(), "1,5 1.234.567");
}

TEST(Printing, UsesTheWidthOnce) {
    std::ostringstream output;
    output << std::setw(6);
    printReal(output, 1.5F);
    printReal(output, 2.5F);
    output << std::left << std::setw(4);
    printInt(output, 7);
    printInt(output, 8);
    EXPECT_EQ(output.str(), "   1.52.57   8");
}

TEST(FormatGuard, PutsTheFormatBack) {
    std::ostringstream output;
    output << std::showpos << std::setprecision(3) << std::setfill('.') << std::setw(9);
    const std::ios::fmtflags flags = output.flags();
    {
        const FormatGuard guard(output);
        output << std::fixed << std::left << std::hex << std::setprecision(9) << std::setfill('x')
               << std::setw(2) << 5;
    }
    EXPECT_EQ(output.flags(), flags);
    EXPECT_EQ(output.precision(), 3);
    EXPECT_EQ(output.fill(), '.');
    EXPECT_EQ(output.width(), 9);
}

} // namespace
} // namespace quillon
