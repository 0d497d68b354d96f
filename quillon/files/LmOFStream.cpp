#include "quillon/files/LmOFStream.h"

#include <locale>

namespace quillon {

LmOFStream::LmOFStream() {
    imbue(std::locale::classic());
}

LmOFStream::LmOFStream(const LmStr& name, std::ios::openmode mode) : LmOFStream() {
    open(name, mode);
}

void LmOFStream::open(const LmStr& name, std::ios::openmode mode) {
    std::ofstream::open(name.c_str(), mode | std::ios::out);
}

} // namespace quillon
