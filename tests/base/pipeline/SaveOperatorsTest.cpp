#include "base/image/AttributeNames.h"
#include "base/image/ImageSettings.h"
#include "base/pipeline/SeparateFiles.h"
#include "services/postcore/PropertyIds.h"
#include "tests/base/pipeline/TestChain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace tavrin::pipeline {
namespace {

using image::Channel;
using image::ChannelImage;
using image::ElementInfo;
using image::ElementKind;

constexpr Bucket kWindow = {0, 0, 37, 23};

void addElement(ChannelImage& image, const char* name, ElementKind kind, float value) {
    const ElementInfo element{name, kind, 0};
    ChannelImage own(kWindow, kWindow, 1.0f);
    own.addElement(element);
    own.fitChannelsToDataWindow();
    for (const auto& [channel, item] : own.getChannels()) {
        std::ranges::fill(own.getChannel<float>(channel).getValues(), value += 0.25f);
        image.setChannel(item->clone());
    }
}

/// A render with all that a renderer may write, and remarks that are not ours.
ChannelImage makeFullRender() {
    ChannelImage image = makeRender(kWindow, 1);
    addElement(image, "SqrBeauty", ElementKind::Rgb, 1.0f);
    addElement(image, "Denoised", ElementKind::Rgb, 2.0f);
    addElement(image, "SqrL2", ElementKind::Rgb, 3.0f);
    addElement(image, "DenoisedL2", ElementKind::Rgb, 4.0f);
    addElement(image, "DenoisedNothing", ElementKind::Rgb, 5.0f);
    addElement(image, "VisibleNormals", ElementKind::Rgb, 6.0f);
    addElement(image, "SqrVisibleNormals", ElementKind::Rgb, 7.0f);
    addElement(image, "TAVRIN_FB_WEIGHTS", ElementKind::Mono, 8.0f);
    addElement(image, "Motion.X", ElementKind::Mono, 9.0f);
    addElement(image, "Motion.Y", ElementKind::Mono, 10.0f);
    auto ids = std::make_unique<Channel<std::uint32_t>>("Ids");
    ids->resize(kWindow.size());
    std::ranges::fill(ids->getValues(), 4'000'000'000u);
    image.setChannel(std::move(ids));
    auto infos = image.getRenderElementInfos();
    infos.emplace_back(postcore::RenderElementInfo::Data{
        postcore::kLightMixInteractiveType, {"Mix", "Mix"}, postcore::RenderElementFlag(48)});
    image.setRenderElementInfos(infos);
    image.setAttribute("comments", String("by night"));
    image.setAttribute(image::kCameraTypeAttribute, 4);
    image.setAttribute(image::kTxrMarkerAttribute, 1);
    image.setAttribute(image::kRaysPerSampleStatistic, 2.5f);
    image.setAttribute("gamma", 2.2f);
    return image;
}

bool areSame(const ChannelImage& left, const char* leftName, const ChannelImage& right,
             const char* rightName) {
    return left.hasChannel<float>(leftName) && right.hasChannel<float>(rightName) &&
           std::ranges::equal(left.getChannel<float>(leftName).getValues(),
                              right.getChannel<float>(rightName).getValues());
}

class SaveOperators : public testing::Test {
protected:
    SaveOperators() {
        test_.setFile("full.txr", makeFullRender);
        const auto keep = [this](const ChannelImage& image, const Path&) -> Result<void> {
            saved_ = std::make_shared<const ChannelImage>(copy(image));
            return {};
        };
        performer_.saveTxr.setSaver(keep);
        performer_.saveTxrCli.setSaver(keep);
    }

    static ChannelImage copy(const ChannelImage& image) {
        ChannelImage result;
        for (const auto& [name, attribute] : image.getAttributes()) {
            result.setAttribute(attribute->clone());
        }
        for (const auto& [name, channel] : image.getChannels()) {
            result.setChannel(channel->clone());
        }
        return result;
    }

    /// The message of success or the failure of what is asked for.
    static std::string waitFor(Completion& completion) {
        const Result<String> result = completion.wait();
        return (result ? *result : "failed: " + result.error()).toUtf8();
    }
    std::string saveTxr(const char* path) {
        performer_.saveTxr.save(Path(String(path)));
        return waitFor(savedTxr_);
    }
    std::string saveCli(const char* selector, const char* path = "out.txr") {
        performer_.saveTxrCli.save(selector, Path(String(path)));
        return waitFor(savedTxrCli_);
    }
    std::string saveSeparate(const std::vector<ElementInfo>& elements, const char* path) {
        performer_.saveSeparate.save(elements, Path(String(path)), imageio::ImageFormat::Png, {});
        return waitFor(savedSeparate_);
    }

    TestChain test_;
    Performer& performer_ = test_.chain;
    Completion savedTxr_{performer_.saveTxr};
    Completion savedTxrCli_{performer_.saveTxrCli};
    Completion savedSeparate_{performer_.saveSeparate};
    SharedPtr<const ChannelImage> saved_;
};

TEST_F(SaveOperators, ReopenedTxrIsTheSameImage) {
    ASSERT_EQ(test_.load({"full.txr"}), "");
    test_.settings().set(postcore::kBloomGlareEnabledId, true);
    test_.colorMapping.setEnabled(false);
    const auto look = [&](const String& element) {
        return *performer_.zoom.provideRgbRegion(element, kWindow, 1.0f, IOperator::Control::Wait);
    };
    const std::vector<String> elements = {"", "L2", "Data", image::kLightMixInteractive};
    std::vector<BitmapImpl<Rgb>> shown;
    std::ranges::transform(elements, std::back_inserter(shown), look);

    EXPECT_EQ(saveTxr("a/b.txr"), "Image \"a/b.txr\" has been successfully saved.");
    ASSERT_TRUE(saved_);
    const ChannelImage loaded = makeFullRender();
    for (const auto& [name, channel] : loaded.getChannels()) {
        const bool isLeftOut = name.startsWith("DenoisedNothing");
        EXPECT_EQ(saved_->getChannels().contains(name), !isLeftOut) << name.toUtf8();
        if (!isLeftOut && name != String("Ids")) {
            const std::string utf8 = name.toUtf8();
            EXPECT_TRUE(areSame(loaded, utf8.c_str(), *saved_, utf8.c_str())) << utf8;
        }
    }
    EXPECT_EQ(saved_->getChannel<std::uint32_t>("Ids").getValues()[5], 4'000'000'000u);
    EXPECT_EQ(saved_->getAttribute<float>("gamma"), 1.0f);
    EXPECT_EQ(saved_->getAttribute<String>("comments"), String("by night"));
    EXPECT_EQ(image::readCameraData(*saved_).type, 4u);
    EXPECT_FALSE(saved_->getAttributes().contains(image::kTxrMarkerAttribute));
    EXPECT_FALSE(saved_->getAttributes().contains(image::kRaysPerSampleStatistic));

    test_.setFile("saved.txr", [this] { return copy(*saved_); });
    ASSERT_EQ(test_.load({"saved.txr"}), "");
    EXPECT_EQ(test_.settings().get(postcore::kBloomGlareEnabledId), postcore::Property(true));
    EXPECT_FALSE(test_.colorMapping.isEnabled());
    for (std::size_t i = 0; i < elements.size(); ++i) {
        EXPECT_TRUE(areIdentical(look(elements[i]), shown[i])) << elements[i].toUtf8();
    }
}

TEST_F(SaveOperators, OneElementBecomesTheBeauty) {
    ASSERT_EQ(test_.load({"full.txr"}), "");
    EXPECT_EQ(saveCli("L2"), "Image \"out.txr\" has been successfully saved.");
    const ChannelImage loaded = makeFullRender();
    EXPECT_TRUE(areSame(*saved_, "R", loaded, "L2.R"));
    EXPECT_TRUE(areSame(*saved_, "SqrBeauty.R", loaded, "SqrL2.R"));
    EXPECT_TRUE(areSame(*saved_, "Denoised.R", loaded, "DenoisedL2.R"));
    EXPECT_TRUE(areSame(*saved_, "SqrVisibleNormals.B", loaded, "SqrVisibleNormals.B"));
    EXPECT_TRUE(areSame(*saved_, "TAVRIN_FB_WEIGHTS", loaded, "TAVRIN_FB_WEIGHTS"));
    EXPECT_EQ(saved_->getChannels().size(), 3u * 5 + 1);
    EXPECT_EQ(image::readCameraData(*saved_).type, 4u);
    const auto infos = saved_->getRenderElementInfos();
    ASSERT_EQ(infos.size(), 2u);
    EXPECT_EQ(infos[0].getData().names, (postcore::RenderElementInfo::Names{"", ""}));
    EXPECT_EQ(infos[1].getData().names,
              (postcore::RenderElementInfo::Names{"Denoised", "Denoised"}));
    EXPECT_EQ(infos[1].getData().type, postcore::kLightSelectType);
}

TEST_F(SaveOperators, SayWhyTheyCannotSave) {
    const std::string notSavable =
        "\" cannot be saved to Tavrin EXR.\nThe element either does not exist, or saving such "
        "element alone is not supported.";
    EXPECT_EQ(saveCli("*"),
              "failed: There are no render elements that can be saved to Tavrin EXR.");
    ASSERT_EQ(test_.load({"full.txr"}), "");
    EXPECT_EQ(saveCli("Alpha"), "failed: Render element \"A" + notSavable);
    EXPECT_EQ(saveCli("VisibleNormals"), "failed: Render element \"VisibleNormals" + notSavable);
    EXPECT_EQ(saveCli("BEAUTY", "folder/"), "failed: Well-formed output image path is expected.");
    EXPECT_EQ(saveTxr(""), "failed: Well-formed output image path is expected.");
    const std::vector<ElementInfo> beauty = {{"", ElementKind::Rgba, 0}};
    EXPECT_EQ(saveSeparate(beauty, "picture"),
              "failed: Well-formed output image path having a file extension is expected.");
    EXPECT_EQ(saveSeparate({}, "a.png"),
              "failed: There are not selected any render elements that can be saved. You need to "
              "select at least one.");
    EXPECT_EQ(saveSeparate({{"Nothing", ElementKind::Rgb, 0}}, "a.png"),
              "failed: Unable to retrieve output image data of the \"Nothing\" render element.");
    performer_.saveTxr.setSaver([](const ChannelImage&, const Path&) -> Result<void> {
        return Failure("The disk is full.");
    });
    EXPECT_EQ(saveTxr("a.txr"), "failed: The disk is full.");
}

TEST_F(SaveOperators, PicturesAreWhatIsShown) {
    struct Picture {
        std::string path;
        bool isData;
        bool hasAlpha;
        BitmapImpl<Rgb> pixels;
    };
    std::vector<Picture> pictures;
    performer_.saveSeparate.setSaver([&](const Path& path, const imageio::IImageIterator& picture,
                                         bool isData, Optional<imageio::ImageFormat>,
                                         const imageio::ImageSaveSettings&) -> Result<void> {
        BitmapImpl<Rgb> pixels(picture.getSize().x, picture.getSize().y);
        for (int y = 0; y < pixels.getHeight(); ++y) {
            for (int x = 0; x < pixels.getWidth(); ++x) {
                float alpha = 0.0f;
                pixels.at(x, y) = picture.getPixel({x, y}, alpha);
                pixels.at(x, y).a = alpha;
            }
        }
        pictures.push_back({path.native().toUtf8(), isData, picture.hasAlpha(), std::move(pixels)});
        return {};
    });
    ASSERT_EQ(test_.load({"full.txr"}), "");
    const auto elements =
        performer_.saveSeparate.getSavableElements([](const ElementInfo& element) {
            return element.name.isEmpty() || element.name == String("Data") ||
                   element.name == String("L1");
        });
    EXPECT_EQ(saveSeparate(elements, "dir/shot.v2.png"),
              "Image \"dir/shot.v2.png\" has been successfully saved.");
    ASSERT_EQ(pictures.size(), 3u);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const String& name = elements[i].name;
        EXPECT_EQ(pictures[i].path,
                  "dir/shot.v2" + (name.isEmpty() ? "" : "_" + name.toUtf8()) + ".png");
        EXPECT_EQ(pictures[i].isData, !name.isEmpty());
        EXPECT_TRUE(pictures[i].hasAlpha);
        EXPECT_TRUE(areIdentical(pictures[i].pixels,
                                 *performer_.zoom.provideRgbRegion(name, kWindow, 1.0f)));
    }
    pictures.clear();
    saveSeparate({{"L1", ElementKind::Rgb, 0}}, "one.png");
    ASSERT_EQ(pictures.size(), 1u);
    EXPECT_EQ(pictures[0].path, "one.png");
    EXPECT_FALSE(pictures[0].hasAlpha);
}

TEST(SeparateFiles, NoTwoElementsShareAFile) {
    const std::vector<ElementInfo> elements = {
        {"a/b", {}, 0}, {"", {}, 0}, {"a_b", {}, 0}, {"A", {}, 0}, {"..", {}, 0}};
    std::vector<std::string> paths;
    for (const Path& path : getSeparatePaths(elements, Path(String("x/y.z.tif")))) {
        EXPECT_EQ(path.std().parent_path(), "x");
        paths.push_back(path.fileName().toUtf8());
    }
    EXPECT_EQ(paths[0], "y.z_a_b.tif");
    EXPECT_EQ(paths[1], "y.z.tif");
    EXPECT_EQ(paths[2], "y.z_a_b_2.tif");
    EXPECT_EQ(paths[3], "y.z_Alpha.tif");
}

TEST(Performer, BeginsWithNothing) {
    TestChain test;
    EXPECT_FALSE(test.chain.zoom.provideRgbRegion({}, {0, 0, 1, 1}, 1.0f));
    EXPECT_EQ(test.chain.saveSeparate.getRevision(), IOperator::kNoRevision);
    EXPECT_EQ(test.chain.saveTxrCli.getRevision(), IOperator::kNoRevision);
}

}  // namespace
}  // namespace tavrin::pipeline
