#include "quillon/core/LmStatus.h"
#include "quillon/tool/Version.h"

#include <iostream>

int main() {
    quillon::LmStatus status;
    status.pushError("An error of the outside program.");
    const bool works = status.printStatus(std::cout) == 1 && quillon::version[0] != '\0';
    return works ? 0 : 1;
}
