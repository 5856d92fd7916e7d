#include "samples/Program.h"

#include "base/image/Exr.h"
#include "foundation/Scheduler.h"
#include "foundation/platform/Terminal.h"
#include "samples/DeskScene.h"
#include "samples/Film.h"
#include "samples/Renderer.h"

#include <chrono>
#include <filesystem>
#include <iostream>
#include <mutex>

namespace tavrin::samples {
namespace {

// The percentage done, on a line of standard error that is gone in the end.
class ProgressLine {
public:
    ProgressLine(bool isShown, int rows) : isShown_(isShown), rows_(rows) {}
    ~ProgressLine() {
        if (isShown_) {
            std::cerr << "\r\x1b[K" << std::flush;
        }
    }

    void addRow() {
        if (isShown_) {
            const std::lock_guard lock(mutex_);
            ++done_;
            std::cerr << "\rRendering " << 100 * done_ / rows_ << " %" << std::flush;
        }
    }

private:
    bool isShown_;
    std::int64_t rows_;
    std::mutex mutex_;
    std::int64_t done_ = 0;  // guarded by mutex_
};

}  // namespace

image::ChannelImage renderDesk(const CommandLine& line) {
    const auto start = std::chrono::steady_clock::now();
    Film film(line.size);
    ProgressLine progress(!line.quiet && platform::isErrorOutputTerminal(), line.size.y);
    const RenderSettings settings{line.size, line.seed, line.firstSample(), line.lastSample()};
    const std::int64_t rays = render(
        makeDeskScene(), getDeskView(), settings,
        [&](Pixel pixel, const PixelStatistics& statistics) { film.store(pixel, statistics); },
        [&] { progress.addRow(); });
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return film.finish(
        {line.lastSample() - line.firstSample(), rays, line.timing ? elapsed.count() : 0.0});
}

void run(const CommandLine& line) {
    std::error_code ignored;
    const Path folder = line.output.parent();
    if (!folder.isEmpty() && !std::filesystem::is_directory(folder.std(), ignored)) {
        throw Exception("There is no folder \"" + folder.native() + "\" to save to.");
    }
    Scheduler::setThreadCount(line.threads);
    const image::ChannelImage image = renderDesk(line);
    const auto saved = image::ExrSaver().save(image, line.output);
    if (!saved) {
        throw Exception(saved.error());
    }
}

}  // namespace tavrin::samples
