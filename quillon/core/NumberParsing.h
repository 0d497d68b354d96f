#pragma once

namespace quillon {

/// `strtod` in the classic locale, whatever the locale of the process: a decimal comma never counts.
double parseDouble(const char* text, char** end);

} // namespace quillon
