// own_format FILE: reads a format of one's own with the readers that the library's formats use.
//
//     SESSION: morning
//     TAKE {
//       FRAMES: 240
//     }

#include "quillon/core/LmStatus.h"
#include "quillon/core/TagReader.h"
#include "quillon/core/TokenReader.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmCompIFStream.h"

#include <iostream>

using namespace quillon;

static void readTake(const LmStr& text, LmStatus& status) {
    TaggedItems items(text, status);
    while (items.next()) {
        std::int32_t frames = 0;
        if (!items.tagIs("FRAMES")) {
            status.pushErrorf("Unexpected key word \"%s\".", items.tag().c_str());
            return;
        }
        if (!readInt(items.value(), frames, status)) {
            return;
        }
        std::cout << "a take of " << frames << " frames\n";
    }
}

static void readItems(std::istream& input, LmStatus& status) {
    TaggedItems items(input, status);
    while (items.next()) {
        if (items.tagIs("TAKE") && !items.isSimple()) {
            readTake(items.value(), status);
            if (status.errorStands()) {
                status.pushErrorf("Unable to read TAKE section.");
                return;
            }
        } else {
            std::cout << items.tag() << " is " << items.value() << "\n";
        }
    }
}

int main(int argc, char** argv) {
    LmStatus status;
    if (argc == 2 && checkFileReadable(argv[1], status)) {
        LmCompIFStream input;
        input.open(argv[1], status);
        readItems(input, status);
    }
    return status.printStatusToError();
}
