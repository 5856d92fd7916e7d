#pragma once

#include "foundation/FileFilter.h"
#include "foundation/Optional.h"
#include "foundation/Path.h"
#include "foundation/String.h"

#include <wx/window.h>

#include <vector>

namespace tavrin::widgets {

// The system's file dialogs. A filter lists the kinds of files that are offered, each with its
// patterns: "PNG image (*.png)|*.png|JPEG image (*.jpg;*.jpeg)|*.jpg;*.jpeg". Main thread.

/// A filter of one kind of files; the extensions are without dots.
String makeFileFilter(const String& description, const std::vector<String>& extensions);
String makeFileFilter(const Io::FileFilter& filter);

/// Nothing when the user has cancelled; so do the other functions.
Optional<Path> askForFileToOpen(wxWindow* parent, const String& title, const String& filter,
                                const Path& folder);
std::vector<Path> askForFilesToOpen(wxWindow* parent, const String& title, const String& filter,
                                    const Path& folder);

/// A name that the filter does not know gets the first extension of the kind that is chosen in the
/// dialog. Asks before it answers with a file that exists.
Optional<Path> askForFileToSave(wxWindow* parent, const String& title, const String& filter,
                                const Path& folder, const String& name);

}  // namespace tavrin::widgets
