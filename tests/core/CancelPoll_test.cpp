#include "quillon/core/CancelPoll.h"

#include "quillon/core/LmStatus.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace quillon {
namespace {

using test::CleanStatus;
using test::error;
using test::takeChain;
using test::warning;
using testing::ElementsAre;

/// Notes after which record the hook is asked, and says yes from a given question on.
struct Recorder {
    int record = 0;
    int yesAtQuestion = 0;
    std::vector<int> askedAfter = {};

    static int ask(void* argument) {
        Recorder* const recorder = static_cast<Recorder*>(argument);
        recorder->askedAfter.push_back(recorder->record);
        return static_cast<int>(recorder->askedAfter.size()) == recorder->yesAtQuestion ? 1 : 0;
    }
};

class CancelPollTest : public testing::Test {
protected:
    CancelPollTest() { setCancelHook(Recorder::ask, &recorder); }
    ~CancelPollTest() override { setCancelHook(nullptr, nullptr); }

    /// The record after which the poll says that the user has cancelled, or 0.
    int canceledAfter(CancelPoll& poll, int records) {
        for (recorder.record = 1; recorder.record <= records; ++recorder.record) {
            if (poll.canceledAfterRecord()) {
                return recorder.record;
            }
        }
        return 0;
    }

    CleanStatus clean;
    Recorder recorder;
};

TEST_F(CancelPollTest, AsksAfterTheFourthRecordAndEveryThirdOne) {
    CancelPoll poll(recordsBeforeCancelPoll);
    EXPECT_EQ(canceledAfter(poll, 14), 0);
    EXPECT_THAT(recorder.askedAfter, ElementsAre(4, 7, 10, 13));
    EXPECT_FALSE(currentStatus().hasEntries());
}

TEST_F(CancelPollTest, OfTheOlderLimitsAsksAfterTheSixthRecordAndEveryFifthOne) {
    CancelPoll poll(limitsBeforeCancelPoll);
    EXPECT_EQ(canceledAfter(poll, 22), 0);
    EXPECT_THAT(recorder.askedAfter, ElementsAre(6, 11, 16, 21));
}

TEST_F(CancelPollTest, ThreeRecordsNeverAsk) {
    recorder.yesAtQuestion = 1;
    CancelPoll poll(recordsBeforeCancelPoll);
    EXPECT_EQ(canceledAfter(poll, 3), 0);
    EXPECT_TRUE(recorder.askedAfter.empty());
}

TEST_F(CancelPollTest, AYesLeavesAWarningOnTheError) {
    recorder.yesAtQuestion = 2;
    CancelPoll poll(recordsBeforeCancelPoll);
    EXPECT_EQ(canceledAfter(poll, 100), 7);
    EXPECT_THAT(takeChain(), ElementsAre(warning("Read aborted."), error("Canceled.")));
}

TEST_F(CancelPollTest, AnErrorOfBeforeIsNoYes) {
    pushErrorf("from before");
    CancelPoll poll(recordsBeforeCancelPoll);
    EXPECT_EQ(canceledAfter(poll, 10), 0);
    EXPECT_THAT(takeChain(), ElementsAre(error("from before")));
}

TEST_F(CancelPollTest, WithoutAHookNeverCancels) {
    setCancelHook(nullptr, nullptr);
    CancelPoll poll(recordsBeforeCancelPoll);
    EXPECT_EQ(canceledAfter(poll, 20), 0);
}

} // namespace
} // namespace quillon
