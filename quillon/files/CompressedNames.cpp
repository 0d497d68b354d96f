#include "quillon/files/CompressedNames.h"

#include "quillon/files/CompressionTools.h"
#include "quillon/files/FileAccess.h"

namespace quillon {

bool hasCompressedExtension(const LmStr& name, LmStr* keyOut) {
    for (const CompressionKind& kind : compressionKinds) {
        if (name.length() >= kind.shortestName && name.view().ends_with(kind.extension)) {
            if (keyOut != nullptr) {
                *keyOut = kind.key;
            }
            return true;
        }
    }
    return false;
}

LmStr findCompressedVariant(const LmStr& name) {
    if (fileExists(name)) {
        return name;
    }
    for (const char* const extension : {".gz", ".Z"}) {
        const LmStr variant = name + extension;
        if (fileExists(variant)) {
            return variant;
        }
    }
    return name;
}

LmStr stripCompressedExtension(const LmStr& name, LmStr* extensionOut) {
    if (name.length() <= 2) {
        return name;
    }
    // The name may be the output too.
    const LmStr whole = name;
    for (const LmStr& extension : {LmStr(".gz"), LmStr(".Z")}) {
        if (whole.endsWith(extension)) {
            if (extensionOut != nullptr) {
                *extensionOut = extension;
            }
            return whole.dropRight(extension.length());
        }
    }
    if (extensionOut != nullptr) {
        *extensionOut = "";
    }
    return whole;
}

bool compressedFileReadable(const LmStr& name, LmStatus& status) {
    return checkFileReadable(findCompressedVariant(name), status);
}

} // namespace quillon
