#include "gui/widgets/FileDialogs.h"

#include "foundation/Text.h"
#include "gui/widgets/Conversions.h"
#include "gui/widgets/MessageDialog.h"

#include <wx/filedlg.h>

#include <algorithm>
#include <filesystem>

namespace tavrin::widgets {
namespace {

// GTK hands out the bytes of file names, which need not be UTF-8.
Path toPath(const wxString& path) {
    return std::filesystem::path(std::string(path.fn_str()));
}

wxString toWxPath(const Path& path) {
    return wxString(path.std().c_str(), wxConvFile);
}

/// The extensions of each kind of files in a filter.
std::vector<std::vector<String>> getExtensions(const String& filter) {
    wxArrayString descriptions;
    wxArrayString patterns;
    wxParseCommonDialogsFilter(toWxString(filter), descriptions, patterns);
    std::vector<std::vector<String>> extensions;
    for (const wxString& kind : patterns) {
        extensions.emplace_back();
        for (const wxString& pattern : wxSplit(kind, ';', '\0')) {
            // "*" has none.
            if (const wxString extension = pattern.AfterFirst('.'); !extension.empty()) {
                extensions.back().push_back(Str::toLowerCase(toString(extension)));
            }
        }
    }
    return extensions;
}

Path completeName(const Path& path, const String& filter, int chosenKind) {
    const auto kinds = getExtensions(filter);
    const String extension = Str::toLowerCase(path.extension());
    const bool isKnown = std::ranges::any_of(
        kinds, [&](const auto& kind) { return std::ranges::find(kind, extension) != kind.end(); });
    const auto chosen = static_cast<std::size_t>(std::max(chosenKind, 0));
    if (isKnown || chosen >= kinds.size() || kinds[chosen].empty()) {
        return path;
    }
    return path.withFileName(path.fileName() + "." + kinds[chosen].front());
}

bool mayReplace(wxWindow* parent, const String& title, const Path& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path.std(), ignored)) {
        return true;
    }
    constexpr int kReplace = 1;
    return MessageDialog(parent, {.caption = title,
                                  .text = "The file \"" + path.fileName() +
                                          "\" exists already. Do you want to replace it?",
                                  .icon = MessageIcon::Question,
                                  .buttons = {"Keep file", "Replace file"}})
               .showModal() == kReplace;
}

}  // namespace

String makeFileFilter(const String& description, const std::vector<String>& extensions) {
    String patterns;
    for (const String& extension : extensions) {
        patterns += (patterns.isEmpty() ? "*." : ";*.") + extension;
    }
    return description + " (" + patterns + ")|" + patterns;
}

String makeFileFilter(const Io::FileFilter& filter) {
    return makeFileFilter(filter.description, {filter.extension});
}

Optional<Path> askForFileToOpen(wxWindow* parent, const String& title, const String& filter,
                                const Path& folder) {
    wxFileDialog dialog(parent, toWxString(title), toWxPath(folder), "", toWxString(filter),
                        wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    return dialog.ShowModal() == wxID_OK ? Optional<Path>(toPath(dialog.GetPath())) : std::nullopt;
}

std::vector<Path> askForFilesToOpen(wxWindow* parent, const String& title, const String& filter,
                                    const Path& folder) {
    wxFileDialog dialog(parent, toWxString(title), toWxPath(folder), "", toWxString(filter),
                        wxFD_OPEN | wxFD_FILE_MUST_EXIST | wxFD_MULTIPLE);
    std::vector<Path> paths;
    if (dialog.ShowModal() == wxID_OK) {
        wxArrayString chosen;
        dialog.GetPaths(chosen);
        std::ranges::transform(chosen, std::back_inserter(paths), toPath);
    }
    return paths;
}

Optional<Path> askForFileToSave(wxWindow* parent, const String& title, const String& filter,
                                const Path& folder, const String& name) {
    wxFileDialog dialog(parent, toWxString(title), toWxPath(folder), toWxString(name),
                        toWxString(filter), wxFD_SAVE);
    while (dialog.ShowModal() == wxID_OK) {
        const Path path = completeName(toPath(dialog.GetPath()), filter, dialog.GetFilterIndex());
        if (mayReplace(parent, title, path)) {
            return path;
        }
    }
    return {};
}

}  // namespace tavrin::widgets
