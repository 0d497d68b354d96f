#include "quillon/core/LmStatus.h"

#include "tests/support/ChildProcess.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>

namespace quillon {
namespace {

using support::ChildResult;
using support::runFunction;
using test::chainOf;
using test::CleanStatus;
using test::error;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

/// What `printStatus` wrote and returned.
struct Printed {
    std::string text;
    int code = -77;

    friend bool operator==(const Printed&, const Printed&) = default;
    friend std::ostream& operator<<(std::ostream& output, const Printed& printed) {
        return output << printed.code << ": " << printed.text;
    }
};

Printed printed(LmStatus& status) {
    std::ostringstream output;
    const int code = status.printStatus(output);
    EXPECT_FALSE(status.hasEntries()) << "printing empties the chain";
    return {output.str(), code};
}

/// A status with the given entries, newest first.
LmStatus statusOf(const StatusChain& chain) {
    LmStatus status;
    for (auto line = chain.rbegin(); line != chain.rend(); ++line) {
        if (line->kind == test::Kind::Error) {
            status.pushError(LmStr(line->text.c_str()));
        } else {
            status.pushWarning(LmStr(line->text.c_str()));
        }
    }
    return status;
}

std::string wrappedText(const LmStatusEntry& entry, int wrapMode) {
    std::ostringstream output;
    entry.print(output, wrapMode);
    return output.str();
}

// --- The chain -----------------------------------------------------------------------------------

TEST(LmStatus, IsEmptyAtFirst) {
    const LmStatus status;
    EXPECT_FALSE(status.hasEntries());
    EXPECT_EQ(status.head(), nullptr);
    EXPECT_EQ(status.headKind(), 0);
    EXPECT_FALSE(status.errorStands());
}

TEST(LmStatus, PushesInFront) {
    LmStatus status;
    status.pushErrorf("cause %d", 1);
    status.pushError(LmStr("general"));
    status.pushWarningf("remark %s", "two");
    status.pushWarning(LmStr("last"));
    EXPECT_THAT(chainOf(status),
                ElementsAre(warning("last"), warning("remark two"), error("general"), error("cause 1")));
    EXPECT_TRUE(status.hasEntries());
    EXPECT_EQ(status.headKind(), 1);
    status.clear();
    EXPECT_THAT(chainOf(status), IsEmpty());
    status.clear();
    EXPECT_FALSE(status.hasEntries());
}

TEST(LmStatus, OnlyTheHeadCounts) {
    LmStatus status;
    status.pushErrorf("bad");
    EXPECT_TRUE(status.errorStands());
    EXPECT_EQ(status.headKind(), 0);
    EXPECT_TRUE(status.head()->isError());
    status.pushWarningf("odd");
    EXPECT_FALSE(status.errorStands()) << "an error under a warning does not stand";
    EXPECT_EQ(status.headKind(), 1);
    EXPECT_FALSE(status.head()->isError());
    EXPECT_TRUE(status.head()->next()->isError());
    EXPECT_EQ(status.head()->next()->next(), nullptr);
    status.pushErrorf("worse");
    EXPECT_TRUE(status.errorStands());
    EXPECT_EQ(status.headKind(), 0);
}

TEST(LmStatus, APushedTextIsNoFormat) {
    LmStatus status;
    status.pushError(LmStr("100%d %s%n"));
    status.pushWarning(LmStr("%%"));
    status.pushErrorf("%d%%", 7);
    EXPECT_THAT(chainOf(status), ElementsAre(error("7%"), warning("%%"), error("100%d %s%n")));
}

TEST(LmStatus, FormattedTextsAreCutAt1023Characters) {
    const std::string longText(2000, 'x');
    const std::string cut(1023, 'x');
    LmStatus status;
    status.pushErrorf("%s", longText.c_str());
    status.pushWarningf("%s", longText.c_str());
    status.pushError(LmStr(longText.c_str()));
    status.pushWarning(LmStr(longText.c_str()));
    EXPECT_THAT(chainOf(status), ElementsAre(warning(longText), error(longText), warning(cut), error(cut)));
    status.clear();
    status.pushErrorf("%s", longText.c_str() + 977);
    EXPECT_THAT(takeChain(status), ElementsAre(error(cut)));
}

TEST(LmStatus, LinesAreAddedToTheNewestMessage) {
    LmStatus status;
    status.pushErrorf("old");
    status.pushWarningf("new");
    status.addLine("behind %d", 1);
    status.addLine("last");
    status.prependLine("front %s", "two");
    EXPECT_THAT(chainOf(status), ElementsAre(warning("front two\nnew\nbehind 1\nlast"), error("old")));
}

TEST(LmStatus, OnlyTheAddedLineIsCut) {
    const std::string longText(2000, 'x');
    const std::string cut(1023, 'x');
    LmStatus status;
    status.pushError(LmStr(longText.c_str()));
    status.addLine("%s", longText.c_str());
    status.prependLine("%s", longText.c_str());
    EXPECT_THAT(chainOf(status), ElementsAre(error(cut + "\n" + longText + "\n" + cut)));
}

TEST(LmStatus, AddedLinesLeaveThePushedString) {
    const LmStr text("message");
    LmStatus status;
    status.pushError(text);
    EXPECT_EQ(status.head()->message().c_str(), text.c_str()) << "the text is shared";
    status.addLine("more");
    EXPECT_STREQ(text.c_str(), "message");
}

TEST(LmStatus, AMessageMayBeReportedAgain) {
    LmStatus status;
    status.pushErrorf("cause");
    status.pushErrorf("Again: %s", status.head()->message().c_str());
    status.addLine("%s", status.head()->message().c_str());
    EXPECT_THAT(chainOf(status), ElementsAre(error("Again: cause\nAgain: cause"), error("cause")));
}

TEST(LmStatus, TheNewestEntryBecomesAWarning) {
    LmStatus status;
    status.pushError("older");
    status.pushError("newer");
    status.turnIntoWarning();
    EXPECT_FALSE(status.errorStands());
    EXPECT_THAT(chainOf(status), ElementsAre(warning("newer"), error("older")));
}

TEST(LmStatus, ALineOnAnEmptyChainEndsTheProcess) {
    const ChildResult added = runFunction([] { LmStatus().addLine("line"); });
    EXPECT_EQ(added.outcome, "SIGSEGV");
    EXPECT_EQ(added.out + added.err, "");
    const ChildResult prepended = runFunction([] { LmStatus().prependLine("line"); });
    EXPECT_EQ(prepended.outcome, "SIGSEGV");
    EXPECT_EQ(prepended.out + prepended.err, "");
}

TEST(LmStatus, AMillionEntriesAreFreed) {
    LmStatus status;
    const LmStr text("one of many");
    for (int i = 0; i < 1000000; ++i) {
        status.pushWarning(text);
    }
    const LmStatus copy(status);
    status.clear();
    EXPECT_TRUE(copy.hasEntries());
}

// --- Copies --------------------------------------------------------------------------------------

TEST(LmStatusCopy, IsDeepAndSharesTheTexts) {
    const StatusChain chain{error("general"), warning("odd"), error("cause")};
    LmStatus status = statusOf(chain);
    LmStatus copy(status);
    EXPECT_EQ(chainOf(copy), chain);
    EXPECT_NE(copy.head(), status.head());
    EXPECT_NE(copy.head()->next(), status.head()->next());
    EXPECT_EQ(copy.head()->message().c_str(), status.head()->message().c_str());
    copy.addLine("changed");
    EXPECT_EQ(chainOf(status), chain);
    copy.clear();
    EXPECT_EQ(chainOf(status), chain);
}

TEST(LmStatusCopy, AssignmentReplacesTheChain) {
    LmStatus target = statusOf({warning("a"), warning("b"), warning("c")});
    const LmStatus source = statusOf({error("x"), warning("y")});
    target = source;
    EXPECT_THAT(chainOf(target), ElementsAre(error("x"), warning("y")));
    target.pushErrorf("z");
    EXPECT_THAT(chainOf(source), ElementsAre(error("x"), warning("y")));
    target = LmStatus();
    EXPECT_FALSE(target.hasEntries());
    target = source;
    EXPECT_THAT(chainOf(target), ElementsAre(error("x"), warning("y")));
    const LmStatus& same = target;
    target = same;
    EXPECT_THAT(chainOf(target), ElementsAre(error("x"), warning("y")));
}

TEST(LmStatusCopy, EntriesCopyWithAllThatIsOlder) {
    LmStatus status = statusOf({error("x"), warning("y"), error("z")});
    const LmStatusEntry copy(*status.head());
    LmStatusEntry assigned(true, "other");
    assigned = *status.head();
    const LmStatusEntry& same = assigned;
    assigned = same;
    status.clear();
    for (const LmStatusEntry* entry : {&copy, const_cast<const LmStatusEntry*>(&assigned)}) {
        EXPECT_TRUE(entry->isError());
        EXPECT_STREQ(entry->message().c_str(), "x");
        EXPECT_FALSE(entry->next()->isError());
        EXPECT_STREQ(entry->next()->message().c_str(), "y");
        EXPECT_STREQ(entry->next()->next()->message().c_str(), "z");
        EXPECT_EQ(entry->next()->next()->next(), nullptr);
    }
}

TEST(LmStatusCopy, AnEntryMayBeAssignedItsOwnTail) {
    LmStatus status = statusOf({error("x"), warning("y"), error("z")});
    LmStatusEntry entry(*status.head());
    entry = *entry.next();
    EXPECT_FALSE(entry.isError());
    EXPECT_STREQ(entry.message().c_str(), "y");
    EXPECT_STREQ(entry.next()->message().c_str(), "z");
}

// --- Printing ------------------------------------------------------------------------------------

TEST(LmStatusPrinting, OfAnEmptyChainIsNothingAndGivesZero) {
    LmStatus status;
    EXPECT_EQ(printed(status), (Printed{"", 0}));
}

TEST(LmStatusPrinting, TheLabelAndTheResultFollowTheHead) {
    const struct {
        StatusChain chain;
        Printed result;
    } cases[] = {
        {{error("Bad.")}, {"\n\nERROR: Bad.\n\n", 1}},
        {{warning("Odd.")}, {"\n\nWARNING: Odd.\n\n", 0}},
        {{error("File is not a valid problem specification file."), error("Invalid datafile type.")},
         {"\n\nERROR: File is not a valid problem specification file.\n       Invalid datafile type.\n\n",
          1}},
        {{warning("Odd."), error("Bad.")}, {"\n\nWARNING: Odd.\n         Bad.\n\n", 0}},
        {{error("Bad."), warning("Odd."), error("Cause.")},
         {"\n\nERROR: Bad.\n       Odd.\n       Cause.\n\n", 1}},
        {{error("")}, {"\n\nERROR: \n\n", 1}},
        {{warning(""), warning("")}, {"\n\nWARNING: \n         \n\n", 0}},
    };
    for (const auto& each : cases) {
        LmStatus status = statusOf(each.chain);
        EXPECT_EQ(printed(status), each.result);
    }
}

TEST(LmStatusPrinting, ContinuationLinesStandUnderTheText) {
    const struct {
        StatusChain chain;
        Printed result;
    } cases[] = {
        {{error("one\ntwo\nthree")}, {"\n\nERROR: one\n       two\n       three\n\n", 1}},
        {{warning("one\ntwo")}, {"\n\nWARNING: one\n         two\n\n", 0}},
        // The kind of the head decides for older entries too.
        {{error("a\nb"), warning("c\nd")}, {"\n\nERROR: a\n       b\n       c\n       d\n\n", 1}},
        {{warning("a\nb"), error("c\nd")}, {"\n\nWARNING: a\n         b\n         c\n         d\n\n", 0}},
        {{error("one\n")}, {"\n\nERROR: one\n       \n\n", 1}},
        {{error("\none")}, {"\n\nERROR: \n       one\n\n", 1}},
        {{error("one\n\ntwo")}, {"\n\nERROR: one\n       \n       two\n\n", 1}},
    };
    for (const auto& each : cases) {
        LmStatus status = statusOf(each.chain);
        EXPECT_EQ(printed(status), each.result);
    }
}

TEST(LmStatusPrinting, LongMessagesBreakAtSeventyColumns) {
    const std::string seventy = std::string(60, 'x') + " " + std::string(9, 'y');
    const std::string seventyOne = seventy + "y";
    LmStatus fits = statusOf({error(seventy)});
    EXPECT_EQ(printed(fits), (Printed{"\n\nERROR: " + seventy + "\n\n", 1}));
    LmStatus breaks = statusOf({error(seventyOne)});
    EXPECT_EQ(
        printed(breaks),
        (Printed{"\n\nERROR: " + std::string(60, 'x') + "\n       " + std::string(10, 'y') + "\n\n", 1}));
    LmStatus older = statusOf({warning("General."), error(seventyOne)});
    EXPECT_EQ(printed(older), (Printed{"\n\nWARNING: General.\n         " + std::string(60, 'x') +
                                           "\n         " + std::string(10, 'y') + "\n\n",
                                       0}));
    const std::string path(100, 'p');
    LmStatus unbroken = statusOf({error(path)});
    EXPECT_EQ(printed(unbroken), (Printed{"\n\nERROR: " + path + "\n\n", 1}));
}

TEST(LmStatusPrinting, AnEntryPrintsItselfAndTheOlderOnesUnderItsOwnLabel) {
    const std::string longText = std::string(60, 'x') + " " + std::string(20, 'y');
    const LmStatus status = statusOf({error("newest"), warning(longText + "\nnext"), error("oldest")});
    const LmStatusEntry& entry = *status.head()->next();
    const std::string wrapped = "\n\nWARNING: " + std::string(60, 'x') + "\n         " +
                                std::string(20, 'y') + "\n         next\n         oldest\n\n";
    EXPECT_EQ(wrappedText(entry, 0), wrapped);
    EXPECT_EQ(wrappedText(entry, 1), "\n\nWARNING: " + longText + "\n         next\n         oldest\n\n");
    EXPECT_STREQ(entry.toText().c_str(), wrapped.c_str());
    EXPECT_EQ(wrappedText(*entry.next(), 0), "\n\nERROR: oldest\n\n");
    EXPECT_EQ(chainOf(status).size(), 3U) << "printing an entry takes nothing away";
}

TEST(LmStatusPrinting, TextOfALongChainIsWhole) {
    LmStatus status;
    std::string expected = "\n\nERROR: message 1999";
    for (int i = 0; i < 2000; ++i) {
        status.pushErrorf("message %d", i);
    }
    for (int i = 1998; i >= 0; --i) {
        expected += "\n       message " + std::to_string(i);
    }
    expected += "\n\n";
    EXPECT_EQ(std::string(status.head()->toText().view()), expected);
}

TEST(LmStatusPrinting, OnStandardError) {
    const ChildResult result = runFunction([] {
        LmStatus status;
        std::cout << status.printStatusToError();
        status.pushErrorf("Bad.");
        std::cout << status.printStatusToError();
        status.pushWarningf("Odd.");
        std::cout << status.printStatusToError() << status.hasEntries();
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "0100");
    EXPECT_EQ(result.err, "\n\nERROR: Bad.\n\n\n\nWARNING: Odd.\n\n");
}

// --- The current status --------------------------------------------------------------------------

TEST(CurrentStatus, HasTheSameOperations) {
    const CleanStatus clean;
    EXPECT_FALSE(currentStatus().hasEntries());
    pushErrorf("one %d%%", 1);
    EXPECT_TRUE(errorStands());
    pushWarningf("two %s", "x");
    EXPECT_FALSE(errorStands());
    pushError(LmStr("three %d"));
    pushWarning(LmStr("four %d"));
    EXPECT_THAT(chainOf(currentStatus()),
                ElementsAre(warning("four %d"), error("three %d"), warning("two x"), error("one 1%")));
    currentStatus().clear();
    EXPECT_FALSE(errorStands());
    const std::string longText(2000, 'x');
    pushErrorf("%s", longText.c_str());
    pushWarningf("%s", longText.c_str());
    EXPECT_THAT(takeChain(), ElementsAre(warning(longText.substr(0, 1023)), error(longText.substr(0, 1023))));
}

TEST(CurrentStatus, FinishingPutsTheSentenceOnAnErrorOnly) {
    const struct {
        StatusChain chain;
        const char* err;
        const char* out;
    } cases[] = {
        {{}, "", "0"},
        {{error("Cause.")}, "\n\nERROR: Failed in 7.\n       Cause.\n\n", "1"},
        {{warning("Odd.")}, "\n\nWARNING: Odd.\n\n", "0"},
        {{warning("Odd."), error("Cause.")}, "\n\nWARNING: Odd.\n         Cause.\n\n", "0"},
        {{error("Bad."), warning("Odd.")}, "\n\nERROR: Failed in 7.\n       Bad.\n       Odd.\n\n", "1"},
    };
    for (const auto& each : cases) {
        const ChildResult result = runFunction([&each] {
            currentStatus() = statusOf(each.chain);
            std::cout << finishWithError("Failed in %d.", 7);
            if (currentStatus().hasEntries()) {
                std::cout << " with entries left";
            }
        });
        EXPECT_EQ(result.outcome, "0");
        EXPECT_EQ(result.err, each.err);
        EXPECT_EQ(result.out, each.out);
    }
}

TEST(CurrentStatus, IsDroppedAtTheEndOfTheProgramWithoutBeingPrinted) {
    const ChildResult result = runFunction([] {
        pushErrorf("left");
        std::exit(0);
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out + result.err, "");
}

// --- Abort on error ------------------------------------------------------------------------------

TEST(AbortOnError, EveryPushOfAnErrorAborts) {
    const struct {
        const char* name;
        std::function<void()> push;
    } cases[] = {
        {"pushError", [] { pushError(LmStr("x")); }},
        {"pushErrorf", [] { pushErrorf("x"); }},
        {"on a status of its own", [] { LmStatus().pushError(LmStr("x")); }},
        {"formatted, on a status of its own", [] { LmStatus().pushErrorf("x"); }},
        {"checkCanceled",
         [] {
             setCancelHook([](void*) { return 1; }, nullptr);
             checkCanceled();
         }},
    };
    for (const auto& each : cases) {
        const ChildResult result = runFunction([&each] {
            setAbortOnError(true);
            each.push();
        });
        EXPECT_EQ(result.outcome, "SIGABRT") << each.name;
        EXPECT_EQ(result.out + result.err, "") << each.name;
    }
}

TEST(AbortOnError, WarningsAndLinesNeverAbort) {
    const ChildResult result = runFunction([] {
        LmStatus status;
        status.pushErrorf("before");
        setAbortOnError(true);
        status.pushWarningf("warning");
        status.pushWarning(LmStr("warning"));
        status.addLine("line");
        status.prependLine("line");
        pushWarningf("warning");
        pushWarning(LmStr("warning"));
        const LmStatus copy(status);
        status.clear();
        setAbortOnError(false);
        status.pushErrorf("after");
    });
    EXPECT_EQ(result.outcome, "0");
}

TEST(AbortOnError, TheEntryIsLinkedBefore) {
    const ChildResult result = runFunction([] {
        pushWarningf("before");
        setAbortOnError(true);
        std::signal(SIGABRT, [](int) { currentStatus().printStatusToError(); });
        pushErrorf("the error");
    });
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "\n\nERROR: the error\n       before\n\n");
}

// --- The cancel hook -----------------------------------------------------------------------------

struct Hook {
    int answer = 0;
    int calls = 0;
};

int answerOf(void* argument) {
    Hook* const hook = static_cast<Hook*>(argument);
    ++hook->calls;
    return hook->answer;
}

TEST(CancelHook, TheLowByteOfTheAnswerDecides) {
    const CleanStatus clean;
    const struct {
        int answer;
        bool canceled;
    } cases[] = {{0, false},    {1, true},      {-1, true},  {256, false}, {257, true},
                 {-256, false}, {65536, false}, {128, true}, {511, true}};
    for (const auto& each : cases) {
        Hook hook{each.answer, 0};
        setCancelHook(answerOf, &hook);
        EXPECT_EQ(checkCanceled(), each.canceled ? each.answer : 0) << each.answer;
        EXPECT_EQ(hook.calls, 1);
        EXPECT_EQ(takeChain(), each.canceled ? StatusChain{error("Canceled.")} : StatusChain{})
            << each.answer;
    }
    setCancelHook(nullptr, nullptr);
    EXPECT_EQ(checkCanceled(), 0);
    EXPECT_FALSE(currentStatus().hasEntries());
}

} // namespace
} // namespace quillon
