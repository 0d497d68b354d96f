#include "quillon/files/LmOFStream.h"

namespace quillon {

void LmOFStream::open(const LmStr& name, std::ios::openmode mode) {
    std::ofstream::open(name.c_str(), mode | std::ios::out);
}

} // namespace quillon
