#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>

namespace quillon::test {

/// Letters of texts that tests make up. None holds a line end or a NUL.
namespace letters {
inline constexpr std::string_view word = "abcdefgXYZ0189_-.";
inline constexpr std::string_view words = "abcXYZ019_-. ";
/// Everything that a line may hold but a double quote: marks of our formats, tabs, letters beyond ASCII.
inline constexpr std::string_view line = "abcXYZ019 _.,;:#%$*+-/{}[]()\t'\\\x80\xa0\xff";
} // namespace letters

/// Makes up test data: the same seed gives the same draws with every compiler and standard library.
///
/// Two draws never stand in one expression or among the arguments of one call: compilers evaluate those in an
/// order of their own.
class RandomSource {
public:
    explicit RandomSource(std::uint64_t seed) : state(seed) {}

    /// 64 evenly spread bits. A generator by Steele, Lea and Flood: a counter with its bits mixed.
    std::uint64_t next() {
        state += 0x9e3779b97f4a7c15U;
        std::uint64_t mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31);
    }

    // --- Choices and integers --------------------------------------------------------------------

    /// A number from 0 up to, not including, `limit`.
    std::size_t below(std::size_t limit) { return next() % limit; }
    bool oneIn(std::size_t chances) { return below(chances) == 0; }
    /// One of the elements of an array, or one of the letters of a text.
    template <class Array>
    const auto& oneOf(const Array& choices) {
        return choices[below(std::size(choices))];
    }

    /// A number of these bounds, which belong to it.
    int between(int least, int most) {
        const auto count = static_cast<std::uint64_t>(std::int64_t{most} - least + 1);
        return static_cast<int>(least + static_cast<std::int64_t>(next() % count));
    }
    /// Mostly a small number, often 0 or below, now and then one of any size or the very last at either end.
    int anyInt() {
        switch (below(8)) {
        case 0:
            return between(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
        case 1:
            return oneIn(2) ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
        default:
            return between(-3, 1200);
        }
    }

    // --- Reals -----------------------------------------------------------------------------------

    /// A float that its fixed-point text with so many decimals (0 to 9) gives back exactly: plain ones, whole
    /// ones of any size up to the largest, the last decimal alone, and both zeros.
    float decimal(int decimals) {
        switch (below(8)) {
        case 0:
            return withSign(std::to_string(below(100)));
        case 1:
            return withSign("1e-" + std::to_string(decimals));
        case 2:
            return wholeOfAnySize();
        default:
            return withSign(digits(9) + "e-" + std::to_string(decimals));
        }
    }
    /// A float that its text with so many significant digits (1 to 6) gives back exactly: plain ones, extreme
    /// and tiny ones down to those that are no longer normal, and both zeros.
    float significant(int digitCount) {
        if (oneIn(8)) {
            return withSign("0");
        }
        const std::string kept = digits(static_cast<std::size_t>(digitCount));
        const int exponent = oneIn(3) ? between(-45, 32) : between(-8, 3);
        return withSign(kept + "e" + std::to_string(exponent));
    }
    float sixDigits() { return significant(6); }

    // --- Texts -----------------------------------------------------------------------------------

    /// A text of this length.
    std::string text(std::size_t length, std::string_view from) {
        std::string made;
        made.reserve(length);
        while (made.size() < length) {
            made += oneOf(from);
        }
        return made;
    }
    /// A text of 1 character up to `longest` that has no white space at its ends: often of 1, and around the
    /// 20 characters that fill a field of columns.
    std::string name(std::size_t longest, std::string_view from = letters::words) {
        std::string made = text(nameLength(longest), from);
        made.front() = oneOf(letters::word);
        made.back() = oneOf(letters::word);
        return made;
    }

private:
    std::size_t nameLength(std::size_t longest) {
        static constexpr std::size_t atTheEdges[] = {1, 2, 19, 20, 21, 22};
        const std::size_t length = oneIn(2) ? oneOf(atTheEdges) : 1 + below(longest);
        return length < longest ? length : longest;
    }

    /// So many digits at the most, the first of them not a 0.
    std::string digits(std::size_t most) {
        std::string made(1, static_cast<char>('1' + below(9)));
        for (std::size_t more = below(most); more > 0; --more) {
            made += static_cast<char>('0' + below(10));
        }
        return made;
    }

    float wholeOfAnySize() {
        if (oneIn(4)) {
            return oneIn(2) ? std::numeric_limits<float>::lowest() : std::numeric_limits<float>::max();
        }
        const std::string first = digits(2);
        return withSign(first + "e" + std::to_string(below(37)));
    }

    float withSign(const std::string& text) {
        double value = 0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return static_cast<float>(oneIn(2) ? -value : value);
    }

    std::uint64_t state;
};

/// The seed of generated tests: the value of QUILLON_TEST_SEED, or without one always the same.
inline std::uint64_t testSeed() {
    const char* const given = std::getenv("QUILLON_TEST_SEED");
    return given == nullptr ? 20261122 : std::strtoull(given, nullptr, 10);
}

/// Calls `check(random)` so many times with a source of its own each, up to the first failure, which tells
/// the seed that repeats it alone.
template <class Check>
void forGenerated(int times, Check check) {
    const std::uint64_t firstSeed = testSeed();
    for (std::uint64_t i = 0; i < static_cast<std::uint64_t>(times) && !testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE("QUILLON_TEST_SEED=" + std::to_string(firstSeed + i));
        RandomSource random(firstSeed + i);
        check(random);
    }
}

} // namespace quillon::test
