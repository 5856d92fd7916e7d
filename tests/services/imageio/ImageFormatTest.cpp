#include "services/imageio/ImageFormat.h"

#include <gtest/gtest.h>

namespace tavrin::imageio {
namespace {

TEST(ImageFormatTest, FindsTheFormatOfAFileName) {
    EXPECT_EQ(detectImageFormat(Path(String("a/b.v2/shot.png"))), ImageFormat::Png);
    EXPECT_EQ(detectImageFormat(Path(String("shot.JPeG"))), ImageFormat::Jpeg);
    for (const char* name : {"", "png", ".png", "shot", "shot.", "shot.txr", "shot.png.bak"}) {
        EXPECT_EQ(detectImageFormat(Path(String(name))), std::nullopt) << name;
    }
}

TEST(ImageFormatTest, NamesAndExtensionsBelongToOneFormatEach) {
    for (const ImageFormatInfo& info : getImageFormats()) {
        EXPECT_EQ(findImageFormat(info.name), info.format);
        for (const String& extension : info.extensions) {
            EXPECT_EQ(detectImageFormat(Path("a." + extension)), info.format);
        }
    }
    EXPECT_EQ(findImageFormat("psd"), std::nullopt);
}

TEST(ImageFormatTest, FilterListsNamesAndExtensions) {
    EXPECT_TRUE(getImageFileFilter().startsWith(
        "PNG image (*.png)|*.png|JPEG image (*.jpg;*.jpeg)|*.jpg;*.jpeg|TIFF image"));
}

}  // namespace
}  // namespace tavrin::imageio
