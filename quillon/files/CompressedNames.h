#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

namespace quillon {

/// Whether the name ends in ".Z", ".gz" or ".jpeg", in just this spelling, behind at least one character.
/// `keyOut`, which may be null, then receives the extension without its dot.
bool hasCompressedExtension(const LmStr& name, LmStr* keyOut = nullptr);

/// The name under which a file lies on disk: the name itself if there is such a file, else the name with
/// ".gz", else with ".Z", whichever exists first; the name itself when none does.
LmStr findCompressedVariant(const LmStr& name);

/// The name without an extension ".gz" or ".Z", which goes to `extensionOut` with its dot, or an empty string
/// when there is none. A name of up to 2 characters comes back as it is and leaves `extensionOut` alone.
/// `extensionOut` may be null.
LmStr stripCompressedExtension(const LmStr& name, LmStr* extensionOut = nullptr);

/// `checkFileReadable` of `findCompressedVariant(name)`.
bool compressedFileReadable(const LmStr& name, LmStatus& status = currentStatus());

} // namespace quillon
