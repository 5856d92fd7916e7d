#include "foundation/TextFile.h"
#include "services/imageio/SaveImage.h"
#include "tests/services/imageio/TestPicture.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <new>
#include <string>

namespace tavrin::imageio {
namespace {

/// Says that it has a size without having the pixels.
class HugePicture : public IImageIterator {
public:
    explicit HugePicture(Pixel size) : size_(size) {}

    Pixel getSize() const override { return size_; }
    Rgb getPixel(Pixel, float&) const override { throw std::bad_alloc(); }
    bool hasAlpha() const override { return false; }

private:
    Pixel size_;
};

std::string messageOf(const Result<void>& answer) {
    return answer ? "success" : answer.error().toUtf8();
}

TEST(SaveImageFailureTest, SaysWhyAPictureCannotBeWritten) {
    const struct {
        const char* name;
        Pixel size;
        std::optional<BitDepth> bitDepth;
        const char* reason;
    } cases[] = {
        {"a.psd", {4, 4}, {}, "\"psd\" is not the extension of a known picture format."},
        {"a", {4, 4}, {}, "its name has no extension that tells the picture format."},
        {"a.png", {0, 4}, {}, "the picture is empty."},
        {"a.png",
         {4, 4},
         BitDepth::Half,
         "Format \"png\" does not accept bitdepth=16f; it accepts 8, 16."},
        {"a.jpg", {65501, 1}, {}, "a JPEG image has at most 65500 on a side."},
        {"a.tga", {1, 65536}, {}, "a Targa image has at most 65535 on a side."},
        {"a.bmp",
         {40000, 40000},
         {},
         "the picture has 40000 x 40000 pixels, but a BMP image holds at most 4 GiB."},
        {"a.jp2", {400, 31}, {}, "a JPEG 2000 image has at least 32 on a side."},
        {"a.png", {4, 4}, {}, "There is not enough memory."},
        {"missing/a.png", {4, 4}, {}, "No such file or directory."},
    };
    const tests::TemporaryFolder folder;
    for (const auto& [name, size, bitDepth, reason] : cases) {
        const Path path = folder / name;
        const ImageSaveSettings settings{.bitDepth = bitDepth, .quality = {}, .compression = {}};
        const std::string message =
            messageOf(saveImage(path, HugePicture(size), false, {}, settings, TaskProgress()));
        EXPECT_THAT(message, testing::StartsWith("File \"" + path.native().toUtf8() +
                                                 "\" cannot be written: "));
        EXPECT_THAT(message, testing::EndsWith(reason));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path().std()));
}

TEST(SaveImageFailureTest, ACancelledSaveLeavesTheOldFile) {
    const tests::TemporaryFolder folder;
    for (const ImageFormatInfo& info : getImageFormats()) {
        const Path path = folder / "picture";
        std::ofstream(path.std()) << "old";
        int asked = 0;
        const Result<void> answer =
            saveImage(path, TestPicture({40, 600}, false), false, info.format, {},
                      TaskProgress({}, [&] { return ++asked == 2; }));
        EXPECT_EQ(messageOf(answer), "File \"" + path.native().toUtf8() +
                                         "\" cannot be written: saving was cancelled.");
        EXPECT_EQ(readTextFile(path, 100).value(), "old");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path().std()), {}), 1);
    }
}

TEST(SaveImageFailureTest, AFullDiskIsNoticed) {
    const Path full(String("/dev/full"));
    for (const Pixel size : {Pixel{32, 32}, Pixel{200, 600}}) {
        const TestPicture picture = TestPicture::random(size, false, 0.0f, 1.0f);
        for (const ImageFormatInfo& info : getImageFormats()) {
            EXPECT_EQ(messageOf(saveImage(full, picture, false, info.format, {}, TaskProgress())),
                      "File \"/dev/full\" cannot be written: No space left on device.")
                << info.name.toUtf8();
        }
    }
}

}  // namespace
}  // namespace tavrin::imageio
