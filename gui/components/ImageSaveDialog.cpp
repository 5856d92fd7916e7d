#include "gui/components/ImageSaveDialog.h"

#include "foundation/NumberText.h"
#include "gui/widgets/AutoSizedButton.h"
#include "gui/widgets/ComboBox.h"
#include "gui/widgets/Conversions.h"
#include "gui/widgets/Spinner.h"

#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace tavrin::components {
namespace {

using imageio::BitDepth;
using imageio::ImageFormat;
using imageio::ImageFormatInfo;
using imageio::ImageSaveSettings;
using widgets::AutoSizedButton;
using widgets::ComboBox;

constexpr int kMargin = 16;
constexpr int kFieldWidth = 190;
constexpr int kButtonHeight = 24;
constexpr int kButtonWidth = 75;

String getLabel(BitDepth depth) {
    const String bits = Str::getNumberText(imageio::getBitCount(depth)) + " bits";
    return imageio::isFloatingPoint(depth) ? bits + ", floating point" : bits;
}

String getLabel(const String& compression) {
    static const std::pair<const char*, const char*> kLabels[] = {
        {"normal", "Normal"},
        {"fast", "Fast, larger file"},
        {"best", "Slow, smaller file"},
        {"none", "None"},
        {"rle", "RLE, fast"},
        {"lzw", "LZW"},
        {"packbits", "PackBits, fast"},
        {"zip", "ZIP"},
        {"zips", "ZIPS, line by line"},
        {"piz", "PIZ, for grainy images"},
        {"dwaa", "DWAA, lossy"},
        {"dwab", "DWAB, lossy"},
        {"pxr24", "PXR24, lossy with 32 bits"},
        {"b44", "B44, lossy with 16 bits"},
        {"b44a", "B44A, lossy with 16 bits"},
    };
    for (const auto& [name, label] : kLabels) {
        if (compression == name) {
            return label;
        }
    }
    return compression;
}

template <class T>
bool isChoice(const std::vector<T>& values) {
    return values.size() > 1;
}

bool isReturn(const wxKeyEvent& event) {
    return event.GetKeyCode() == WXK_RETURN || event.GetKeyCode() == WXK_NUMPAD_ENTER;
}

/// One field for each thing that the format leaves open.
class ImageSaveDialog final : public wxDialog {
public:
    ImageSaveDialog(wxWindow* parent, const ImageFormatInfo& info, const ImageSaveSettings& start);

    ImageSaveSettings getSettings() const;

private:
    wxSizer* makeFields(const ImageSaveSettings& start);
    template <class T>
    ComboBox* makeChoice(const std::vector<T>& values, const Optional<T>& start);
    widgets::Spinner* makeQuality(int start);
    wxSizer* makeButtons();
    void onKey(wxKeyEvent& event);
    void accept() { EndModal(wxID_OK); }

    const ImageFormatInfo& info_;
    // Null where there is no choice.
    ComboBox* bitDepth_ = nullptr;
    widgets::Spinner* quality_ = nullptr;
    ComboBox* compression_ = nullptr;
};

ImageSaveDialog::ImageSaveDialog(wxWindow* parent, const ImageFormatInfo& info,
                                 const ImageSaveSettings& start)
    : wxDialog(parent, wxID_ANY, widgets::toWxString("Save " + info.displayName)), info_(info) {
    const int margin = FromDIP(kMargin);
    auto* const all = new wxBoxSizer(wxVERTICAL);
    all->Add(makeFields(start), wxSizerFlags(1).Expand().Border(wxALL, margin));
    all->Add(makeButtons(), wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, margin));
    widgets::applySkin(*this, widgets::GuiSkin::DEFAULT());
    SetSizerAndFit(all);
    CentreOnParent();
    Bind(wxEVT_CHAR_HOOK, &ImageSaveDialog::onKey, this);
}

