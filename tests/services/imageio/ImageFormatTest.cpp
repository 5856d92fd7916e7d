#include "services/imageio/ImageFormat.h"

#include <gtest/gtest.h>

#include <set>

namespace tavrin::imageio {
namespace {

TEST(ImageFormatTest, FindsTheFormatOfAFileName) {
    EXPECT_EQ(detectImageFormat(Path(String("a/b.v2/shot.png"))), ImageFormat::Png);
    EXPECT_EQ(detectImageFormat(Path(String("shot.JPeG"))), ImageFormat::Jpeg);
    EXPECT_EQ(detectImageFormat(Path(String("shot.jpg"))), ImageFormat::Jpeg);
    EXPECT_EQ(detectImageFormat(Path(String("shot.v2.TIF"))), ImageFormat::Tiff);
    EXPECT_EQ(detectImageFormat(Path(String("shot.exr"))), ImageFormat::OpenExr);
    for (const char* name : {"", "png", ".png", "shot", "shot.", "shot.txr", "shot.png.bak"}) {
        EXPECT_EQ(detectImageFormat(Path(String(name))), std::nullopt) << name;
    }
}

TEST(ImageFormatTest, NamesAndExtensionsBelongToOneFormatEach) {
    std::set<String> names;
    std::set<String> extensions;
    for (const ImageFormatInfo& info : getImageFormats()) {
        EXPECT_TRUE(names.insert(info.name).second) << info.name.toUtf8();
        EXPECT_EQ(findImageFormat(info.name), info.format);
        for (const String& extension : info.extensions) {
            EXPECT_TRUE(extensions.insert(extension).second) << extension.toUtf8();
        }
    }
    EXPECT_EQ(findImageFormat("psd"), std::nullopt);
}

TEST(ImageFormatTest, FilterOffersOneChoicePerFormat) {
    const String filter = getImageFileFilter();
    EXPECT_TRUE(filter.startsWith(
        "PNG image (*.png)|*.png|JPEG image (*.jpg;*.jpeg)|*.jpg;*.jpeg|TIFF image"));
    std::size_t bars = 0;
    for (const char16_t letter : filter.view()) {
        bars += letter == u'|';
    }
    EXPECT_EQ(bars + 1, 2 * getImageFormats().size());
}

}  // namespace
}  // namespace tavrin::imageio
