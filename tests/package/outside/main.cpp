#include "quillon/core/Fatal.h"
#include "quillon/tool/Version.h"

#include <cstdio>

int main(int argumentCount, char**) {
    if (argumentCount > 1) {
        quillon::endByMemoryFault();
    }
    std::puts(quillon::version);
}
