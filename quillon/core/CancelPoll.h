#pragma once

namespace quillon {

/// Asks the cancel hook every so often from within a loop over records.
///
/// Counts from 1, asks when the count is `askAt` and then goes on from 2: with 4 after the 4th record and
/// every third one after it, with 6 after the 6th and every fifth.
class CancelPoll {
public:
    explicit CancelPoll(int askAt) : askAt(askAt) {} ///< asks as the class says

    /// To be called after each stored record. True when the user has cancelled: then "Canceled." and the
    /// warning "Read aborted." on top of it stand on the current status.
    bool canceledAfterRecord();

private:
    int askAt;
    int counter = 1;
};

/// After how many records each row loop asks first: that of problem definitions and models, and that of the
/// older limits form. From then on it asks after one record less.
inline constexpr int recordsBeforeCancelPoll = 4;
inline constexpr int limitsBeforeCancelPoll = 6;

} // namespace quillon
