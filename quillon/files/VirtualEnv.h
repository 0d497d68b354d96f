#pragma once

#include "quillon/files/LmAbstractEnv.h"

namespace quillon {

class LmDirLayout;

/// The environment of a layout in which DRENK_DATA_DIR and DRENK_DIR always have values: those of the layout,
/// without '/' at the end. So default search paths work in a process that has neither. Cannot be changed.
/// Only for use inside this folder and in tests.
class VirtualEnv : public LmAbstractEnv {
public:
    /// Answers from `source`, which must outlive this object.
    explicit VirtualEnv(LmDirLayout& source) : layout(source) {}

    char* getEnv(const char* name) override;
    void setEnv(const char* name, const char* value) override;
    void unsetEnv(const char* name) override;

private:
    LmDirLayout& layout;
};

} // namespace quillon
