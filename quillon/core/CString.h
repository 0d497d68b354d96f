#pragma once

namespace quillon {

// Helpers on NUL-terminated strings, for callers that own such text.

/// Grows the heap block of `text` by `realloc`, appends `more` and returns the new block.
char* strAppendRealloc(char* text, const char* more);
/// The last occurrence of c, or null; an empty text gives null.
const char* strFindLast(const char* text, char c);
/// A heap copy that the caller frees with `free`.
char* strDuplicate(const char* text);
/// Each removes white space in place, at the end, the front or both, and returns the text that it was given.
char* strTrimRight(char* text);
char* strTrimLeft(char* text);
char* strTrim(char* text);
/// Compares without regard to case. The sign is the reverse of that of `strcmp`: at the first difference the
/// result is the raw character of b minus that of a. Callers depend on it.
int strCompareNoCase(const char* a, const char* b);
/// The same over at most n characters; 0 for n of 0, and a comparison of the first characters below that.
int strCompareNoCaseN(const char* a, const char* b, int n);

} // namespace quillon
