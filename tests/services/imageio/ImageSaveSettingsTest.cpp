#include "services/imageio/ImageSaveSettings.h"

#include <gtest/gtest.h>

namespace tavrin::imageio {
namespace {

TEST(ImageSaveSettingsTest, SetsWhatTheTextSays) {
    ImageSaveSettings settings;
    EXPECT_TRUE(setImageSaveOption(settings, ImageFormat::Tiff, "bitdepth=32f"));
    EXPECT_TRUE(setImageSaveOption(settings, ImageFormat::Tiff, "compression = lzw"));
    EXPECT_EQ(settings,
              (ImageSaveSettings{
                  .bitDepth = BitDepth::Float, .quality = {}, .compression = String("lzw")}));
    EXPECT_TRUE(setImageSaveOption(settings, ImageFormat::Jpeg, "quality=100"));
    EXPECT_EQ(settings.quality, 100);
}

TEST(ImageSaveSettingsTest, RefusesWhatTheFormatDoesNotHave) {
    const struct {
        ImageFormat format;
        const char* option;
        const char* message;
    } cases[] = {
        {ImageFormat::Png, "bitdepth", "Format option \"bitdepth\" is not of the form KEY=VALUE."},
        {ImageFormat::Png, "=16",
         "Format \"png\" has no option \"\"; it has bitdepth, compression."},
        {ImageFormat::Bmp, "bitdepth=8", "Format \"bmp\" has no option \"bitdepth\"; it has none."},
        {ImageFormat::Png, "bitdepth=32f",
         "Format \"png\" does not accept bitdepth=32f; it accepts 8, 16."},
        {ImageFormat::Jpeg, "quality=0",
         "Format \"jpeg\" does not accept quality=0; it accepts 1 to 100."},
        {ImageFormat::Jpeg, "quality=9x",
         "Format \"jpeg\" does not accept quality=9x; it accepts 1 to 100."},
        {ImageFormat::Jpeg, "quality=99999999999",
         "Format \"jpeg\" does not accept quality=99999999999; it accepts 1 to 100."},
        {ImageFormat::Targa, "compression=zip",
         "Format \"tga\" does not accept compression=zip; it accepts rle, none."},
    };
    for (const auto& [format, option, message] : cases) {
        ImageSaveSettings settings;
        const Result<void> answer = setImageSaveOption(settings, format, option);
        ASSERT_FALSE(answer) << option;
        EXPECT_EQ(answer.error().toUtf8(), message);
        EXPECT_EQ(settings, ImageSaveSettings());
    }
}

TEST(ImageSaveSettingsTest, SettingsForOneFormatDoNotSuitAnother) {
    const ImageSaveSettings settings{.bitDepth = BitDepth::Half, .quality = {}, .compression = {}};
    EXPECT_TRUE(checkImageSaveSettings(settings, ImageFormat::OpenExr));
    EXPECT_FALSE(checkImageSaveSettings(settings, ImageFormat::Png));
    EXPECT_FALSE(checkImageSaveSettings(
        {.bitDepth = {}, .quality = {}, .compression = String("piz")}, ImageFormat::Tiff));
}

}  // namespace
}  // namespace tavrin::imageio
