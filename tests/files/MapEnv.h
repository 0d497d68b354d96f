#pragma once

#include "quillon/core/CString.h"
#include "quillon/files/LmAbstractEnv.h"

#include <initializer_list>
#include <map>
#include <string>
#include <utility>

namespace quillon::test {

/// An environment in memory.
class MapEnv : public LmAbstractEnv {
public:
    MapEnv(std::initializer_list<std::pair<const std::string, std::string>> initial) : values(initial) {}

    char* getEnv(const char* name) override {
        const auto found = values.find(name);
        return found == values.end() ? nullptr : strDuplicate(found->second.c_str());
    }
    void setEnv(const char* name, const char* value) override { values[name] = value; }
    void unsetEnv(const char* name) override { values.erase(name); }

    std::map<std::string, std::string> values;
};

} // namespace quillon::test
