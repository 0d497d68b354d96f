#pragma once

namespace quillon {

// The classes of characters in the classic locale. The process's own locale has no say, so that a file means
// the same under every locale; bytes above 127 belong to no class.

constexpr bool isSpace(char c) { ///< blank, tab, LF, VT, FF or CR
    return c == ' ' || (c >= '\t' && c <= '\r');
}
constexpr bool isDigit(char c) { ///< 0 to 9
    return c >= '0' && c <= '9';
}
constexpr bool isUpper(char c) { ///< A to Z
    return c >= 'A' && c <= 'Z';
}
constexpr bool isLower(char c) { ///< a to z
    return c >= 'a' && c <= 'z';
}
constexpr bool isLetter(char c) { ///< A to Z or a to z
    return isUpper(c) || isLower(c);
}
constexpr char upperOf(char c) { ///< the capital of a small letter, all else as it is
    return isLower(c) ? static_cast<char>(c - ('a' - 'A')) : c;
}
constexpr char lowerOf(char c) { ///< the small letter of a capital, all else as it is
    return isUpper(c) ? static_cast<char>(c + ('a' - 'A')) : c;
}

} // namespace quillon
