// The yardstick for whole runs, close to what the machine allows: reads the five files of a family whole,
// parses their numbers with std::from_chars, checks nothing, and prints LINES lines of seven numbers each,
// which is what a line of the report holds on average, with std::to_chars.
//
//     yardstick LINES family.zvx family.probdef family.model family.limits family.scaledef

#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t numbersPerLine = 7;
constexpr std::size_t longestNumber = 16;
constexpr std::string_view keyword = "body_scaling_transform body=Somebody direction=";

std::string readWhole(const char* path) {
    const int file = open(path, O_RDONLY);
    struct stat facts {};
    if (file < 0 || fstat(file, &facts) != 0) {
        std::exit(1);
    }
    std::string text(static_cast<std::size_t>(facts.st_size), '\0');
    if (read(file, text.data(), text.size()) != facts.st_size) {
        std::exit(1);
    }
    close(file);
    return text;
}

bool startsNumber(char c) {
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.';
}

void parseNumbers(std::string_view text, std::vector<float>& numbers) {
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        if (startsNumber(*position)) {
            double number = 0;
            const auto [behind, result] = std::from_chars(position, end, number);
            if (result == std::errc()) {
                numbers.push_back(static_cast<float>(number));
                position = behind;
                continue;
            }
        }
        while (position != end && *position > ' ') {
            ++position;
        }
        while (position != end && *position <= ' ') {
            ++position;
        }
    }
}

class Output {
public:
    ~Output() { flush(); }

    void printLine(const std::vector<float>& numbers, std::size_t& next) {
        if (text_.size() - used_ < keyword.size() + numbersPerLine * (longestNumber + 1) + 1) {
            flush();
        }
        keyword.copy(&text_[used_], keyword.size());
        used_ += keyword.size();
        for (std::size_t i = 0; i < numbersPerLine; ++i) {
            next = next + 1 < numbers.size() ? next + 1 : 0;
            char* const start = &text_[used_];
            char* const end =
                std::to_chars(start, start + longestNumber, numbers[next], std::chars_format::general, 6).ptr;
            used_ += static_cast<std::size_t>(end - start);
            text_[used_++] = ' ';
        }
        text_[used_++] = '\n';
    }

private:
    void flush() {
        if (write(STDOUT_FILENO, text_.data(), used_) != static_cast<ssize_t>(used_)) {
            std::exit(1);
        }
        used_ = 0;
    }

    std::string text_ = std::string(1 << 16, '\0');
    std::size_t used_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        return 1;
    }
    std::vector<float> numbers;
    for (int i = 2; i < argc; ++i) {
        parseNumbers(readWhole(argv[i]), numbers);
    }
    if (numbers.empty()) {
        return 1;
    }
    Output output;
    std::size_t next = 0;
    for (long lines = std::atol(argv[1]); lines > 0; --lines) {
        output.printLine(numbers, next);
    }
    return 0;
}
