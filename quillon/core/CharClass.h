#pragma once

namespace quillon {

// The classes of characters in the classic locale. The process's own locale has no say, so that a file means
// the same under every locale; bytes above 127 belong to no class.

constexpr bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
constexpr bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}
constexpr bool isLetter(char c) {
    return isUpper(c) || isLower(c);
}
constexpr char upperOf(char c) {
    return isLower(c) ? static_cast<char>(c - ('a' - 'A')) : c;
}
constexpr char lowerOf(char c) {
    return isUpper(c) ? static_cast<char>(c + ('a' - 'A')) : c;
}

} // namespace quillon
