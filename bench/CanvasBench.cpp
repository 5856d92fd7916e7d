// Repaints of the canvas in a real window against the stages that give its pixels:
//
//     tests/gui/with-display --size 2200x1300 build/release/bin/canvas-bench [--benchmark_...
//     options]

#include "base/pipeline/Completion.h"
#include "base/pipeline/Performer.h"
#include "bench/BenchImages.h"
#include "bench/PairedRuns.h"
#include "gui/components/DisplayedImage.h"
#include "gui/components/DrawPanel.h"

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/frame.h>
#include <wx/init.h>
#include <wx/stopwatch.h>

#include <iostream>
#include <memory>

namespace tavrin::bench {
namespace {

constexpr Bucket k4K{0, 0, 3840, 2160};
const wxSize kFullHd(1920, 1080);
constexpr int kPairs = 41;
constexpr double kBudget = 1.2;

image::ChannelImage makeBeauty() {
    image::ChannelImage image(k4K, k4K, 1.0f);
    image.addElement({image::kBeautyElement, image::ElementKind::Rgba, 0});
    image.fitChannelsToDataWindow();
    fillLikeRender(image);
    return image;
}

void handleEvents() {
    const wxStopWatch watch;
    while (watch.Time() < 300) {
        wxEventLoopBase::GetActive()->YieldFor(wxEVT_CATEGORY_ALL);
        wxMilliSleep(5);
    }
}

/// The window of a canvas that shows the middle of a 4K image at 1:1.
class Window {
public:
    Window() {
        performer.load.setLoader(
            [](const Path&) -> Result<image::ChannelImage> { return makeBeauty(); });
        pipeline::Completion loaded(performer.load);
        performer.load.load({}, {Path(String("render"))});
        if (const auto ended = loaded.wait(); !ended) {
            throw Exception(ended.error());
        }
        frame_->SetClientSize(kFullHd + wxSize(40, 40));
        canvas = new components::DrawPanel(frame_);
        canvas->setImage(displayed_.getSize(), displayed_.getDrawProvider(performer.includeAlpha),
                         displayed_.getDrawProvider(performer.zoom));
        frame_->Show();
        handleEvents();
        canvas->scrollBy(60, 30);
        handleEvents();
        view = wxWindow::FindWindowByName("Image", canvas)->GetClientSize();
    }
    ~Window() {
        frame_->Destroy();
        handleEvents();
    }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

private:
    const std::shared_ptr<settings::Settings> settings_ = std::make_shared<settings::Settings>();
    colorkit::ColorMapping colorMapping_;
    wxFrame* const frame_ = new wxFrame(nullptr, wxID_ANY, "Canvas");

public:
    pipeline::Performer performer{*settings_, colorMapping_};
    components::DrawPanel* canvas;
    wxSize view;

private:
    components::DisplayedImage displayed_{performer};
};

void repaint(benchmark::State& state) {
    Window window;
    const Bucket region = {900, 450, 900 + window.view.x, 450 + window.view.y};
    runPaired(
        state, kBudget, [&] { window.canvas->refreshFull(); },
        [&] {
            return window.performer.zoom.provideRgbRegion("", region, 1.0f,
                                                          pipeline::IOperator::Control::Display);
        });
    state.counters["width"] = window.view.x;
    state.counters["height"] = window.view.y;
}

}  // namespace
}  // namespace tavrin::bench

int main(int argumentCount, char** arguments) {
    using namespace tavrin::bench;
    benchmark::Initialize(&argumentCount, arguments);
    wxApp::SetInstance(new wxApp);
    int noArguments = 0;
    if (!wxEntryStart(noArguments, static_cast<char**>(nullptr))) {
        std::cerr << "There is no display.\n";
        return 1;
    }
    benchmark::RegisterBenchmark("repaint", repaint)
        ->Iterations(getPairCount(kPairs))
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    {
        wxGUIEventLoop loop;
        const wxEventLoopActivator activate(&loop);
        benchmark::RunSpecifiedBenchmarks();
    }
    wxEntryCleanup();
    return 0;
}
