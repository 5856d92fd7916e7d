#include "gui/windows/MainFrame.h"

#include "base/settings/PropertyHelp.h"
#include "gui/components/ViewportHost.h"
#include "gui/widgets/Conversions.h"
#include "gui/widgets/GuiSkin.h"
#include "gui/windows/WindowTitle.h"

#include <wx/display.h>

#include <algorithm>
#include <utility>

namespace tavrin::windows {
namespace {

constexpr int kTitleDelay = 333;  // milliseconds
// In device-independent pixels.
constexpr int kSidePanelWidth = 235;
const wxSize kMinimumSize(720, 405);
const wxSize kFirstSize(1280, 800);

}  // namespace

MainFrame::MainFrame(wxWindow* parent, settings::Settings& settings,
                     colorkit::ColorMapping& colorMapping, pipeline::Performer& performer,
                     SharedPtr<components::PropertySheetHost> host)
    : PassToMainThreadMixin(parent, wxID_ANY, wxString()),
      settings_(settings),
      colorMapping_(colorMapping),
      performer_(performer),
      host_(std::move(host)),
      displayed_(performer),
      docking_(this),
      titleTimer_([this] { updateTitle(); }) {
    host_->setWindow(this);
    host_->setViewportHost(std::make_shared<components::ViewportHost>(displayed_));
    buildControls();
    buildDocking();
    bindFrame();
    bindMouse();
    bindKeyboard();
    bindLoadOperator();
    bindSettings();
    reflectStatus();
    updateTitle();
    SetMinSize(FromDIP(kMinimumSize));
    wxSize size = FromDIP(kFirstSize);
    size.DecTo(wxDisplay(this).GetClientArea().GetSize());
    SetSize(size);
}

MainFrame::~MainFrame() {
    endCallbacks();
    performer_.load.cancel();
    performer_.bloomGlare.cancel();
    host_->setWindow(nullptr);
    host_->setViewportHost(nullptr);
    docking_.UnInit();
}

void MainFrame::buildControls() {
    canvas_ = new components::DrawPanel(this);
    sidePanel_ = new components::AuiNotebook(this);
    postprocess_ = new components::PostprocessPanel(sidePanel_, settings_, colorMapping_, host_);
    sidePanel_->AddPage(postprocess_, "Post");
}

void MainFrame::buildDocking() {
    docking_.AddPane(canvas_, wxAuiPaneInfo().Name("Canvas").CenterPane().PaneBorder(false));
    docking_.AddPane(sidePanel_, wxAuiPaneInfo()
                                     .Name("Side panel")
                                     .Right()
                                     .TopDockable(false)
                                     .BottomDockable(false)
                                     .CaptionVisible(false)
                                     .PaneBorder(false)
                                     .Gripper(false)
                                     .Fixed());
    docking_.applySkin(widgets::GuiSkin::DEFAULT());
    sizePanes();
}

void MainFrame::sizePanes() {
    // A pane of fixed width has a fixed height too, which is to be all there is.
    docking_.GetPane(sidePanel_).BestSize(FromDIP(kSidePanelWidth), GetClientSize().y);
    docking_.Update();
}

void MainFrame::bindFrame() {
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        sizePanes();
        event.Skip();
    });
    canvas_->onZoomChanged = [this] { updateTitle(); };
    observe(settings::allPropertyIds(), [this] { setModified(); });
}

void MainFrame::bindMouse() {
    const auto toVec = [](Pixel pixel) {
        return Vec2{static_cast<float>(pixel.x), static_cast<float>(pixel.y)};
    };
    using MouseEvent = components::DrawPanel::MouseEvent;
    canvas_->onLeftDown = [this, toVec](const MouseEvent& event) {
        host_->getViewportHost()->notifyPressed(toVec(event.imagePosition));
    };
    canvas_->onLeftUp = [this, toVec](const MouseEvent& event) {
        host_->getViewportHost()->notifyReleased(toVec(event.imagePosition));
    };
    canvas_->cursorProvider = [this, toVec](const MouseEvent& event) {
        components::INotifiableViewportHost& viewports = *host_->getViewportHost();
        viewports.notifyMoved(toVec(event.imagePosition),
                              toVec(performer_.zoom.getDataWindow().size()));
        return viewports.isInteracting() ? wxCURSOR_CROSS : wxCURSOR_ARROW;
    };
    canvas_->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { fitToImage(); });
}

void MainFrame::bindKeyboard() {
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) { event.Skip(!onKey(event)); });
}

