#include "quillon/core/LmStr.h"

#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <sstream>

namespace quillon {
namespace {

using support::ChildResult;
using support::runFunction;

struct NullCase {
    const char* name;
    std::function<void(LmStr& null)> operation;
};

/// Every operation that reaches for the text.
const NullCase operationsThatNeedAText[] = {
    {"length", [](LmStr& s) { static_cast<void>(s.length()); }},
    {"c_str", [](LmStr& s) { static_cast<void>(s.c_str()); }},
    {"duplicate", [](LmStr& s) { static_cast<void>(s.duplicate()); }},
    {"isValidIndex", [](LmStr& s) { static_cast<void>(s.isValidIndex(0)); }},
    {"find text", [](LmStr& s) { static_cast<void>(s.find("a")); }},
    {"find character", [](LmStr& s) { static_cast<void>(s.find('a')); }},
    {"find null", [](LmStr& s) { static_cast<void>(LmStr("abc").find(s)); }},
    {"findNth", [](LmStr& s) { static_cast<void>(s.findNth('a', 1)); }},
    {"findLast", [](LmStr& s) { static_cast<void>(s.findLast('a')); }},
    {"lastIndexOf", [](LmStr& s) { static_cast<void>(s.lastIndexOf('a')); }},
    {"count", [](LmStr& s) { static_cast<void>(s.count('a')); }},
    {"firstDigit", [](LmStr& s) { static_cast<void>(s.firstDigit()); }},
    {"right", [](LmStr& s) { static_cast<void>(s.right(1)); }},
    {"skip", [](LmStr& s) { static_cast<void>(s.skip(0)); }},
    {"left", [](LmStr& s) { static_cast<void>(s.left(1)); }},
    {"dropRight", [](LmStr& s) { static_cast<void>(s.dropRight(0)); }},
    {"mid", [](LmStr& s) { static_cast<void>(s.mid(0, 1)); }},
    {"midClipped", [](LmStr& s) { static_cast<void>(s.midClipped(0, 1)); }},
    {"without", [](LmStr& s) { static_cast<void>(s.without(0, 1)); }},
    {"toUpper", [](LmStr& s) { s.toUpper(); }},
    {"toLower", [](LmStr& s) { s.toLower(); }},
    {"setLength", [](LmStr& s) { s.setLength(1); }},
    {"appendFill", [](LmStr& s) { s.appendFill(1, ' '); }},
    {"prependFill", [](LmStr& s) { s.prependFill(1, ' '); }},
    {"setChar", [](LmStr& s) { s.setChar(0, 'a'); }},
    {"remove at the front", [](LmStr& s) { s.remove(0, 1); }},
    {"remove", [](LmStr& s) { s.remove(1, 1); }},
    {"removeAt", [](LmStr& s) { s.removeAt(0); }},
    {"removeRange", [](LmStr& s) { s.removeRange(0, 1); }},
    {"removeFirst", [](LmStr& s) { s.removeFirst("a"); }},
    {"replaceRange", [](LmStr& s) { s.replaceRange(0, 0, "a"); }},
    {"replaceFirst", [](LmStr& s) { s.replaceFirst("a", "b"); }},
    {"replaceAll", [](LmStr& s) { s.replaceAll("a", "b"); }},
    {"insert text", [](LmStr& s) { s.insert(0, "a"); }},
    {"insert counted text", [](LmStr& s) { s.insert(0, "a", 1); }},
    {"insert character", [](LmStr& s) { s.insert(0, 'a'); }},
    {"append text", [](LmStr& s) { s.append("a"); }},
    {"append string", [](LmStr& s) { s.append(LmStr("a")); }},
    {"append null", [](LmStr& s) { LmStr("a").append(s); }},
    {"+= text", [](LmStr& s) { s += "a"; }},
    {"+= string", [](LmStr& s) { s += LmStr("a"); }},
    {"+= character", [](LmStr& s) { s += 'a'; }},
    {"appendPadded", [](LmStr& s) { s.appendPadded("a", 2); }},
    {"appendFormat", [](LmStr& s) { s.appendFormat("%d", 1); }},
    {"trimLeft", [](LmStr& s) { s.trimLeft(); }},
    {"trimRight", [](LmStr& s) { s.trimRight(); }},
    {"trim", [](LmStr& s) { s.trim(); }},
    {"removeWhitespace", [](LmStr& s) { s.removeWhitespace(); }},
    {"null + text", [](LmStr& s) { static_cast<void>(s + "a"); }},
    {"null + string", [](LmStr& s) { static_cast<void>(s + LmStr("a")); }},
    {"string + null", [](LmStr& s) { static_cast<void>(LmStr("a") + s); }},
    {"text + null", [](LmStr& s) { static_cast<void>("a" + s); }},
    {"<", [](LmStr& s) { static_cast<void>(s < "a"); }},
    {"<=", [](LmStr& s) { static_cast<void>(LmStr("a") <= s); }},
    {">", [](LmStr& s) { static_cast<void>("a" > s); }},
    {">=", [](LmStr& s) { static_cast<void>(s >= LmStr("a")); }},
    {"compare", [](LmStr& s) { static_cast<void>(s.compare("a")); }},
    {"compare over a count", [](LmStr& s) { static_cast<void>(s.compare("a", 1)); }},
    {"startsWith", [](LmStr& s) { static_cast<void>(s.startsWith("a")); }},
    {"endsWith", [](LmStr& s) { static_cast<void>(s.endsWith(LmStr("a"))); }},
    {"endsWith null", [](LmStr& s) { static_cast<void>(LmStr("a").endsWith(s)); }},
    {"compareNoCase", [](LmStr& s) { static_cast<void>(s.compareNoCase("a", 1)); }},
    {"compareNoCasePrefix", [](LmStr& s) { static_cast<void>(s.compareNoCasePrefix("a")); }},
    {"compareNoCaseWhole", [](LmStr& s) { static_cast<void>(s.compareNoCaseWhole("a")); }},
    {"compareNatural of null and text", [](LmStr& s) { static_cast<void>(compareNatural(s, LmStr("a"))); }},
    {"compareNatural of text and null", [](LmStr& s) { static_cast<void>(compareNatural(LmStr("a1"), s)); }},
    {"toDouble",
     [](LmStr& s) {
         double out = 0;
         static_cast<void>(s.toDouble(out));
     }},
    {"toFloat", [](LmStr& s) { static_cast<void>(s.toFloat(nullptr)); }},
    {"toLong",
     [](LmStr& s) {
         std::int64_t out = 0;
         static_cast<void>(s.toLong(out));
     }},
    {"toInt",
     [](LmStr& s) {
         std::int32_t out = 0;
         static_cast<void>(s.toInt(out));
     }},
    {"toHex",
     [](LmStr& s) {
         std::int32_t out = 0;
         static_cast<void>(s.toHex(out));
     }},
    {"toBool",
     [](LmStr& s) {
         bool out = false;
         static_cast<void>(s.toBool(out));
     }},
    {"parseIntPrefix",
     [](LmStr& s) {
         std::int64_t out = 0;
         int n = 0;
         static_cast<void>(s.parseIntPrefix(out, n));
     }},
    {"split", [](LmStr& s) { static_cast<void>(s.split(',')); }},
    {"lines", [](LmStr& s) { static_cast<void>(s.lines()); }},
    {"identifierLength", [](LmStr& s) { static_cast<void>(s.identifierLength()); }},
    {"splitTrailingNumber",
     [](LmStr& s) {
         LmStr stem;
         std::int64_t n = 0;
         splitTrailingNumber(stem, n, s);
     }},
    {"nextNumbered", [](LmStr& s) { static_cast<void>(nextNumbered(s)); }},
    {"trailingSlashCount", [](LmStr& s) { static_cast<void>(s.trailingSlashCount()); }},
    {"wordWrap", [](LmStr& s) { static_cast<void>(s.wordWrap(70, 8)); }},
    {"writing to a stream",
     [](LmStr& s) {
         std::ostringstream output;
         output << s;
     }},
};

TEST(LmStrNull, ReachingForTheTextEndsTheProcessByAMemoryFault) {
    for (const NullCase& each : operationsThatNeedAText) {
        const ChildResult result = runFunction([&each] {
            LmStr null;
            each.operation(null);
        });
        EXPECT_EQ(result.outcome, "SIGSEGV") << each.name;
        EXPECT_EQ(result.out, "") << each.name;
        EXPECT_EQ(result.err, "") << each.name;
    }
}

TEST(LmStrNull, NullSafeOperationsLeaveItNull) {
    LmStr null;
    const LmStr copy(null);
    LmStr assigned("abc");
    assigned = null;
    EXPECT_TRUE(copy.isNull());
    EXPECT_TRUE(assigned.isNull());
    null.reset();
    null.checkTerminator();
    EXPECT_TRUE(null.firstToken(" ").isNull());
    EXPECT_TRUE(null.popToken(" ").isNull());
    EXPECT_TRUE(null.popLine().isNull());
    EXPECT_EQ(null.view(), "");
    EXPECT_TRUE(null.isNull());
}

TEST(LmStrNull, ReadingFromAStreamFillsIt) {
    std::istringstream input("word\nline\npart;");
    LmStr word;
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "word");
    LmStr line;
    line.readLine(input);
    EXPECT_STREQ(line.c_str(), "");
    LmStr part;
    part.readUntil(input, 100, ';');
    EXPECT_STREQ(part.c_str(), "line\npart");
}

} // namespace
} // namespace quillon
