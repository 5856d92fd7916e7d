#pragma once

#include "foundation/String.h"

#include <exception>
#include <string>

namespace tavrin {
inline namespace foundation {

/// A failure, told in one English sentence that a user can act on.
class Exception : public std::exception {
public:
    explicit Exception(String message) : message_(std::move(message)), utf8_(message_.toUtf8()) {}

    const String& message() const { return message_; }
    const char* what() const noexcept override { return utf8_.c_str(); }

private:
    String message_;
    std::string utf8_;
};

/// The text of any exception; memory exhaustion is told in plain words.
String exceptionToString(const std::exception& exception);

}  // namespace foundation
}  // namespace tavrin
