#include "quillon/core/LmStatus.h"

#include "quillon/core/Fatal.h"
#include "quillon/core/LmSStream.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace quillon {

// --- Entries -------------------------------------------------------------------------------------

LmStatusEntry::LmStatusEntry(bool warning, const LmStr& text) : isWarning(warning), message_(text) {}

LmStatusEntry::LmStatusEntry(const LmStatusEntry& other)
    : isWarning(other.isWarning), message_(other.message_) {
    LmStatusEntry* last = this;
    for (const LmStatusEntry* older = other.next(); older != nullptr; older = older->next()) {
        last->next_ = std::make_unique<LmStatusEntry>(older->isWarning, older->message_);
        last = last->next_.get();
    }
}

LmStatusEntry& LmStatusEntry::operator=(const LmStatusEntry& other) {
    LmStatusEntry copy(other);
    isWarning = copy.isWarning;
    std::swap(message_, copy.message_);
    std::swap(next_, copy.next_);
    return *this;
}

LmStatusEntry::~LmStatusEntry() {
    // One entry after the other: a long chain would otherwise use up the stack.
    std::unique_ptr<LmStatusEntry> older = std::move(next_);
    while (older != nullptr) {
        older = std::move(older->next_);
    }
}

namespace {

constexpr int wrapWidth = 70;
constexpr int wrapTabWidth = 8;

struct Label {
    const char* text;
    const char* blanks; ///< as many as the text has characters
};

constexpr Label errorLabel = {"ERROR: ", "       "};
constexpr Label warningLabel = {"WARNING: ", "         "};

void printMessage(std::ostream& output, const Label& label, const LmStr& message, int wrapMode) {
    LmStr text = wrapMode == 0 ? message.wordWrap(wrapWidth, wrapTabWidth) : message;
    text.replaceAll("\n", (LmStr("\n") + label.blanks).c_str());
    output << text;
}

} // namespace

void LmStatusEntry::print(std::ostream& output, int wrapMode) const {
    const Label& label = isError() ? errorLabel : warningLabel;
    output << std::endl << std::endl << label.text;
    printMessage(output, label, message_, wrapMode);
    output << std::endl;
    for (const LmStatusEntry* older = next(); older != nullptr; older = older->next()) {
        output << label.blanks;
        printMessage(output, label, older->message_, wrapMode);
        output << std::endl;
    }
    output << std::endl;
}

LmStr LmStatusEntry::toText() const {
    LmOSStream stream;
    print(stream, 0);
    return LmStr(stream.str());
}

// --- The chain -----------------------------------------------------------------------------------

namespace {

bool abortOnError = false;

/// A message formatted in the manner of `printf`, cut at 1023 characters.
class FormattedText {
public:
    __attribute__((format(printf, 2, 0))) FormattedText(const char* format, std::va_list arguments) {
        std::vsnprintf(text, sizeof text, format, arguments);
    }
    operator const char*() const { return text; }

private:
    char text[1024];
};

} // namespace

LmStatus::LmStatus(const LmStatus& other)
    : head_(other.head_ == nullptr ? nullptr : std::make_unique<LmStatusEntry>(*other.head_)) {}

LmStatus& LmStatus::operator=(const LmStatus& other) {
    LmStatus copy(other);
    std::swap(head_, copy.head_);
    return *this;
}

LmStatus::~LmStatus() = default;

void LmStatus::push(bool isWarning, const LmStr& text) {
    auto entry = std::make_unique<LmStatusEntry>(isWarning, text);
    entry->next_ = std::move(head_);
    head_ = std::move(entry);
    if (!isWarning && abortOnError) {
        std::abort();
    }
}

void LmStatus::pushError(const LmStr& text) {
    push(false, text);
}

void LmStatus::pushErrorf(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    push(false, LmStr(text));
}

void LmStatus::pushWarning(const LmStr& text) {
    push(true, text);
}

void LmStatus::pushWarningf(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    push(true, LmStr(text));
}

LmStatusEntry& LmStatus::newest() {
    if (head_ == nullptr) {
        endByMemoryFault();
    }
    return *head_;
}

void LmStatus::addLine(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    newest().message_ += LmStr("\n") + text;
}

void LmStatus::prependLine(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    newest().message_ = LmStr(text) + "\n" + newest().message_;
}

void LmStatus::turnIntoWarning() {
    newest().isWarning = true;
}

void LmStatus::clear() {
    head_.reset();
}

int LmStatus::headKind() const {
    return head_ != nullptr && !head_->isError() ? 1 : 0;
}

int LmStatus::printStatus(std::ostream& output) {
    if (head_ == nullptr) {
        return 0;
    }
    const int result = head_->isError() ? 1 : 0;
    head_->print(output, 0);
    clear();
    return result;
}

int LmStatus::printStatusToError() {
    return printStatus(std::cerr);
}

// --- The current status --------------------------------------------------------------------------

namespace {

constinit LmStatus theCurrentStatus;

} // namespace

LmStatus& currentStatus() {
    return theCurrentStatus;
}

void pushError(const LmStr& text) {
    theCurrentStatus.pushError(text);
}

void pushErrorf(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    theCurrentStatus.pushError(LmStr(text));
}

void pushWarning(const LmStr& text) {
    theCurrentStatus.pushWarning(text);
}

void pushWarningf(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    theCurrentStatus.pushWarning(LmStr(text));
}

bool errorStands() {
    return theCurrentStatus.errorStands();
}

int finishWithError(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const FormattedText text(format, arguments);
    va_end(arguments);
    if (errorStands()) {
        theCurrentStatus.pushError(LmStr(text));
    }
    return theCurrentStatus.printStatusToError();
}

void setAbortOnError(bool abort) {
    abortOnError = abort;
}

// --- Cancelling ----------------------------------------------------------------------------------

namespace {

CancelHook cancelHook = nullptr;
void* cancelArgument = nullptr;

} // namespace

void setCancelHook(CancelHook hook, void* argument) {
    cancelHook = hook;
    cancelArgument = argument;
}

int checkCanceled() {
    if (cancelHook == nullptr) {
        return 0;
    }
    const int result = cancelHook(cancelArgument);
    if ((result & 0xFF) == 0) {
        return 0;
    }
    pushErrorf("Canceled.");
    return result;
}

} // namespace quillon
