#pragma once

#include "foundation/String.h"
#include "foundation/TaskProgress.h"

#include <string>

namespace tavrin::cli {

enum class ProgressMode { Auto, Always, Never };

/// Whether progress is shown, which Auto does on a terminal.
bool isProgressShown(ProgressMode mode, bool isQuiet);

/// Shows on one line of standard error what is being done and how far it has come; nothing when
/// switched off. The line is gone when the object ends. One thread at a time.
class ProgressLine {
public:
    explicit ProgressLine(bool isShown) : isShown_(isShown) {}
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Starts a step ("Saving \"a.png\"") and gives what the step reports to. The line outlives the
    /// answer.
    TaskProgress start(const String& step);
    /// Takes the line away until there is more progress, so that other text can be printed.
    void clear();

private:
    void show(float fraction);

    bool isShown_;
    std::string step_;
    int shownPercent_ = -1;
};

}  // namespace tavrin::cli
