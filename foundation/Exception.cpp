#include "foundation/Exception.h"

#include <new>

namespace tavrin {
inline namespace foundation {

String exceptionToString(const std::exception& exception) {
    if (const auto* own = dynamic_cast<const Exception*>(&exception)) {
        return own->message();
    }
    if (dynamic_cast<const std::bad_alloc*>(&exception) != nullptr) {
        return "There is not enough memory.";
    }
    return String::fromUtf8(exception.what());
}

}  // namespace foundation
}  // namespace tavrin
