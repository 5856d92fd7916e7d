#include "cli/ProgressLine.h"

#include "foundation/Text.h"
#include "foundation/platform/Terminal.h"

#include <iostream>

namespace tavrin::cli {
namespace {

// Carriage return and "erase to the end of the line" (ECMA-48).
constexpr const char* kClearLine = "\r\x1b[K";

}  // namespace

bool isProgressShown(ProgressMode mode, bool isQuiet) {
    if (isQuiet || mode == ProgressMode::Never) {
        return false;
    }
    return mode == ProgressMode::Always || platform::isErrorOutputTerminal();
}

ProgressLine::~ProgressLine() {
    clear();
}

void ProgressLine::clear() {
    if (shownPercent_ >= 0) {
        std::cerr << kClearLine << std::flush;
        shownPercent_ = -1;
    }
}

TaskProgress ProgressLine::start(const String& step) {
    step_ = Str::escapeLine(step).toUtf8();
    shownPercent_ = -1;
    show(0.0f);
    return TaskProgress([this](float fraction) { show(fraction); });
}

void ProgressLine::show(float fraction) {
    const int percent = static_cast<int>(fraction * 100.0f);
    if (!isShown_ || percent == shownPercent_) {
        return;
    }
    shownPercent_ = percent;
    std::cerr << kClearLine << step_;
    if (percent > 0) {
        std::cerr << ' ' << percent << " %";
    }
    std::cerr << std::flush;
}

}  // namespace tavrin::cli
