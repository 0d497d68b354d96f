#pragma once

#include "quillon/core/LmStr.h"

#include <iosfwd>
#include <memory>

namespace quillon {

/// One error or warning of a chain, which owns the next older one. A copy is deep.
class LmStatusEntry {
public:
    LmStatusEntry(bool warning, const LmStr& text); ///< without an older entry
    LmStatusEntry(const LmStatusEntry& other);
    LmStatusEntry& operator=(const LmStatusEntry& other);
    ~LmStatusEntry();

    bool isError() const { return !isWarning; }       ///< whether it is no warning
    const LmStr& message() const { return message_; } ///< its text, which may hold newlines
    /// The next older entry, or null.
    const LmStatusEntry* next() const { return next_.get(); }

    /// Prints this entry and the older ones under the label of this entry's kind. `wrapMode` 0 wraps the
    /// texts at 70 columns, 1 leaves them as they are.
    void print(std::ostream& output, int wrapMode) const;
    /// What `print` with `wrapMode` 0 prints.
    LmStr toText() const;

private:
    friend class LmStatus;

    bool isWarning;
    LmStr message_;
    std::unique_ptr<LmStatusEntry> next_;
};

/// A chain of errors and warnings, newest first.
///
/// Functions report here instead of throwing. Each caller may push a more general sentence in front of the
/// precise cause, so a printed chain reads from the general to the particular. Owns its entries; a copy is
/// deep. Formatted texts are cut at 1023 characters. Belongs to one thread.
class LmStatus {
public:
    constexpr LmStatus() noexcept = default;
    LmStatus(const LmStatus& other);
    LmStatus& operator=(const LmStatus& other);
    ~LmStatus();

    /// Pushes `text` as an error. `text` is not a format: a '%' stays as it is. Aborts afterwards when
    /// `abortOnError` is set, as every push of an error does.
    void pushError(const LmStr& text);
    /// The same with a `printf` format.
    void pushErrorf(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void pushWarning(const LmStr& text); ///< pushes `text` as a warning
    /// The same with a `printf` format.
    void pushWarningf(const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Appends a newline and the text to the newest message. The chain must not be empty.
    void addLine(const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// Puts the text and a newline before the newest message. The chain must not be empty.
    void prependLine(const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Makes a warning of the newest entry. The chain must not be empty.
    void turnIntoWarning();

    /// Frees the chain.
    void clear();
    bool hasEntries() const { return head_ != nullptr; } ///< whether there is an error or a warning
    /// The newest entry or null.
    const LmStatusEntry* head() const { return head_.get(); }
    /// 1 when the newest entry is a warning, else 0, also when there is none.
    int headKind() const;
    /// Whether the newest entry is an error. An older error under a newer warning does not stand.
    bool errorStands() const { return head_ != nullptr && head_->isError(); }

    /// Prints the chain wrapped at 70 columns and empties it. Returns 1 for an error at the head, else 0,
    /// which is the exit code of a program. Prints nothing when the chain is empty.
    int printStatus(std::ostream& output);
    /// `printStatus` on standard error.
    int printStatusToError();

private:
    void push(bool isWarning, const LmStr& text);
    LmStatusEntry& newest();

    std::unique_ptr<LmStatusEntry> head_;
};

/// The status that most of the library reports on. Empty at program start.
LmStatus& currentStatus();

/// Each is the operation of `LmStatus` of that name on the current status.
void pushError(const LmStr& text);
void pushErrorf(const char* format, ...) __attribute__((format(printf, 1, 2)));
void pushWarning(const LmStr& text);
void pushWarningf(const char* format, ...) __attribute__((format(printf, 1, 2)));
/// Whether the newest entry of the current status is an error.
bool errorStands();

/// On the current status: pushes the text as a new error if an error stands, prints the status on standard
/// error in any case, and returns what the printing returns.
int finishWithError(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Makes every push of an error end in an abort once the entry is linked. Off at start; for host programs.
void setAbortOnError(bool abort);

/// Asked by long-running loops whether the user has cancelled; any result with a low byte of 0 means no.
using CancelHook = int (*)(void* argument);
/// Registers the hook of a host program. There is none at start; null takes it away again.
void setCancelHook(CancelHook hook, void* argument);
/// Asks the hook. On a yes reports the error "Canceled." on the current status and returns the hook's result;
/// otherwise, or when there is no hook, returns 0.
int checkCanceled();

} // namespace quillon
