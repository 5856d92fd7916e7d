#pragma once

namespace tavrin {
inline namespace foundation {
namespace platform {

/// True when standard error is a terminal that a person looks at.
bool isErrorOutputTerminal();

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
