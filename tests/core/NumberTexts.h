#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

namespace quillon::test {

/// Texts with numbers in them, good and bad, from several grammars. The same seed gives the same texts.
class NumberTexts {
public:
    explicit NumberTexts(std::uint64_t seed) : random(seed) {}

    std::uint64_t below(std::uint64_t limit) { return random() % limit; }
    bool oneIn(std::uint64_t chances) { return below(chances) == 0; }

    /// White space or none, a number or what looks like one, and what may follow it, several times over.
    std::string next() {
        std::string text;
        const std::uint64_t parts = 1 + below(3);
        for (std::uint64_t part = 0; part < parts; ++part) {
            text += space() + number() + tail();
        }
        if (oneIn(8)) {
            text += std::string(60 + below(40), 'c') + "\n" + number();
        }
        return text;
    }

    std::string number() {
        switch (below(12)) {
        case 0:
            return nearALimit();
        case 1:
            return nasty();
        case 2:
            return longDigits();
        case 3:
            return soup();
        case 4:
            return mutated(plainReal());
        case 5:
            return mutated(printedReal());
        case 6:
            return printedReal();
        case 7:
            return std::to_string(static_cast<int>(random() >> below(64)));
        case 8:
            return fixedColumns();
        case 9:
            return betweenTwoDoubles();
        default:
            return plainReal();
        }
    }

private:
    std::mt19937_64 random;

    template <std::size_t n>
    const char* oneOf(const std::array<const char*, n>& texts) {
        return texts[below(n)];
    }

    std::string digits(std::uint64_t atMost) {
        std::string text;
        for (std::uint64_t count = below(atMost + 1); count > 0; --count) {
            text += static_cast<char>('0' + (oneIn(3) ? 0 : below(10)));
        }
        return text;
    }

    std::string sign() { return oneOf(std::array{"", "", "", "-", "-", "+"}); }
    std::string space() {
        return oneOf(std::array{"", "", " ", "  ", "\n", "\t", " \t\n\v\f\r ", "\r\n", "             "});
    }

    std::string tail() {
        switch (below(10)) {
        case 0:
            return "";
        case 1:
            return "\n";
        case 2:
            return "\r\n";
        case 3:
            return oneOf(std::array{"x", "-", "+", ".", ",", "e", "E", "#", "\xFF", "\xA0"});
        case 4:
            return std::string(1, '\0');
        case 5:
            return "  # remark\n";
        default:
            return " ";
        }
    }

    std::string exponent() {
        if (oneIn(2)) {
            return "";
        }
        const std::string mark = oneIn(3) ? "E" : "e";
        if (oneIn(10)) {
            return mark + sign() + digits(22);
        }
        return mark + sign() + std::to_string(below(oneIn(3) ? 400 : 45));
    }

    std::string plainReal() {
        const std::uint64_t most = oneIn(4) ? 25 : 8;
        return sign() + digits(most) + (oneIn(4) ? "" : "." + digits(most)) + exponent();
    }

    std::string nearALimit() {
        static constexpr std::array limits{
            "2147483647",          "2147483648",          "4294967295",           "4294967296",
            "9223372036854775807", "9223372036854775808", "18446744073709551615", "18446744073709551616"};
        std::string text = oneOf(limits);
        char& last = text[text.size() - 1 - below(2)];
        last = static_cast<char>('0' + below(10));
        if (oneIn(8)) {
            text += static_cast<char>('0' + below(10));
        }
        return sign() + (oneIn(4) ? "000" : "") + text;
    }

