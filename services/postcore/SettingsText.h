#pragma once

#include "foundation/Function.h"
#include "foundation/Optional.h"
#include "foundation/Result.h"
#include "services/postcore/ISettings.h"

namespace tavrin::postcore {

using IdFilter = Function<bool(int id)>;
using WarningSink = Function<void(const String& warning)>;

/// The text of a settings file:
///
///     Tavrin settings 1
///     # a comment
///     bloomIntensity = 0.25
///
/// The first line names the format and its version. Each other line is empty, a comment, or the
/// name of a property and its value in the form of getConfSerialization.
class SettingsWriter {
public:
    SettingsWriter();

    void add(const String& name, const String& value);
    /// Adds every property whose id is accepted, by id.
    void addProperties(const ISettings& settings, const IdFilter& accepts);
    const String& getText() const { return text_; }

private:
    String text_;
};

/// What is done with the lines of a settings text.
struct SettingsReader {
    /// Gets the values.
    ISettings& settings;
    /// The properties to take; others are passed over without a warning.
    IdFilter accepts;
    /// Takes a value whose name is not that of a property. Nothing means that there is no such
    /// name, a failure that the value is wrong.
    Function<Optional<Result<void>>(const String& name, const String& value)> takeOther;
    /// Told one sentence, with the number of the line, about each of the first twenty lines that
    /// cannot be used, and one about how many there are beyond; all other lines are taken. May be
    /// empty.
    WarningSink warn;
};

/// Fails with the end of a sentence ("is not a settings file") when the text has another format.
Result<void> readSettingsText(const String& text, const SettingsReader& reader);

}  // namespace tavrin::postcore
