#include "gui/components/ImageSaveDialog.h"
#include "gui/widgets/ComboBox.h"
#include "tests/gui/Gui.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/modalhook.h>
#include <wx/uiaction.h>

#include <string>
#include <utility>

namespace tavrin::components {
namespace {

using namespace tests;
using imageio::BitDepth;
using imageio::ImageFormat;
using imageio::ImageSaveSettings;

/// Acts on each dialog once it is there.
class DialogActor final : public wxModalDialogHook {
public:
    explicit DialogActor(Function<void(wxDialog&)> action) : action_(std::move(action)) {
        Register();
    }
    int getCount() const { return count_; }

protected:
    int Enter(wxDialog* dialog) override {
        ++count_;
        dialog->CallAfter([this, dialog] {
            EXPECT_TRUE(waitFor([&] { return dialog->IsActive(); }));
            action_(*dialog);
        });
        return wxID_NONE;
    }

private:
    Function<void(wxDialog&)> action_;
    int count_ = 0;
};

ImageSaveSettings makeSettings(BitDepth depth, const char* compression) {
    return {depth, {}, String(compression)};
}
ImageSaveSettings makeSettings(int quality) {
    return {{}, quality, {}};
}

wxWindow& find(wxDialog& dialog, const char* name) {
    wxWindow* const found = wxWindow::FindWindowByName(name, &dialog);
    EXPECT_NE(found, nullptr) << name;
    return found != nullptr ? *found : dialog;
}

class SaveDialogTest : public testing::Test {
protected:
    SaveDialogTest() { frame_.show(); }

    Optional<ImageSaveSettings> ask(ImageFormat format, const Function<void(wxDialog&)>& action) {
        const DialogActor actor(action);
        const auto answer = askForImageSaveSettings(&*frame_, format, defaults_);
        isShown_ = actor.getCount() > 0;
        if (answer) {
            EXPECT_TRUE(imageio::checkImageSaveSettings(*answer, format));
        }
        return answer;
    }

