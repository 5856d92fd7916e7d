#pragma once

#include "foundation/Function.h"
#include "foundation/Optional.h"
#include "foundation/Path.h"
#include "foundation/String.h"
#include "foundation/data/UiAttributes.h"

#include <map>
#include <mutex>

namespace tavrin::colorkit {

/// The tone-mapping presets of a folder: its files with the extension "ttm", each under its name
/// without that. Any thread.
class PresetCollection {
public:
    explicit PresetCollection(Function<Optional<Path>()> findFolder);

    /// By name, actions that replace a list by the operators of the preset; a file whose text is no
    /// tone mapping has none. They throw an Exception, and leave the list as it is, when the file
    /// cannot be read. The files are looked for at the first call and never again; without a folder
    /// there are none. Throws an Exception when the folder cannot be read.
    std::map<String, UiListAction> createMenuContent();

private:
    Function<Optional<Path>()> findFolder_;
    std::mutex mutex_;
    Optional<std::map<String, Path>> files_;  ///< guarded by mutex_
};

/// The presets that come with the program, or those of the folder in which it is developed.
std::map<String, UiListAction> createPresetMenuContent();

}  // namespace tavrin::colorkit
