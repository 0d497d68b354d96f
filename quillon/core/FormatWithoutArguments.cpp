#include "quillon/core/CharClass.h"
#include "quillon/core/LmStr.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace quillon {

namespace {

constexpr std::size_t greatestFormattedLength = 1023;

/// A conversion of a format: "%", flags, width, precision, length modifiers and a letter.
struct Conversion {
    bool leftJustified = false;
    bool zeroPadded = false;
    bool alternate = false;
    char sign = '\0';
    std::size_t width = 0;
    bool hasPrecision = false;
    std::size_t precision = 0;
    char letter = '\0';
};

const char* readNumber(const char* at, std::size_t& number) {
    number = 0;
    // A '*' would take its number from an argument, and a zero stands for each of them.
    if (*at == '*') {
        return at + 1;
    }
    for (; isDigit(*at); ++at) {
        number = std::min(number * 10 + static_cast<std::size_t>(*at - '0'), greatestFormattedLength);
    }
    return at;
}

const char* readConversion(const char* at, Conversion& conversion) {
    for (; *at != '\0' && std::strchr("-+ #0'I", *at) != nullptr; ++at) {
        conversion.leftJustified |= *at == '-';
        conversion.zeroPadded |= *at == '0';
        conversion.alternate |= *at == '#';
        if (*at == '+' || (*at == ' ' && conversion.sign == '\0')) {
            conversion.sign = *at;
        }
    }
    at = readNumber(at, conversion.width);
    if (*at == '.') {
        conversion.hasPrecision = true;
        at = readNumber(at + 1, conversion.precision);
    }
    while (*at != '\0' && std::strchr("hlLqjzt", *at) != nullptr) {
        ++at;
    }
    conversion.letter = *at;
    return at;
}

std::string zeroFraction(const Conversion& conversion) {
    const std::size_t digits = conversion.hasPrecision ? conversion.precision : 6;
    return digits == 0 ? (conversion.alternate ? "0." : "0") : "0." + std::string(digits, '0');
}

std::string zeroInteger(const Conversion& conversion) {
    return std::string(conversion.hasPrecision ? conversion.precision : 1, '0');
}

/// What the conversion makes of a zero, or of an empty text, before padding.
std::string zeroText(const Conversion& conversion) {
    switch (conversion.letter) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
        return zeroInteger(conversion);
    case 'o':
        return conversion.alternate && zeroInteger(conversion).empty() ? "0" : zeroInteger(conversion);
    case 'f':
    case 'F':
        return zeroFraction(conversion);
    case 'e':
        return zeroFraction(conversion) + "e+00";
    case 'E':
        return zeroFraction(conversion) + "E+00";
    case 'g':
    case 'G':
        return "0";
    case 'a':
        return "0x0p+0";
    case 'A':
        return "0X0P+0";
    case 'p':
        return "(nil)";
    default:
        return {};
    }
}

bool takesSign(char letter) {
    return std::strchr("difFeEgGaA", letter) != nullptr;
}

void appendConversion(std::string& result, const Conversion& conversion) {
    const bool isNumber = std::strchr("scmSCp", conversion.letter) == nullptr;
    const std::string sign(conversion.sign != '\0' && takesSign(conversion.letter) ? 1 : 0, conversion.sign);
    const std::string text = zeroText(conversion);
    const std::size_t length = sign.size() + text.size();
    const std::size_t padding = conversion.width > length ? conversion.width - length : 0;
    if (conversion.leftJustified) {
        result += sign + text + std::string(padding, ' ');
    } else if (conversion.zeroPadded && isNumber) {
        result += sign + std::string(padding, '0') + text;
    } else {
        result += std::string(padding, ' ') + sign + text;
    }
}

} // namespace

LmStr formatWithoutArguments(const char* format) {
    std::string result;
    for (const char* at = format; *at != '\0' && result.size() < greatestFormattedLength; ++at) {
        if (*at != '%') {
            result += *at;
            continue;
        }
        Conversion conversion;
        const char* const end = readConversion(at + 1, conversion);
        if (conversion.letter == '%') {
            result += '%';
        } else if (conversion.letter == 'n') {
            // A count would be written through an argument, and there is none.
        } else if (conversion.letter != '\0' &&
                   std::strchr("diuoxXfFeEgGaAcCsSpm", conversion.letter) != nullptr) {
            appendConversion(result, conversion);
        } else {
            result += '%';
            continue;
        }
        at = end;
    }
    result.resize(std::min(result.size(), greatestFormattedLength));
    return LmStr(std::string_view(result));
}

} // namespace quillon
