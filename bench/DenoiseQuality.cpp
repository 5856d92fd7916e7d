// How near the denoisers come to a reference of the same image with many more samples.
//
//     denoise-quality [--crops FOLDER] NOISY REFERENCE [NOISY REFERENCE ...]

#include "base/image/Exr.h"
#include "bench/ImageQuality.h"
#include "foundation/ArgumentParsing.h"
#include "foundation/Exception.h"
#include "foundation/ProgramMain.h"
#include "services/imageio/SaveImage.h"
#include "services/postcore/denoise/IDenoiser.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace tavrin::bench {
namespace {

using image::ChannelImage;

ChannelImage load(const std::string& file) {
    auto image = image::ExrLoader().load(Path(String::fromUtf8(file)));
    if (!image) {
        throw Exception(image.error());
    }
    return std::move(*image);
}

Optional<BitmapImpl<Rgb>> findElement(const ChannelImage& image, const String& name) {
    if (!image.hasElement({name, image::ElementKind::Rgb})) {
        return {};
    }
    const Pixel size = image.getDataWindow().size();
    return image.getRgbRegion(name, {0, 0, size.x, size.y}, 1.0f);
}

BitmapImpl<Rgb> getElement(const ChannelImage& image, const String& name) {
    if (auto element = findElement(image, name)) {
        return std::move(*element);
    }
    throw Exception("The image is missing \"" + name + "\" render element.");
}

postcore::DenoisingData collectData(const ChannelImage& image, postcore::DenoisingMode mode) {
    postcore::DenoisingData data;
    std::vector<postcore::FeatureType> types = getDenoisingFeatures(mode);
    for (const postcore::FeatureType type : getOptionalDenoisingFeatures(mode)) {
        types.push_back(type);
    }
    for (const postcore::FeatureType type : types) {
        const String name = getFeatureElementName(type);
        if (auto pixels = findElement(image, name)) {
            data.features.push_back({type, std::move(*pixels), findElement(image, "Sqr" + name)});
        }
    }
    return data;
}

class ConsoleLogger final : public postcore::ILogger {
public:
    void error(const String& text) override { warning(text); }
    void warning(const String& text) override { std::printf("  %s\n", text.toUtf8().c_str()); }
};

/// Pictures side by side, each pixel as 2 × 2.
class CropPicture final : public imageio::IImageIterator {
public:
    explicit CropPicture(std::vector<BitmapImpl<Rgb>> pictures) : pictures_(std::move(pictures)) {}

    Pixel getSize() const override {
        return {2 * getCrop().x * static_cast<int>(pictures_.size()), 2 * getCrop().y};
    }
    Rgb getPixel(Pixel position, float& alpha) const override {
        alpha = 1.0f;
        const Pixel crop = getCrop();
        const BitmapImpl<Rgb>& picture = pictures_[std::size_t(position.x / (2 * crop.x))];
        return picture.at((picture.getWidth() - crop.x) / 2 + position.x % (2 * crop.x) / 2,
                          (picture.getHeight() - crop.y) / 2 + position.y / 2);
    }
    bool hasAlpha() const override { return false; }

private:
    Pixel getCrop() const {
        return {std::min(pictures_[0].getWidth(), 480), std::min(pictures_[0].getHeight(), 320)};
    }

    std::vector<BitmapImpl<Rgb>> pictures_;
};

void print(const char* name, const BitmapImpl<Rgb>& picture, const BitmapImpl<Rgb>& reference,
           double noisyError, double seconds, double processorSeconds) {
    const ImageQuality quality = measureQuality(picture, reference);
    const double megapixels = 1e-6 * static_cast<double>(picture.getPixelCount());
    std::printf("  %-10s %9.4f %7.2f %7.2f %7.4f %+8.2f %9.4f %9.3f %9.3f\n", name,
                quality.relativeError, quality.signalToNoise, quality.clippedSignalToNoise,
                quality.similarity, quality.meanChange, quality.error / noisyError,
                seconds / megapixels, processorSeconds / megapixels);
}

void compare(const std::string& noisyFile, const std::string& referenceFile,
             const std::string& cropFolder) {
    using postcore::DenoisingMode;
    const ChannelImage image = load(noisyFile);
    const BitmapImpl<Rgb> noisy = getElement(image, "");
    const BitmapImpl<Rgb> variance = getElement(image, "SqrBeauty");
    const BitmapImpl<Rgb> reference = getElement(load(referenceFile), "");
    if (noisy.getSize() != reference.getSize()) {
        throw Exception("The images \"" + String::fromUtf8(noisyFile) + "\" and \"" +
                        String::fromUtf8(referenceFile) + "\" differ in size.");
    }
    std::printf("%s\n  %-10s %9s %7s %7s %7s %8s %9s %9s %9s\n", noisyFile.c_str(), "", "rel. MSE",
                "PSNR", "clipped", "SSIM", "mean %", "MSE ratio", "s/Mpixel", "CPU s");
    const double noisyError = measureQuality(noisy, reference).error;
    print("noisy", noisy, reference, noisyError, 0.0, 0.0);
    std::vector<BitmapImpl<Rgb>> pictures;
    pictures.push_back(toneMap(noisy));
    ConsoleLogger logger;
    for (const auto& [name, mode] : {std::pair("fireflies", DenoisingMode::FirefliesOnly),
                                     std::pair("quality", DenoisingMode::HighQuality),
                                     std::pair("neural", DenoisingMode::IntelAi)}) {
        const auto denoiser =
            createDenoiser(mode, Scheduler::defaultInstance(), logger, collectData(image, mode),
                           postcore::OidnBackend::Processor);
        if (!denoiser) {
            continue;
        }
        // The first run also prepares the features and makes the network.
        const auto denoise = [&] {
            return denoiser->denoise(noisy, variance, [](float) { return true; });
        };
        denoise();
        const std::clock_t startClock = std::clock();
        const auto start = std::chrono::steady_clock::now();
        const auto result = denoise();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        const double processorTime =
            static_cast<double>(std::clock() - startClock) / CLOCKS_PER_SEC;
        if (result) {
            print(name, *result, reference, noisyError, time.count(), processorTime);
            pictures.push_back(toneMap(*result));
        }
    }
    if (!cropFolder.empty()) {
        pictures.push_back(toneMap(reference));
        const Path path = Path(String::fromUtf8(cropFolder)) /
                          (Path(String::fromUtf8(noisyFile)).stem() + ".png");
        const auto saved =
            imageio::saveImage(path, CropPicture(std::move(pictures)), false, {}, {}, {});
        if (!saved) {
            throw Exception(saved.error());
        }
    }
}

}  // namespace
}  // namespace tavrin::bench

int main(int argumentCount, char** arguments) {
    return tavrin::runProgram("denoise-quality", [&] {
        CLI::App app("Compares denoised images with references.");
        std::vector<std::string> files;
        std::string cropFolder;
        app.add_option("images", files, "noisy image and reference, in turns")->required();
        app.add_option("--crops", cropFolder, "folder for the middles of the pictures at 200 %");
        if (!tavrin::parseArguments(app, argumentCount, arguments)) {
            return;
        }
        if (files.size() % 2 != 0) {
            throw tavrin::UsageError("Each noisy image needs a reference.");
        }
        if (!cropFolder.empty()) {
            std::filesystem::create_directories(cropFolder);
        }
        for (std::size_t i = 0; i < files.size(); i += 2) {
            tavrin::bench::compare(files[i], files[i + 1], cropFolder);
        }
    });
}
