#include "fuzz/LineMutations.h"

#include <algorithm>

namespace quillon::fuzz {

namespace {

using Lines = std::vector<std::string>;

constexpr std::string_view blanks = " \t";

Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// Where a word stands in its line.
struct Word {
    std::size_t begin;
    std::size_t length;
};

/// Some word of a line; of no length in a line without words.
Word anyWord(const std::string& line, test::RandomSource& random) {
    const std::size_t from = line.find_first_not_of(blanks, random.below(line.size() + 1));
    const std::size_t begin = from == std::string::npos ? line.find_first_not_of(blanks) : from;
    if (begin == std::string::npos) {
        return {0, 0};
    }
    return {begin, std::min(line.find_first_of(blanks, begin), line.size()) - begin};
}

std::string anyNumber(test::RandomSource& random) {
    static constexpr const char* numbers[] = {"0",
                                              "-0",
                                              "1",
                                              "-1",
                                              "2",
                                              "3",
                                              "7",
                                              "-3",
                                              "1e-60",
                                              "1e60",
                                              "2147483647",
                                              "-2147483648",
                                              "2147483648",
                                              "4294967296",
                                              "0.005",
                                              "1e-45",
                                              "inf",
                                              "nan",
                                              "0x10",
                                              "100000",
                                              "3.4028235e38",
                                              "3.4028236e38",
                                              "999999.5",
                                              "*"};
    return random.oneOf(numbers);
}

/// The number with 1 added or taken; anything else as it is.
std::string neighbour(const std::string& word, test::RandomSource& random) {
    int value = 0;
    const auto end = std::from_chars(word.data(), word.data() + word.size(), value);
    if (end.ec != std::errc() || value < -1000000 || value > 1000000) {
        return word;
    }
    return std::to_string(random.oneIn(2) ? value + 1 : value - 1) +
           std::string(end.ptr, word.data() + word.size());
}

void changeWord(Lines& lines, test::RandomSource& random) {
    std::string& line = lines[random.below(lines.size())];
    const Word word = anyWord(line, random);
    const std::string& source = lines[random.below(lines.size())];
    const Word other = anyWord(source, random);
    std::string by;
    switch (random.below(5)) {
    case 0:
        by = anyNumber(random);
        break;
    case 1:
        by = neighbour(line.substr(word.begin, word.length), random);
        break;
    case 2:
        by = random.name(30, test::letters::line);
        break;
    case 3:
        break;
    default:
        by = source.substr(other.begin, other.length);
        break;
    }
    line.replace(word.begin, word.length, by);
}

void changeLines(Lines& lines, test::RandomSource& random) {
    const std::size_t begin = random.below(lines.size());
    const std::size_t most = std::min<std::size_t>(lines.size() - begin, random.oneIn(4) ? 40 : 3);
    const std::size_t count = 1 + random.below(most);
    const auto first = lines.begin() + static_cast<std::ptrdiff_t>(begin);
    const Lines some(first, first + static_cast<std::ptrdiff_t>(count));
    if (random.oneIn(2)) {
        lines.erase(first, first + static_cast<std::ptrdiff_t>(count));
    }
    if (random.oneIn(2)) {
        const auto place = static_cast<std::ptrdiff_t>(random.below(lines.size() + 1));
        lines.insert(lines.begin() + place, some.begin(), some.end());
    }
}

} // namespace

std::string mutatedLines(std::string_view text, const FuzzTarget& target, test::RandomSource& random) {
    if (target.makeInput != nullptr && (text.empty() || random.oneIn(20))) {
        return target.makeInput(random);
    }
    Lines lines = linesOf(text);
    for (std::size_t left = 1 + random.below(4); left > 0 && !lines.empty(); --left) {
        if (random.oneIn(3)) {
            changeLines(lines, random);
        } else {
            changeWord(lines, random);
        }
    }
    std::string mutated;
    for (const std::string& line : lines) {
        mutated += line + "\n";
    }
    return mutated;
}

} // namespace quillon::fuzz
