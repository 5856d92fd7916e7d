#include "gui/widgets/FileDialogs.h"
#include "gui/widgets/MessageDialog.h"
#include "tests/gui/Gui.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/filedlg.h>
#include <wx/modalhook.h>
#include <wx/stopwatch.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tavrin::widgets {
namespace {

using namespace tests;

/// Shows the dialog and acts on it once it is there.
int showAndDo(MessageDialog& dialog, const Function<void()>& action) {
    dialog.CallAfter([&] {
        EXPECT_TRUE(waitFor([&] { return dialog.IsActive(); }));
        action();
    });
    return dialog.showModal();
}

const Message kQuestion{.caption = "Tavrin Image Editor",
                        .text =
                            "Do you want to open a new image?\nUnsaved changes to the current "
                            "image will be lost.",
                        .icon = MessageIcon::Question,
                        .buttons = {"Keep current", "Discard current"}};

TEST(MessageDialog, AnswersWithTheButtonOrTheWayItWasClosed) {
    TestFrame frame;
    frame.show();
    Message loading{.text = "Loading image.",
                    .icon = MessageIcon::Information,
                    .closes = false,
                    .closesOnOutsideClick = true};
    const struct {
        const char* name;
        Message message;
        Function<void(MessageDialog&)> action;
        int result;
    } cases[] = {
        {"return", kQuestion, [](MessageDialog&) { pressKey(WXK_RETURN); }, 0},
        {"second", kQuestion,
         [](MessageDialog& dialog) {
             keepScreenshot(dialog, "message-question");
             pressKey(WXK_TAB);
             pressKey(WXK_SPACE);
         },
         1},
        {"mouse", kQuestion,
         [](MessageDialog& dialog) {
             const wxSize size = dialog.GetClientSize();
             clickMouse(dialog, {size.x - 40, size.y - 28});
         },
         1},
        {"escape", kQuestion, [](MessageDialog&) { pressKey(WXK_ESCAPE); }, MessageDialog::kClosed},
        {"outside", loading,
         [&](MessageDialog& dialog) {
             keepScreenshot(dialog, "message-loading");
             // Neither a key nor a click inside leaves it.
             pressKey(WXK_ESCAPE);
             clickMouse(dialog, {5, 5});
             EXPECT_TRUE(dialog.IsModal());
             clickMouse(*frame, {20, 20});
         },
         MessageDialog::kClosed},
        {"program", loading, [](MessageDialog& dialog) { dialog.close(); }, MessageDialog::kClosed},
    };
    for (const auto& test : cases) {
        MessageDialog dialog(&*frame, test.message);
        EXPECT_EQ(showAndDo(dialog, [&] { test.action(dialog); }), test.result) << test.name;
    }
    MessageDialog ended(&*frame, loading);
    ended.close();
    EXPECT_EQ(ended.showModal(), MessageDialog::kClosed);
}

TEST(MessageDialog, StaysOnTheDisplayWithLongTexts) {
    TestFrame frame;
    frame.show();
    String text;
    for (int i = 0; i < 200; ++i) {
        text += "The channel \"" + String(std::string(100, 'x').c_str()) + "\" is damaged. ";
    }
    MessageDialog dialog(&*frame, {.caption = "Tavrin Image Editor",
                                   .text = text,
                                   .icon = MessageIcon::Warning,
                                   .buttons = {"OK"}});
    EXPECT_LT(dialog.GetSize().x, 600);
    EXPECT_LT(dialog.GetSize().y, 500);
    showAndDo(dialog, [&] {
        keepScreenshot(dialog, "message-long");
        pressKey(WXK_ESCAPE);
    });
}

/// Types paths into file dialogs, one after the other, and then cancels them; counts
/// the questions, and answers them with the first button.
class FileDialogAnswers final : public wxModalDialogHook {
public:
    explicit FileDialogAnswers(std::vector<std::string> paths) : paths_(std::move(paths)) {
        Register();
    }
    int getQuestions() const { return questions_; }

protected:
    int Enter(wxDialog* dialog) override {
        if (dialog == current_) {
            return wxID_NONE;  // file dialogs tell of themselves twice
        }
        current_ = dialog;
        const bool isForFiles = dynamic_cast<wxFileDialog*>(dialog) != nullptr;
        questions_ += isForFiles ? 0 : 1;
        dialog->CallAfter([this, dialog, isForFiles] {
            // wxWidgets does not know when the system's own dialog has got the keyboard.
            const wxStopWatch watch;
            EXPECT_TRUE(
                waitFor([&] { return isForFiles ? watch.Time() > 500 : dialog->IsActive(); }));
            if (isForFiles && next_ == paths_.size()) {
                end(*dialog, WXK_ESCAPE);
                return;
            }
            if (isForFiles) {
                pressKey('A', wxMOD_CONTROL);
                typeText(paths_[next_++]);
            }
            end(*dialog, WXK_RETURN);
        });
        return wxID_NONE;
    }
    /// The system's own dialog may take a key for the completion of a name.
    static void end(const wxDialog& dialog, int key) {
        EXPECT_TRUE(waitFor([&] {
            const wxStopWatch watch;
            for (pressKey(key); dialog.IsModal() && watch.Time() < 1000; wxMilliSleep(5)) {
                handleEvents();
            }
            return !dialog.IsModal();
        }));
    }
    void Exit(wxDialog*) override { current_ = nullptr; }

private:
    wxDialog* current_ = nullptr;
    std::vector<std::string> paths_;
    std::size_t next_ = 0;
    int questions_ = 0;
};

TEST(FileDialogs, AddTheExtensionAndAskBeforeReplacing) {
    TestFrame frame;
    frame.show();
    const auto folder = std::filesystem::temp_directory_path() / "tavrinfiles";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "there.png") << "x";
    const String filter =
        makeFileFilter("PNG image", {"png"}) + "|" + makeFileFilter("JPEG image", {"jpg", "jpeg"});
    EXPECT_EQ(filter, "PNG image (*.png)|*.png|JPEG image (*.jpg;*.jpeg)|*.jpg;*.jpeg");
    const struct {
        std::vector<std::string> answers;
        const char* saved;  // nothing when empty
        int questions;
    } cases[] = {
        {{"new"}, "new.png", 0},       {{"new.v2"}, "new.v2.png", 0},
        {{"new.JPEG"}, "new.JPEG", 0}, {{"there", "other"}, "other.png", 1},
        {{"there.png"}, "", 1},        {{}, "", 0},
    };
    for (auto [answers, saved, questions] : cases) {
        for (std::string& answer : answers) {
            answer = (folder / answer).string();
        }
        FileDialogAnswers hook(answers);
        const auto path = askForFileToSave(&*frame, "Save as", filter, Path(folder), "image.png");
        EXPECT_EQ(hook.getQuestions(), questions) << saved;
        ASSERT_EQ(path.has_value(), *saved != '\0') << saved;
        if (path) {
            EXPECT_EQ(path->fileName(), String(saved));
        }
    }
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace tavrin::widgets
