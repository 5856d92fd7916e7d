#pragma once

#include "foundation/Result.h"
#include "foundation/String.h"

#include <string>
#include <vector>

namespace tavrin::cli {

/// One job of a job file.
struct BatchJob {
    String name;  ///< for messages; may be empty
    /// What it asks for, as arguments of tavrin-cli in UTF-8, or a sentence why it makes no sense.
    Result<std::vector<std::string>> arguments;
};

/// Reads the text of a job file, which docs/command-line.md describes. Fails with a sentence when
/// it is no list of jobs; a wrong job leaves the others as they are.
Result<std::vector<BatchJob>> readBatchText(const String& text);

}  // namespace tavrin::cli
