// Loads, changes, shows and saves images through one Performer again and again, good ones and
// broken ones, and fails when memory, threads or open files pile up:
//
//     pipeline-soak CYCLES [IMAGE...]
//
// Without images it makes small ones.

#include "base/image/Exr.h"
#include "base/pipeline/Completion.h"
#include "base/pipeline/Performer.h"
#include "services/postcore/PropertyIds.h"
#include "tests/soak/ProcessState.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
#include <random>
#include <string>

namespace tavrin::tests {
namespace {

namespace fs = std::filesystem;
using image::ElementInfo;
using image::ElementKind;
using pipeline::Completion;
using pipeline::IOperator;
using pipeline::Performer;

// Caches are full and pools have their threads after so many cycles.
constexpr int kWarmUp = 16;
// Performers that live for one cycle each. Pools start their threads late and the system lists a
// joined thread a moment longer, so one thread more says nothing; one for each of these does.
constexpr int kShortLives = 16;
constexpr std::size_t kMegabyte = 1'000'000;

/// A render with lights, a variance and features, of random colours.
void writeRender(const fs::path& path, Bucket window, unsigned seed) {
    image::ChannelImage image(window, window, 1.0f);
    std::vector<postcore::RenderElementInfo> infos;
    for (const char* light : {"Key", "Fill"}) {
        image.addElement({light, ElementKind::Rgb, 0});
        infos.emplace_back(postcore::RenderElementInfo::Data{
            postcore::kLightSelectType, {light, light}, postcore::RenderElementFlag(48)});
    }
    for (const char* name : {"SqrBeauty", "VisibleNormals", "VisibleDiffuse"}) {
        image.addElement({name, ElementKind::Rgb, 0});
    }
    image.addElement({"", ElementKind::Rgba, 0});
    image.setRenderElementInfos(infos);
    image.fitChannelsToDataWindow();
    std::mt19937 random(seed);
    std::exponential_distribution<float> value(2.0f);
    for (const auto& [name, channel] : image.getChannels()) {
        std::ranges::generate(image.getChannel<float>(name).getValues(),
                              [&] { return value(random); });
    }
    const auto saved = image::ExrSaver().save(image, path);
    if (!saved) {
        throw Exception(saved.error());
    }
}

/// Images that cannot be opened: parts of a good one, one with wrong bytes, none at all.
std::vector<Path> writeBrokenFiles(const fs::path& folder, const Path& good) {
    std::ifstream stream(good.std(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    std::vector<Path> paths = {folder / "missing.txr", folder};
    const auto write = [&](const std::string& content) {
        paths.emplace_back(folder / ("broken" + std::to_string(paths.size()) + ".txr"));
        std::ofstream(paths.back().std(), std::ios::binary) << content;
    };
    for (const double part : {0.0, 0.001, 0.3, 0.99}) {
        write(bytes.substr(0, static_cast<std::size_t>(part * static_cast<double>(bytes.size()))));
    }
    std::string damaged = bytes;
    for (std::size_t i = bytes.size() / 2; i < bytes.size(); i += 97) {
        damaged[i] = static_cast<char>(damaged[i] ^ 0x5A);
    }
    write(damaged);
    return paths;
}

class Soak {
public:
    Soak(std::vector<Path> good, std::vector<Path> broken, fs::path folder)
        : good_(std::move(good)), broken_(std::move(broken)), folder_(std::move(folder)) {}

    void runCycle() {
        load();
        changeSettings();
        look();
        denoise();
        save();
    }

    int getFailureCount() const { return failures_; }

private:
    std::size_t choose(std::size_t count) { return random_() % count; }
    bool isLucky(unsigned oneIn) { return random_() % oneIn == 0; }
    const Path& chooseFrom(const std::vector<Path>& paths) { return paths[choose(paths.size())]; }

    void count(const Result<String>& result) { failures_ += !result; }

    void load() {
        std::vector<Path> paths = {chooseFrom(isLucky(3) ? broken_ : good_)};
        std::vector<image::Weight> weights;
        if (isLucky(4)) {
            paths.push_back(chooseFrom(good_));
            weights = {1.0f};
        }
        performer_->load.load(weights, paths);
        count(loaded_.wait());
    }

    void changeSettings() {
        settings_->set(postcore::kBloomGlareEnabledId, isLucky(2));
        settings_->set(postcore::kGlareIntensityId, 0.1f * static_cast<float>(choose(9)));
        settings_->set(postcore::kDenoiseModeId, static_cast<int>(isLucky(2) ? 1 : 2));
        settings_->set(postcore::kLightMixIntensityId,
                       std::vector<float>(choose(4), 0.5f + static_cast<float>(choose(3))));
        settings_->set(postcore::kSharpenBlurEnabledId, isLucky(2));
        colorMapping_.setEnabled(!isLucky(4));
    }

    void look() {
        const Pixel size = performer_->zoom.getDataWindow().size();
        for (const ElementInfo& element : performer_->zoom.getElements()) {
            const auto flags = isLucky(2) ? IOperator::Control::Wait : IOperator::Control::Display;
            performer_->zoom.provideRgbRegion(element.name, {0, 0, size.x, size.y},
                                              isLucky(2) ? 1.0f : 2.0f, flags);
        }
    }

    void denoise() {
        if (isLucky(3)) {
            performer_->denoise.denoise();
            if (isLucky(3)) {
                performer_->denoise.cancel();
            } else {
                denoised_.wait();
            }
        }
    }

    void save() {
        const bool isPossible = !isLucky(5);
        const Path path(isPossible ? folder_ / "saved.txr" : folder_ / "missing" / "saved.txr");
        switch (choose(3)) {
            case 0:
                performer_->saveTxr.save(path);
                count(savedTxr_.wait());
                break;
            case 1:
                performer_->saveTxrCli.save(isLucky(2) ? "*" : "Key", path);
                count(savedTxrCli_.wait());
                break;
            default:
                performer_->saveSeparate.save(
                    performer_->saveSeparate.getSavableElements([](const auto&) { return true; }),
                    Path(path.std().parent_path() / "saved.png"), imageio::ImageFormat::Png, {});
                count(savedSeparate_.wait());
        }
    }

    const std::vector<Path> good_;
    const std::vector<Path> broken_;
    const fs::path folder_;
    std::mt19937 random_{1};
    int failures_ = 0;
    std::shared_ptr<settings::Settings> settings_ = std::make_shared<settings::Settings>();
    colorkit::ColorMapping colorMapping_;
    std::unique_ptr<Performer> performer_ = std::make_unique<Performer>(*settings_, colorMapping_);
    Completion loaded_{performer_->load};
    Completion denoised_{performer_->denoise};
    Completion savedTxr_{performer_->saveTxr};
    Completion savedTxrCli_{performer_->saveTxrCli};
    Completion savedSeparate_{performer_->saveSeparate};
};

void print(int cycle, const ProcessState& state, int failures) {
    std::cout << "cycle " << cycle << ": " << state.residentBytes / kMegabyte << " MB, "
              << state.threads << " threads, " << state.openFiles << " open files, " << failures
              << " failures told" << std::endl;
}

void check(bool isRight, const char* failure) {
    if (!isRight) {
        throw Exception(failure);
    }
}

void run(int cycles, std::vector<Path> good) {
    const TemporaryFolder folder;
    const fs::path own = folder.path().std();
    if (good.empty()) {
        writeRender(own / "large.txr", {0, 0, 320, 200}, 1);
        writeRender(own / "small.txr", {-3, -4, 61, 37}, 2);
        good = {Path(own / "large.txr"), Path(own / "small.txr")};
    }
    const std::vector<Path> broken = writeBrokenFiles(own, good.front());
    const auto soak = [&](int count) {
        Soak soak(good, broken, own);
        ProcessState most;
        for (int cycle = 1; cycle <= count; ++cycle) {
            soak.runCycle();
            const ProcessState now = getProcessState();
            most.residentBytes = std::max(most.residentBytes, now.residentBytes);
            most.openFiles = std::max(most.openFiles, now.openFiles);
            if (cycle % 25 == 0 || cycle == count) {
                print(cycle, now, soak.getFailureCount());
            }
        }
        check(soak.getFailureCount() > 0 && soak.getFailureCount() < 2 * count,
              "The cycles were not a mixture of success and failure.");
        return most;
    };
    const ProcessState before = soak(kWarmUp);
    const std::size_t threads = getProcessState().threads;
    const ProcessState after = soak(cycles);
    for (int life = 0; life < kShortLives; ++life) {
        Soak(good, broken, own).runCycle();
    }
    check(after.residentBytes < before.residentBytes * 5 / 4 + 32 * kMegabyte,
          "Memory grows from cycle to cycle.");
    check(after.openFiles <= before.openFiles, "Files are left open.");
    check(getProcessState().threads < threads + kShortLives, "Threads are left behind.");
}

}  // namespace
}  // namespace tavrin::tests

int main(int argumentCount, char** arguments) {
    try {
        std::vector<tavrin::Path> images;
        for (int i = 2; i < argumentCount; ++i) {
            images.emplace_back(std::filesystem::path(arguments[i]));
        }
        tavrin::tests::run(argumentCount > 1 ? std::stoi(arguments[1]) : 200, images);
    } catch (const std::exception& exception) {
        std::cerr << tavrin::exceptionToString(exception).toUtf8() << '\n';
        return 1;
    }
}
