#include "quillon/files/LmIFStream.h"

#include <locale>

namespace quillon {

LmIFStream::LmIFStream(const LmStr& name) {
    imbue(std::locale::classic());
    open(name.c_str());
}

} // namespace quillon