wxSizer* ImageSaveDialog::makeFields(const ImageSaveSettings& start) {
    auto* const grid = new wxFlexGridSizer(2, FromDIP(wxSize(12, 8)));
    const auto add = [&](const wxString& name, wxWindow* field) {
        field->SetName(name);
        grid->Add(new wxStaticText(this, wxID_ANY, name + ":"), wxSizerFlags().CenterVertical());
        grid->Add(field);
    };
    if (isChoice(info_.bitDepths)) {
        bitDepth_ = makeChoice(info_.bitDepths, start.bitDepth);
        add("Bit depth", bitDepth_);
    }
    if (info_.quality) {
        quality_ = makeQuality(start.quality.value_or(*info_.quality));
        add("Quality", quality_);
    }
    if (isChoice(info_.compressions)) {
        compression_ = makeChoice(info_.compressions, start.compression);
        add("Compression", compression_);
    }
    return grid;
}

template <class T>
ComboBox* ImageSaveDialog::makeChoice(const std::vector<T>& values, const Optional<T>& start) {
    auto* const field = new ComboBox(this, wxID_ANY, kFieldWidth, {}, {}, true);
    std::vector<widgets::ComboBoxItem> items;
    for (const T& value : values) {
        items.push_back({getLabel(value), static_cast<int>(items.size())});
    }
    field->setData(std::move(items));
    // The first is the format's default.
    const auto found = std::ranges::find(values, start.value_or(values.front()));
    field->selectIndex(found != values.end() ? static_cast<int>(found - values.begin()) : 0, false);
    return field;
}

widgets::Spinner* ImageSaveDialog::makeQuality(int start) {
    auto* const field =
        new widgets::Spinner(this, wxID_ANY, kFieldWidth, imageio::kLowestQuality,
                             imageio::kHighestQuality, static_cast<float>(*info_.quality), 0, 0.0f);
    field->setValue(static_cast<float>(start), false);
    field->setTooltip("1 makes the smallest file, 100 the best image.");
    // Return ends typing, and the dialog with it, as in any other field.
    field->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        event.Skip();
        if (isReturn(event)) {
            CallAfter([this] { accept(); });
        }
    });
    return field;
}

wxSizer* ImageSaveDialog::makeButtons() {
    auto* const save = new AutoSizedButton(this, wxID_ANY, "Save", kButtonHeight, kButtonWidth,
                                           AutoSizedButton::Look::Primary);
    save->SetName("Save");
    save->callOnClick([this] { accept(); });
    save->SetFocus();
    auto* const cancel = new AutoSizedButton(this, wxID_ANY, "Cancel", kButtonHeight, kButtonWidth);
    cancel->SetName("Cancel");
    cancel->callOnClick([this] { EndModal(wxID_CANCEL); });
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(save, wxSizerFlags().Border(wxRIGHT, FromDIP(8)));
    row->Add(cancel);
    return row;
}

void ImageSaveDialog::onKey(wxKeyEvent& event) {
    if (isReturn(event)) {
        accept();
    } else if (event.GetKeyCode() == WXK_ESCAPE) {
        EndModal(wxID_CANCEL);
    } else {
        event.Skip();
    }
}

ImageSaveSettings ImageSaveDialog::getSettings() const {
    const auto getIndex = [](const ComboBox& field) {
        return static_cast<std::size_t>(field.getSelectedIndex().value_or(0));
    };
    ImageSaveSettings settings;
    if (bitDepth_ != nullptr) {
        settings.bitDepth = info_.bitDepths[getIndex(*bitDepth_)];
    }
    if (quality_ != nullptr) {
        settings.quality = static_cast<int>(quality_->getValue());
    }
    if (compression_ != nullptr) {
        settings.compression = info_.compressions[getIndex(*compression_)];
    }
    return settings;
}

}  // namespace

Optional<ImageSaveSettings> askForImageSaveSettings(wxWindow* parent, ImageFormat format,
                                                    IDefaultsProvider& defaults) {
    const ImageFormatInfo& info = imageio::getImageFormatInfo(format);
    if (imageio::getImageSaveChoices(info).empty()) {
        return ImageSaveSettings();
    }
    ImageSaveDialog dialog(parent, info,
                           defaults.getDefaults(format).value_or(ImageSaveSettings()));
    if (dialog.ShowModal() != wxID_OK) {
        return {};
    }
    const ImageSaveSettings settings = dialog.getSettings();
    defaults.setDefaults(format, settings);
    return settings;
}

}  // namespace tavrin::components