    std::string nasty() {
        static constexpr std::array texts{"",
                                          "-",
                                          "+",
                                          ".",
                                          "-.",
                                          "+.5",
                                          "-.5",
                                          "5.",
                                          "-5.",
                                          "1e",
                                          "1e+",
                                          "1e-",
                                          "1.e5",
                                          ".e5",
                                          "e5",
                                          "1e5.5",
                                          "1ee5",
                                          "1e+-5",
                                          "--1",
                                          "+-1",
                                          "1-",
                                          "1+",
                                          "1.2.3",
                                          "..5",
                                          "0x10",
                                          "0X1p3",
                                          "-0x1",
                                          "0x",
                                          "010",
                                          "00",
                                          "-0",
                                          "-0.0",
                                          "+0",
                                          "0e0",
                                          "0e999999",
                                          "1e999999999999999999999",
                                          "1e-999999999999999999999",
                                          "nan",
                                          "NaN",
                                          "inf",
                                          "-inf",
                                          "Infinity",
                                          "1e308",
                                          "1.7976931348623157e308",
                                          "1.7976931348623158e308",
                                          "1.7976931348623159e308",
                                          "1.8e308",
                                          "-1e309",
                                          "4.9e-324",
                                          "2.4e-324",
                                          "2.5e-324",
                                          "1e-400",
                                          "2.2250738585072014e-308",
                                          "2.2250738585072011e-308",
                                          "3.4028234663852886e38",
                                          "3.4028235677973366e38",
                                          "3.4028236e38",
                                          "-3.5e38",
                                          "1.17549435e-38",
                                          "1.4e-45",
                                          "7e-46",
                                          "1e-46",
                                          "9007199254740993",
                                          "9007199254740992.5",
                                          "1,000",
                                          "1.000,5",
                                          "1'000",
                                          "1_0",
                                          "0.1",
                                          "0.30000000000000004",
                                          "123456789012345678901234567890",
                                          "0.000000000000000000000000000000000000000000001",
                                          "1e0000000000000000000001",
                                          "1e+0000",
                                          "0000000000000001",
                                          "8.5e",
                                          "12abc",
                                          "1f",
                                          "1L",
                                          "1 2",
                                          "1\t",
                                          "\xC3\xA9",
                                          "\xD9\xA1"};
        return oneOf(texts);
    }

    std::string longDigits() {
        std::string text = sign();
        const std::uint64_t length = 20 + below(oneIn(10) ? 780 : 40);
        const std::uint64_t point = below(length + 40);
        const bool zeros = oneIn(4);
        for (std::uint64_t i = 0; i < length; ++i) {
            if (i == point) {
                text += '.';
            }
            text += static_cast<char>('0' + (zeros && i + 1 < length ? 0 : below(10)));
        }
        return text + exponent();
    }

    std::string soup() {
        using namespace std::string_view_literals;
        static constexpr std::string_view letters = "0123456789012345+-..eExXabfinINF, \t\n\r\v\f#\0\xFF'"sv;
        std::string text;
        for (std::uint64_t count = below(12); count > 0; --count) {
            text += letters[below(letters.size())];
        }
        return text;
    }

    std::string mutated(std::string text) {
        const std::uint64_t at = below(text.size() + 1);
        switch (below(3)) {
        case 0:
            return text.insert(at, soup().substr(0, 1));
        case 1:
            return text.erase(at, 1);
        default:
            return text.replace(at, 1, soup().substr(0, 1));
        }
    }

    double anyDouble() {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    std::string printedReal() {
        static constexpr std::array formats{"%.6g",  "%.9g",  "%.15g", "%.16g",
                                            "%.17g", "%.18g", "%.*e",  "%.*g"};
        std::array<char, 900> block{};
        const double value =
            oneIn(2) ? anyDouble()
                     : static_cast<double>(static_cast<std::int64_t>(random() >> below(60))) / 1000.0;
        const std::uint64_t which = below(formats.size());
        const int precision = static_cast<int>(below(30));
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
        if (which >= 6) {
            std::snprintf(block.data(), block.size(), formats[which], precision, value);
        } else {
            std::snprintf(block.data(), block.size(), formats[which], value);
        }
#pragma GCC diagnostic pop
        return block.data();
    }

    /// The exact digits of the middle between two neighbouring doubles, or close to it.
    std::string betweenTwoDoubles() {
        const std::uint64_t mantissa = (std::uint64_t{1} << 53) | (random() >> 11) | 1;
        return sign() + std::to_string(mantissa) +
               oneOf(std::array{"", "", ".", ".000000", ".00000000000000000000000000000000001", "e0", "e-5",
                                "e5"});
    }

    std::string fixedColumns() {
        std::array<char, 120> block{};
        const double value = static_cast<double>(static_cast<std::int32_t>(random())) / 65536.0;
        std::snprintf(block.data(), block.size(), "%10.6f %8.3f%4d\n", value, value / 7,
                      static_cast<int>(below(2000)));
        return block.data();
    }
};

} // namespace quillon::test
