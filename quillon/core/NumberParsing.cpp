#include "quillon/core/NumberParsing.h"

#include <clocale>
#include <cstdlib>
#include <locale.h>

namespace quillon {

double parseDouble(const char* text, char** end) {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text, end, classic);
}

} // namespace quillon
