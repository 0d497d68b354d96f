#pragma once

#include "quillon/problem/LqProblemDefData.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace quillon::test {

inline const std::string header = "Kym Problem Definition File\nv1.00\n";

/// The sections of a file, empty at first.
struct FileText {
    std::string sysVars = "  0\n";
    std::string bodies = "  0\n";
    std::string realMarkers = "  0\n";
    std::string fixMarkers = "  0\n";
    std::string doubleMarkers = "  0\n";
    std::string artificialMarkers = "  0\n";

    std::string text() const {
        return header + sysVars + bodies + realMarkers + fixMarkers + doubleMarkers + artificialMarkers;
    }
};

/// What reading `text` into `data` reports.
inline StatusChain chainAfterReading(LqProblemDefData& data, const std::string& text) {
    const CleanStatus clean;
    std::istringstream input(text);
    const bool good = data.readProblemDefStream(input, false);
    StatusChain chain = takeChain();
    EXPECT_EQ(good, chain.empty());
    return chain;
}

inline StatusChain chainAfterReading(const FileText& file) {
    LqProblemDefData data;
    return chainAfterReading(data, file.text());
}

inline const std::string noMapping = "   0\n";
inline const std::string sixNoMappings =
    noMapping + noMapping + noMapping + noMapping + noMapping + noMapping;
inline const std::string usualOrder = "    1   2   3   6   5   4\n";

/// A body whose names fill their columns, without mappings.
inline std::string bodyText(std::string name, std::string parent,
                            const std::string& numbers = "       1   0\n") {
    name.resize(20, ' ');
    parent.resize(20, ' ');
    return " " + name + parent + numbers + usualOrder + sixNoMappings;
}

} // namespace quillon::test
