#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace quillon::test {

/// Gives a variable of the process environment a value, or none, and puts back at the end of the scope what
/// was there.
class EnvironmentValue {
public:
    EnvironmentValue(const std::string& variable, const std::optional<std::string>& value) : name(variable) {
        if (const char* const present = std::getenv(name.c_str())) {
            before = present;
        }
        put(value);
    }
    EnvironmentValue(const EnvironmentValue&) = delete;
    EnvironmentValue& operator=(const EnvironmentValue&) = delete;
    ~EnvironmentValue() { put(before); }

private:
    void put(const std::optional<std::string>& value) const {
        if (value) {
            setenv(name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name.c_str());
        }
    }

    std::string name;
    std::optional<std::string> before;
};

} // namespace quillon::test
