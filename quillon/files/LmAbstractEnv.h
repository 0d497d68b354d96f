#pragma once

#include "quillon/core/LmStr.h"

namespace quillon {

/// A set of named text values: the process environment, or what stands in for it.
class LmAbstractEnv {
public:
    LmAbstractEnv() = default;
    LmAbstractEnv(const LmAbstractEnv&) = delete;
    LmAbstractEnv& operator=(const LmAbstractEnv&) = delete;

    /// A heap copy of the value, which the caller frees with `free`, or null when the variable is unset.
    virtual char* getEnv(const char* name) = 0;
    /// Sets the variable, whether it has a value already or not.
    virtual void setEnv(const char* name, const char* value) = 0;
    virtual void unsetEnv(const char* name) = 0; ///< takes the variable away
    virtual ~LmAbstractEnv() = default;
};

/// The environment of the process.
class LmSystemEnv : public LmAbstractEnv {
public:
    char* getEnv(const char* name) override;
    void setEnv(const char* name, const char* value) override;
    void unsetEnv(const char* name) override;
};

/// The variable's value, empty when it is unset; in `env`, or in the process environment.
LmStr envString(const char* name, LmAbstractEnv& env);
LmStr envString(const char* name);

/// The variable's value. When it is unset, tells so on standard error and ends the process with 1.
LmStr requireEnvString(const char* name, LmAbstractEnv& env);
LmStr requireEnvString(const char* name);

/// Whether the variable is set, to an empty value also; in `env`, or in the process environment.
bool isEnvSet(const char* name, LmAbstractEnv& env);
bool isEnvSet(const char* name);

} // namespace quillon
