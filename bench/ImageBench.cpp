// Loading, saving and region extraction against the OpenEXR library and memcpy.
//
//     image-bench [--benchmark_... options] [FILE...]
//
// measures with the files named, or, without any, with a 4K image of 30 channels that it writes to
// the temporary folder first.

#include "bench/BenchImages.h"
#include "bench/FileBenchmarks.h"
#include "bench/PairedRuns.h"
#include "foundation/Scheduler.h"
#include "foundation/platform/Memory.h"

#include <ImfChannelList.h>
#include <ImfCompression.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>
#include <ImfOutputFile.h>
#include <ImfThreading.h>
#include <benchmark/benchmark.h>

#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tavrin::bench {
namespace {

using image::ChannelImage;

/// The channels of a file in plain planes of the types that the file has, as a program without an
/// image model would keep them.
class PlainPlanes {
public:
    explicit PlainPlanes(const std::string& file) {
        Imf::InputFile input(file.c_str(), Imf::globalThreadCount());
        window_ = input.header().dataWindow();
        const Imf::ChannelList& channels = input.header().channels();
        for (auto channel = channels.begin(); channel != channels.end(); ++channel) {
            const auto type = channel.channel().type == Imf::UINT ? Imf::UINT : Imf::FLOAT;
            std::vector<float>& plane = planes_[channel.name()];
            plane.resize(getPixelCount());
            output_.channels().insert(channel.name(), Imf::Channel(type));
            frameBuffer_.insert(channel.name(), Imf::Slice::Make(type, plane.data(), window_));
        }
        output_.displayWindow() = input.header().displayWindow();
        output_.dataWindow() = window_;
        output_.compression() = Imf::ZIP_COMPRESSION;
    }

    void read(const std::string& file) {
        Imf::InputFile input(file.c_str(), Imf::globalThreadCount());
        input.setFrameBuffer(frameBuffer_);
        input.readPixels(window_.min.y, window_.max.y);
    }

    void write(const std::string& file) const {
        Imf::OutputFile output(file.c_str(), output_, Imf::globalThreadCount());
        output.setFrameBuffer(frameBuffer_);
        output.writePixels(window_.max.y - window_.min.y + 1);
    }

    std::size_t getPixelCount() const {
        return std::size_t(window_.max.x - window_.min.x + 1) *
               std::size_t(window_.max.y - window_.min.y + 1);
    }

private:
    Imath::Box2i window_;
    std::map<std::string, std::vector<float>> planes_;
    Imf::FrameBuffer frameBuffer_;
    Imf::Header output_;
};

void benchLoad(benchmark::State& state, const std::string& file) {
    PlainPlanes planes(file);
    runPaired(
        state, 1.10, [&file] { return loadOrThrow(file); }, [&] { planes.read(file); });
}

void benchSave(benchmark::State& state, const std::string& file) {
    const std::string target = getTemporaryFile("tavrin-image-bench-saved.exr");
    PlainPlanes planes(file);
    planes.read(file);
    const ChannelImage image = loadOrThrow(file);
    runPaired(
        state, 1.10, [&] { saveOrThrow(image, target); }, [&] { planes.write(target); });
    std::filesystem::remove(target);
}

void benchRegion(benchmark::State& state, const std::string& file) {
    const ChannelImage image = loadOrThrow(file);
    const Pixel size = image.getDataWindow().size();
    const Bucket whole = {0, 0, size.x, size.y};
    const std::size_t bytes = std::size_t(size.x) * std::size_t(size.y) * sizeof(Rgb);
    const std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes, 2);
    runPaired(
        state, 3.0, [&] { return image.getRgbRegion({}, whole, 1.0f); },
        [&] {
            std::memcpy(to.data(), from.data(), bytes);
            benchmark::ClobberMemory();
        });
}

/// The peak of the resident memory while loading, over what was there before, against the bytes of
/// the channels.
void benchLoadMemory(benchmark::State& state, const std::string& file) {
    for (auto iteration : state) {
        static_cast<void>(iteration);
        platform::releaseUnusedPixelMemory();
        platform::resetPeakMemory();
        const auto before = double(platform::getPeakMemory());
        const ChannelImage image = loadOrThrow(file);
        double channelBytes = 0.0;
        for (const auto& [name, channel] : image.getChannels()) {
            channelBytes += 4.0 * channel->getSize();
        }
        state.counters["channels_MB"] = channelBytes * 1e-6;
        state.counters["ratio"] = (double(platform::getPeakMemory()) - before) / channelBytes;
        state.counters["budget"] = 1.15;
    }
}

/// A 4K image of 30 channels.
std::string writeLargeFile() {
    const Bucket window = {0, 0, 3840, 2160};
    ChannelImage image(window, window, 1.0f);
    image.addElement({{}, image::ElementKind::Rgb, 0});
    for (int i = 1; i < 10; ++i) {
        image.addElement(
            {"Pass" + String::fromUtf8(std::to_string(i)), image::ElementKind::Rgb, 0});
    }
    image.fitChannelsToDataWindow();
    fillLikeRender(image);
    std::string file = getTemporaryFile("tavrin-image-bench-4k.exr");
    saveOrThrow(image, file);
    return file;
}

void registerBenchmarks(const std::string& file) {
    const std::string name = std::filesystem::path(file).filename();
    const auto add = [&](const char* work, auto function) {
        return benchmark::RegisterBenchmark((work + name).c_str(), function, file)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    };
    // First, as memory that others have given back would hide what loading takes.
    add("load_memory/", benchLoadMemory)->Iterations(1);
    add("load/", benchLoad)->Iterations(getPairCount(7));
    add("save/", benchSave)->Iterations(getPairCount(5));
    add("region/", benchRegion)->Iterations(getPairCount(41));
}

}  // namespace
}  // namespace tavrin::bench

int main(int argumentCount, char** arguments) {
    using namespace tavrin::bench;
    return runFileBenchmarks(
        argumentCount, arguments, [] { return std::vector{writeLargeFile()}; },
        [](const std::vector<std::string>& files) {
            for (const std::string& file : files) {
                registerBenchmarks(file);
            }
        });
}
