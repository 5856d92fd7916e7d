#include "tests/base/pipeline/TestChain.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace tavrin::pipeline {

using image::ChannelImage;

ChannelImage makeRender(const Bucket& window, unsigned seed) {
    ChannelImage image(window, window, 1.0f);
    std::vector<postcore::RenderElementInfo> infos;
    for (const char* name : {"L1", "L2", "L3", "L4"}) {
        image.addElement({name, image::ElementKind::Rgb, 0});
        infos.emplace_back(
            postcore::RenderElementInfo::Data{postcore::kLightSelectType,
                                              {name, name},
                                              postcore::RenderElementFlag::NoPostProcessing});
    }
    image.addElement({{}, image::ElementKind::Rgba, 0});
    image.addElement({"Data", image::ElementKind::Rgb, 0});
    infos.emplace_back(postcore::RenderElementInfo::Data{
        {2000}, {"Data", "Data"}, postcore::RenderElementFlag::NoPostProcessing});
    image.setRenderElementInfos(infos);
    image.fitChannelsToDataWindow();
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(0.0f, 2.0f);
    for (const auto& [name, item] : image.getChannels()) {
        std::ranges::generate(image.getChannel<float>(name).getValues(),
                              [&] { return value(random); });
    }
    return image;
}

ChannelImage makeConstant(const Bucket& window, const String& element, float value) {
    ChannelImage image(window, window, 1.0f);
    image.addElement({element, image::ElementKind::Rgb, 0});
    image.fitChannelsToDataWindow();
    for (const auto& [name, item] : image.getChannels()) {
        std::ranges::fill(image.getChannel<float>(name).getValues(), value);
    }
    return image;
}

TestChain::TestChain() {
    chain.load.setLoader([this](const Path& path) -> Result<ChannelImage> {
        Maker make;
        {
            const std::lock_guard lock(mutex_);
            const auto file = files_.find(path.native());
            if (file == files_.end()) {
                return Failure("File \"" + path.native() + "\" cannot be opened.");
            }
            make = file->second;
        }
        return make();
    });
    chain.load.onWarning = [this](const String& text) {
        const std::lock_guard lock(mutex_);
        warnings_.push_back(text.toUtf8());
    };
}

void TestChain::setFile(const String& name, Maker make) {
    const std::lock_guard lock(mutex_);
    files_[name] = std::move(make);
}

std::string TestChain::load(const std::vector<String>& names, std::vector<image::Weight> weights) {
    chain.load.load(std::move(weights), std::vector<Path>(names.begin(), names.end()));
    const auto result = loaded.wait();
    return result ? std::string() : result.error().toUtf8();
}

std::vector<std::string> TestChain::takeWarnings() {
    const std::lock_guard lock(mutex_);
    return std::exchange(warnings_, {});
}

BitmapImpl<Rgb> crop(const BitmapImpl<Rgb>& bitmap, const Bucket& rectangle) {
    BitmapImpl<Rgb> part(rectangle.width(), rectangle.height());
    for (int y = 0; y < part.getHeight(); ++y) {
        std::ranges::copy(bitmap.row(rectangle.y0 + y)
                              .subspan(std::size_t(rectangle.x0), std::size_t(part.getWidth())),
                          part.row(y).begin());
    }
    return part;
}

bool areIdentical(const BitmapImpl<Rgb>& left, const BitmapImpl<Rgb>& right) {
    return left.getSize() == right.getSize() &&
           std::memcmp(left.pixels().data(), right.pixels().data(), left.pixels().size_bytes()) ==
               0;
}

}  // namespace tavrin::pipeline
