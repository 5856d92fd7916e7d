#include "gui/widgets/DelayedCallback.h"

#include <algorithm>

namespace tavrin::widgets {

void DelayedCallback::scheduleDelayed(int milliseconds) {
    StartOnce(std::max(milliseconds, 1));
}

void DelayedCallback::Notify() {
    // A copy, as the function may end this object.
    const Function<void()> function = function_;
    if (function) {
        function();
    }
}

}  // namespace tavrin::widgets