    TestFrame frame_;
    SimpleSaveSettingsDefaultsProvider defaults_;
    bool isShown_ = false;
};

void accept(wxDialog&) {
    pressKey(WXK_RETURN);
}

void cancel(wxDialog&) {
    pressKey(WXK_ESCAPE);
}

void leave(wxDialog& dialog) {
    dialog.Close();
}

TEST_F(SaveDialogTest, IsUsedByKeyboardAndRemembersWhatWasConfirmed) {
    EXPECT_EQ(ask(ImageFormat::Png, accept), makeSettings(BitDepth::Int8, "normal"));
    EXPECT_EQ(ask(ImageFormat::Png,
                  [](wxDialog&) {
                      // From "Save" over "Cancel" to the fields.
                      pressKey(WXK_TAB);
                      pressKey(WXK_TAB);
                      pressKey(WXK_DOWN);
                      pressKey(WXK_TAB);
                      pressKey(WXK_DOWN);
                      pressKey(WXK_DOWN);
                      pressKey(WXK_RETURN);
                  }),
              makeSettings(BitDepth::Int16, "best"));
    EXPECT_EQ(ask(ImageFormat::Png,
                  [](wxDialog& dialog) {
                      find(dialog, "Bit depth").SetFocus();
                      pressKey(WXK_UP);
                      cancel(dialog);
                  }),
              std::nullopt);
    EXPECT_EQ(ask(ImageFormat::Png, leave), std::nullopt);
    EXPECT_EQ(ask(ImageFormat::Png, accept), makeSettings(BitDepth::Int16, "best"));
    EXPECT_EQ(ask(ImageFormat::Tiff, accept), makeSettings(BitDepth::Int16, "zip"));
}

TEST_F(SaveDialogTest, TakesTypedQuality) {
    const auto type = [](const char* text, int end) {
        return [text, end](wxDialog& dialog) {
            find(dialog, "Quality").SetFocus();
            typeText(text);
            pressKey(end);
        };
    };
    EXPECT_EQ(ask(ImageFormat::Jpeg, accept), makeSettings(95));
    EXPECT_EQ(ask(ImageFormat::Jpeg, type("80", WXK_RETURN)), makeSettings(80));
    EXPECT_EQ(ask(ImageFormat::Jpeg, type("500", WXK_RETURN)), makeSettings(100));
    const auto typeAndClick = [&](const char* button) {
        return [&type, button](wxDialog& dialog) {
            // Escape takes back what is typed, and does not leave the dialog yet.
            type("20", WXK_ESCAPE)(dialog);
            EXPECT_TRUE(dialog.IsModal());
            typeText("70");
            clickMouse(find(dialog, button), {20, 10});
        };
    };
    EXPECT_EQ(ask(ImageFormat::Jpeg, typeAndClick("Cancel")), std::nullopt);
    EXPECT_EQ(ask(ImageFormat::Jpeg, accept), makeSettings(100));
    EXPECT_EQ(ask(ImageFormat::Jpeg, typeAndClick("Save")), makeSettings(70));
    EXPECT_EQ(ask(ImageFormat::WebP, accept), makeSettings(95));
}

TEST_F(SaveDialogTest, IsUsedByMouse) {
    const auto answer = ask(ImageFormat::OpenExr, [](wxDialog& dialog) {
        // The second of two, and the third of ten.
        clickMouse(find(dialog, "Bit depth"), {20, 10});
        clickMouse(find(dialog, "Bit depth"), {20, 22 + 30});
        clickMouse(find(dialog, "Compression"), {20, 10});
        keepScreenshot(dialog, "save-exr-list");
        clickMouse(find(dialog, "Compression"), {20, 22 + 50});
        clickMouse(find(dialog, "Save"), {20, 10});
    });
    EXPECT_EQ(answer, makeSettings(BitDepth::Float, "piz"));
}

TEST_F(SaveDialogTest, OffersJustWhatTheFormatLeavesOpen) {
    for (const auto& info : imageio::getImageFormats()) {
        SCOPED_TRACE(info.name.toUtf8());
        const bool hasDepth = info.bitDepths.size() > 1;
        const bool hasCompression = info.compressions.size() > 1;
        const auto check = [&](wxDialog& dialog) {
            EXPECT_EQ(wxWindow::FindWindowByName("Bit depth", &dialog) != nullptr, hasDepth);
            EXPECT_EQ(wxWindow::FindWindowByName("Quality", &dialog) != nullptr,
                      info.quality.has_value());
            const auto* const compression = dynamic_cast<widgets::ComboBox*>(
                wxWindow::FindWindowByName("Compression", &dialog));
            EXPECT_EQ(compression != nullptr, hasCompression);
            if (compression != nullptr) {
                for (const auto& item : compression->getData()) {
                    EXPECT_TRUE(item.label[0] >= u'A' && item.label[0] <= u'Z')
                        << item.label.toUtf8() << " has no name for users.";
                }
            }
            moveMouse(dialog, {5, 5});
            keepScreenshot(dialog, "save-" + info.name.toUtf8());
            accept(dialog);
        };
        const auto answer = ask(info.format, check);
        EXPECT_EQ(isShown_, hasDepth || info.quality || hasCompression);
        ASSERT_TRUE(answer.has_value());
        EXPECT_EQ(answer->bitDepth.has_value(), hasDepth);
        EXPECT_EQ(answer->quality, info.quality);
        EXPECT_EQ(answer->compression.has_value(), hasCompression);
    }
    // A remembered thing that the format does not have.
    defaults_.setDefaults(ImageFormat::Png, makeSettings(BitDepth::Float, "zip"));
    EXPECT_EQ(ask(ImageFormat::Png, accept), makeSettings(BitDepth::Int8, "normal"));
}

}  // namespace
}  // namespace tavrin::components