bool MainFrame::onKey(const wxKeyEvent& event) {
    if (event.GetModifiers() == wxMOD_NONE && event.GetKeyCode() == WXK_ESCAPE) {
        return host_->getViewportHost()->cancelInteraction();
    }
    if (event.GetModifiers() != wxMOD_CONTROL) {
        return false;
    }
    constexpr int kPages = 10;
    switch (event.GetKeyCode()) {
        case '+':
        case '=':
        case '1':
        case WXK_NUMPAD_ADD:
            canvas_->zoomIn();
            return true;
        case '-':
        case '/':
        case WXK_NUMPAD_SUBTRACT:
            canvas_->zoomOut();
            return true;
        case '0':
        case WXK_NUMPAD0:
            canvas_->setZoom(0);
            return true;
        case WXK_LEFT:
        case WXK_NUMPAD_LEFT:
            canvas_->scrollBy(-kPages, 0);
            return true;
        case WXK_RIGHT:
        case WXK_NUMPAD_RIGHT:
            canvas_->scrollBy(kPages, 0);
            return true;
        case WXK_UP:
        case WXK_NUMPAD_UP:
            canvas_->scrollBy(0, -kPages);
            return true;
        case WXK_DOWN:
        case WXK_NUMPAD_DOWN:
            canvas_->scrollBy(0, kPages);
            return true;
        default:
            return false;
    }
}

void MainFrame::observe(const std::vector<int>& ids, const Function<void()>& handler) {
    const auto observer = doPassToMainThread(Function<void(const int&, const postcore::Property&)>(
        [handler](const int&, const postcore::Property&) { handler(); }));
    for (const int id : ids) {
        keep(settings_.addObserver(id, observer));
    }
}

void MainFrame::bindSettings() {
    const Function<void()> repaintLater =
        doPassToMainThread(Function<void()>([this] { repaint(); }));
    const auto onColorMapping = doPassToMainThread(Function<void()>([this] {
        setModified();
        repaint();
    }));
    observe(settings::cameraPropertyIds(), [this] { repaint(); });
    observe(settings::sharpenBlurPropertyIds(), [this] { repaint(); });
    observe(settings::lightMixPropertyIds(), [this] { repaint(); });
    observe(settings::denoisePropertyIds(), [this] { repaint(); });
    observe(settings::bloomGlarePropertyIds(), [this] { performer_.bloomGlare.refresh(); });
    performer_.bloomGlare.onFinish = [repaintLater](const String&) { repaintLater(); };
    keep(colorMapping_.addEnabledObserver(onColorMapping));
    keep(colorMapping_.addPipelineObserver(onColorMapping));
}

void MainFrame::setStatus(Status status, bool isSet) {
    status_.set(status, isSet);
    reflectStatus();
}

void MainFrame::reflectStatus() {
    postprocess_->Enable(status_.has(Status::Loaded));
    titleTimer_.scheduleDelayed(kTitleDelay);
}

void MainFrame::setModified() {
    if (status_.has(Status::Loaded) && !status_.has(Status::Modified) &&
        !status_.has(Status::Loading)) {
        setStatus(Status::Modified, true);
    }
}

void MainFrame::updateTitle() {
    const WindowState state = {status_.has(Status::Loading),
                               status_.has(Status::Saving),
                               status_.has(Status::Loaded),
                               status_.has(Status::Modified),
                               performer_.load.getLoadedPaths(),
                               canvas_->getImageSize(),
                               canvas_->getZoom()};
    SetTitle(widgets::toWxString(composeTitle(state)));
}

void MainFrame::repaint() {
    host_->getViewportHost()->notifyRefresh();
    canvas_->refreshFull();
}

void MainFrame::showImage() {
    canvas_->setImage(displayed_.getSize(), displayed_.getDrawProvider(performer_.includeAlpha),
                      displayed_.getDrawProvider(performer_.zoom));
    const std::vector<image::ElementInfo> elements = performer_.zoom.getElements();
    const auto beauty =
        std::ranges::find(elements, image::kBeautyElement, &image::ElementInfo::name);
    showElement(beauty != elements.end() ? *beauty : image::ElementInfo());
}

void MainFrame::showElement(const image::ElementInfo& element) {
    displayed_.setElement(element.name);
    performer_.bloomGlare.setElement(element);
    repaint();
}

void MainFrame::fitToImage() {
    const wxRect room = wxDisplay(this).GetClientArea();
    wxSize size = GetSize() + widgets::toWxSize(canvas_->getZoomedSize()) - canvas_->GetSize();
    size.DecTo(room.GetSize());
    size.IncTo(GetMinSize());
    const wxPoint before = GetPosition();
    const wxPoint corner(std::max(std::min(before.x, room.GetRight() + 1 - size.x), room.x),
                         std::max(std::min(before.y, room.GetBottom() + 1 - size.y), room.y));
    SetSize(size);
    if (corner != before) {
        Move(corner);
    }
}

}  // namespace tavrin::windows
