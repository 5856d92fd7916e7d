#include "gui/components/PostprocessPanel.h"

#include "gui/sheet/PropertySheetWindow.h"
#include "gui/widgets/GuiSkin.h"
#include "gui/widgets/ScopedWindowFreezer.h"

#include <wx/sizer.h>

#include <utility>

namespace tavrin::components {
namespace {

constexpr int kScrollStep = 10;  // pixels

}  // namespace

PostprocessPanel::PostprocessPanel(wxWindow* parent, settings::Settings& settings,
                                   colorkit::ColorMapping& colorMapping,
                                   SharedPtr<PropertySheetHost> host)
    : toneMapping_(colorMapping, [this](Function<void()> function) {
          return doPassToMainThread(std::move(function));
      }) {
    setSettings(settings, &colorMapping);
    Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
           wxTAB_TRAVERSAL | wxBORDER_NONE | wxHSCROLL | wxVSCROLL);
    SetName("Post");
    widgets::applySkin(*this, widgets::GuiSkin::DEFAULT());
    SetScrollRate(kScrollStep, kScrollStep);
    createColorMappingPanel(std::move(host));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(sheet_, wxSizerFlags().Expand().DoubleBorder(wxLEFT | wxRIGHT | wxTOP));
    SetSizer(sizer);
    FitInside();
}

void PostprocessPanel::createColorMappingPanel(SharedPtr<PropertySheetHost> host) {
    sheet_ = sheet::createPropertySheetWindow(
        this, {toneMapping_.getEntity(), "TONE MAPPING", "Orvix.TavrinUi.ToneMapping",
               std::move(host), [this](bool) { followSheet(); }});
}

void PostprocessPanel::followSheet() {
    const widgets::ScopedWindowFreezer freezer(GetParent());
    sheet_->SetSize(sheet_->GetSize().x, sheet_->GetBestSize().y);
    Layout();
    FitInside();
    GetParent()->Layout();
}

bool PostprocessPanel::Enable(bool enable) {
    return sheet_->Enable(enable);
}

}  // namespace tavrin::components
