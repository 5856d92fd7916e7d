#include "base/image/Exr.h"
#include "base/image/ExrInfo.h"
#include "foundation/Scheduler.h"
#include "foundation/platform/Memory.h"
#include "tests/support/TemporaryFolder.h"

#include "TestExr.h"
#include <ImfAttribute.h>
#include <ImfDeepFrameBuffer.h>
#include <ImfDeepScanLineOutputFile.h>
#include <ImfMultiPartOutputFile.h>
#include <ImfOutputPart.h>
#include <ImfPartType.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <sstream>

namespace tavrin::image {
namespace {

const std::string kPrefix = "Cannot operate with image file \"FILE\". ";
const std::string kInvalid =
    kPrefix +
    "File stores an invalid image.\n\nIt either does not have all required and properly defined "
    "attributes (data and display windows, gamma), or its pixel data are incomplete.";
const std::string kNoBeauty =
    kPrefix +
    "File stores an image without a valid beauty element.\n\nIt is either incomplete, or not "
    "stored with a floating-point precision.";

/// The bytes of a little-endian number.
std::string number(std::uint64_t value, int bytes = 4) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i));
    }
    return text;
}

/// The bytes of a file, attribute by attribute, as no library would write them.
class RawExr {
public:
    RawExr(std::uint32_t width, std::uint32_t height, int channels, int compression)
        : height_(height), lineSize_(std::size_t{width} * std::size_t(channels) * 4) {
        std::string list;
        for (int i = 0; i < channels; ++i) {
            list += channel(i < 3 ? std::string(1, "BGR"[i]) : "X" + std::to_string(i));
        }
        const std::string box = number(0, 8) + number(width - 1) + number(height - 1);
        add("channels", "chlist", list + '\0');
        add("compression", "compression", number(compression, 1));
        add("dataWindow", "box2i", box);
        add("displayWindow", "box2i", box);
        add("lineOrder", "lineOrder", number(0, 1));
        add("pixelAspectRatio", "float", number(0x3F800000));
        add("screenWindowCenter", "v2f", number(0, 8));
        add("screenWindowWidth", "float", number(0x3F800000));
    }

    static std::string channel(const std::string& name) {
        return name + '\0' + number(2) + number(0) + number(1) + number(1);
    }
    RawExr& add(const std::string& name, const std::string& type, const std::string& value) {
        return add(name, type, value, value.size());
    }
    /// With a length that is not that of the value.
    RawExr& add(const std::string& name, const std::string& type, const std::string& value,
                std::uint64_t length) {
        bytes_ += name + '\0' + type + '\0' + number(length) + value;
        return *this;
    }
    /// With black lines, unless there are so many that they are not meant to be read.
    void write(const Path& path) const {
        std::string bytes = bytes_ + '\0';
        const std::size_t lines = height_ > 8 ? 0 : height_;
        const std::size_t start = bytes.size() + lines * 8;
        for (std::size_t y = 0; y < lines; ++y) {
            bytes += number(start + y * (8 + lineSize_), 8);
        }
        for (std::size_t y = 0; y < lines; ++y) {
            bytes += number(y) + number(lineSize_) + std::string(lineSize_, '\0');
        }
        writeBytes(path, bytes);
    }

private:
    std::uint32_t height_;
    std::size_t lineSize_;
    std::string bytes_ = number(20000630) + number(2);
};

class ExrRefusal : public testing::Test {
protected:
    tests::TemporaryFolder folder_;
    Path path_ = folder_ / "image.exr";
};

TEST_F(ExrRefusal, OfWhatIsNoImageForUs) {
    EXPECT_EQ(getRefusal(path_), "File \"FILE\" cannot be opened: No such file or directory.");
    EXPECT_EQ(getRefusal(folder_.path()), "File \"FILE\" cannot be opened: it is a folder.");
    EXPECT_EQ(getRefusal(Path()), "File \"\" cannot be opened: No such file or directory.");
    writeBytes(path_, "");
    EXPECT_EQ(getRefusal(path_), "File \"FILE\" ends before all of its data could be read.");
    writeBytes(path_, "\x89PNG\r\n\x1A\n" + std::string(100, 'x'));
    EXPECT_EQ(getRefusal(path_), kPrefix + "File is not a supported image file.");

    std::vector<Imf::Header> parts(2, Imf::Header(8, 8));
    for (Imf::Header& part : parts) {
        part.setName(&part == parts.data() ? "left" : "right");
        part.setType(Imf::SCANLINEIMAGE);
        part.channels().insert("R", Imf::Channel(Imf::HALF));
    }
    Imf::MultiPartOutputFile(path_.std().c_str(), parts.data(), 2);
    EXPECT_EQ(getRefusal(path_),
              kPrefix + "It is a multi-part file; only files with a single part can be opened.");

    parts[0].setType(Imf::DEEPSCANLINE);
    parts[0].compression() = Imf::NO_COMPRESSION;
    Imf::DeepScanLineOutputFile(path_.std().c_str(), parts[0]);
    EXPECT_EQ(getRefusal(path_),
              kPrefix +
                  "It stores deep data, several values for each pixel; only flat images can be "
                  "opened.");
}

TEST_F(ExrRefusal, OfImagesWithoutNestedWindowsOrBeauty) {
    const Imath::Box2i window{{0, 0}, {9, 9}};
    const auto refusalOf = [this](const TestExr& file) {
        file.write(path_);
        return getRefusal(path_);
    };
    EXPECT_EQ(refusalOf({.dataWindow = window, .displayWindow = {{1, 0}, {10, 9}}}), kInvalid);
    EXPECT_EQ(refusalOf({.dataWindow = window, .displayWindow = {{20, 0}, {29, 9}}}), kInvalid);
    EXPECT_EQ(refusalOf({.channels = {{"Z", Imf::FLOAT}, {"A", Imf::FLOAT}}}), kNoBeauty);
    EXPECT_EQ(refusalOf({.channels = TestExr::rgb(Imf::UINT)}), kNoBeauty);
    EXPECT_EQ(refusalOf({.channels = {{"R", Imf::HALF}, {"G", Imf::HALF}, {"B", Imf::UINT}}}),
              kNoBeauty);
    RawExr(8, 8, 0, 0).write(path_);
    EXPECT_EQ(getRefusal(path_), kPrefix + "Missing or empty channel list in header.");
    RawExr(0, 8, 3, 0).write(path_);
    EXPECT_EQ(getRefusal(path_),
              kPrefix + "File stores no pixel data.\n\nIts data window is defined empty.");
}

TEST_F(ExrRefusal, OfSubsampledChannels) {
    const auto refusalWith = [this](const TestExr::ChannelTypes& full, const char* sampled) {
        const auto add = [sampled](Imf::Header& header) {
            header.channels().insert(sampled, Imf::Channel(Imf::HALF, 37, 71));
        };
        TestExr{.channels = full, .change = add}.write(path_);
        return getRefusal(path_);
    };
    EXPECT_EQ(refusalWith({{"Y", Imf::HALF}, {"BY", Imf::HALF}}, "RY"), kNoBeauty);
    EXPECT_NE(refusalWith(TestExr::rgb(Imf::HALF), "Z").find("subsampling"), std::string::npos);
}

TEST_F(ExrRefusal, OfDamagedHeaders) {
    const auto refusalOf = [this](const RawExr& file) {
        file.write(path_);
        return getRefusal(path_);
    };
    const auto small = [] { return RawExr(4, 4, 3, 0); };
    EXPECT_EQ(refusalOf(small().add("a", "int", number(1)).add("a", "float", number(1))),
              kPrefix + "File stores duplicate attributes.");
    EXPECT_EQ(refusalOf(small().add("lineOrder", "lineOrder", number(0, 1))),
              kPrefix + "File stores duplicate attributes.");
    EXPECT_EQ(refusalOf(small().add("more", "chlist",
                                    RawExr::channel("Z") + RawExr::channel("Z") + '\0')),
              kPrefix + "File stores duplicate channels.");
    EXPECT_EQ(refusalOf(small().add("\xFF", "int", number(1)).add("\xFE", "int", number(1))),
              kPrefix + "File stores duplicate attributes.");
    EXPECT_EQ(refusalOf(small().add("note", "string", "", 2000000000)),
              kPrefix + "Its header attribute \"note\" is longer than the file.");
    EXPECT_EQ(refusalOf(small().add("note", "string", "", 0xFFFFFFFF)),
              kPrefix + "Its header attribute \"note\" is longer than the file.");
    EXPECT_EQ(refusalOf(small().add(std::string(300, 'n'), "int", number(1))),
              kPrefix + "Its header is damaged: a name does not end.");
    EXPECT_EQ(refusalOf(small().add("gamma", "unheard of", "").add("k", "floatvector", "")), "");
}

/// The library would go on reading within the value of such an attribute, or behind it.
TEST_F(ExrRefusal, OfAttributesWhoseLengthIsNotThatOfTheirType) {
    std::istringstream types(
        "box2f box2i chlist chromaticities compression deepImageState double envmap float "
        "floatvector int keycode lineOrder m33d m33f m44d m44f rational tiledesc timecode v2d v2f "
        "v2i v3d v3f v3i");
    for (std::string type; types >> type;) {
        TestExr{.change = [&type](Imf::Header& header) {
            header.insert("even", *std::unique_ptr<Imf::Attribute>(
                                      Imf::Attribute::newAttribute(type.c_str())));
        }}.write(path_);
        EXPECT_EQ(getRefusal(path_), "") << type;
        RawExr(4, 4, 3, 0).add("odd", type, number(1) + std::string(61, 'x')).write(path_);
        EXPECT_EQ(
            getRefusal(path_),
            kPrefix + "Its header attribute \"odd\" has a length that its type does not have.")
            << type;
    }
}

/// The promises of a header are checked before memory is taken for them.
TEST_F(ExrRefusal, OfMoreThanCanBeHeld) {
    constexpr int kDwab = 9;
    struct Case {
        std::uint32_t size;
        int channels;
        std::uint64_t fileSize;
        const char* message;
    };
    const std::vector<Case> cases = {
        {1000000000, 3, 1000,
         "Its header promises 1000000000 x 1000000000 pixels in 3 channels, more than a file of "
         "1000 bytes can hold."},
        {65500, 3, 1000,
         "Its header promises 65500 x 65500 pixels in 3 channels, more than a file of 1000 bytes "
         "can hold."},
        {66000, 3, 64 << 20,
         "Its header promises 66000 x 66000 pixels in 3 channels, more than an image can have."},
        {65500, 200, 64 << 20,
         "Its header promises 65500 x 65500 pixels in 200 channels, which need 3273200 MiB of "
         "memory; only "},
    };
    for (const auto& [size, channels, fileSize, message] : cases) {
        RawExr(size, size, channels, kDwab).write(path_);
        std::filesystem::resize_file(path_.std(), fileSize);
        platform::resetPeakMemory();
        const std::uint64_t before = platform::getPeakMemory();
        EXPECT_EQ(getRefusal(path_).find(kPrefix + message), 0u) << getRefusal(path_);
        EXPECT_LT(platform::getPeakMemory(), before + (16u << 20));
    }
}

TEST_F(ExrRefusal, OfEveryPrefixAndOfNoneOfManyDamagesWithACrash) {
    Scheduler::setThreadCount(1);
    for (const Imf::TileDescription& tiles : {Imf::TileDescription(0, 0), {4, 4}}) {
        TestExr{.dataWindow = {{-2, 3}, {4, 9}},
                .displayWindow = {{-2, 3}, {4, 9}},
                .compression = tiles.xSize == 0 ? Imf::ZIP_COMPRESSION : Imf::PIZ_COMPRESSION,
                .tiles = tiles}
            .write(path_);
        const std::string bytes = readBytes(path_);
        const Path damaged = folder_ / "damaged.exr";
        const auto check = [&damaged](const std::string& content) {
            writeBytes(damaged, content);
            static_cast<void>(readExrInfo(damaged));
            const Result<ChannelImage> image = ExrLoader().load(damaged);
            if (image) {
                EXPECT_TRUE(image->isValid());
            } else {
                EXPECT_TRUE(image.error().contains(damaged.native()));
                EXPECT_TRUE(image.error().endsWith(".")) << image.error().toUtf8();
            }
            return image.has_value();
        };
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            EXPECT_FALSE(check(bytes.substr(0, length))) << length;
        }
        EXPECT_TRUE(check(bytes));
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            for (const int change : {0x01, 0x80, 0xFF}) {
                std::string content = bytes;
                content[i] = static_cast<char>(content[i] ^ change);
                check(content);
            }
        }
    }
    Scheduler::setThreadCount(0);
}

TEST(ExrMessage, NamesTheFileAndEndsWithAFullStop) {
    const Path path(String("/renders/a.exr"));
    const std::vector<std::array<const char*, 2>> cases = {
        {"Broken", "Cannot operate with image file \"FILE\". Broken."},
        {"Broken.", "Cannot operate with image file \"FILE\". Broken."},
        {" \nBroken \t", "Cannot operate with image file \"FILE\".  \nBroken."},
        {"", "Cannot operate with image file \"FILE\". Unknown error has occurred."},
        {"  ", "Cannot operate with image file \"FILE\"."},
        {"'/renders/a.exr' is broken", "\"FILE\" is broken."},
        {"\n/renders/a.exr and '/renders/a.exr'", "FILE and \"FILE\"."},
        {"'/renders/b.exr' is broken",
         "Cannot operate with image file \"FILE\". '/renders/b.exr' is broken."},
        {"Error: File is not an image file. Sorry!",
         "Cannot operate with image file \"FILE\". Error: File is not a supported image file. "
         "Sorry!."},
    };
    for (const auto& [text, message] : cases) {
        EXPECT_EQ(withoutPath(makeFileMessage(text, path), path), message);
    }
    EXPECT_EQ(makeFileMessage("", Path()), "Unknown error has occurred.");
    EXPECT_EQ(makeFileMessage(" Broken ", Path()), "Broken.");
}

class ExrSaveRefusal : public ExrRefusal {
protected:
    std::string save(const ChannelImage& image, const Path& path) {
        const Result<void> result = ExrSaver().save(image, path);
        return result ? "" : withoutPath(result.error(), path);
    }
};

TEST_F(ExrSaveRefusal, LeavesWhatWasThere) {
    writeBytes(path_, "precious");
    const Bucket window{0, 0, 4, 4};
    const std::vector<String> beauty = {"R", "G", "B"};
    ChannelImage empty = makeImage(window, window, beauty);
    empty.setAttribute("dataWindow", Bucket{2, 2, 2, 5});
    struct Case {
        ChannelImage image;
        std::string message;
    };
    std::vector<Case> cases;
    cases.push_back({makeImage(window, window, {"R", "", "B"}),
                     kPrefix + "File channels must have non-empty names."});
    cases.push_back({std::move(empty),
                     "Cannot open image file \"FILE\". Invalid data window in image header."});
    for (const String& name : {String(std::u16string(300, u'n')), String(u"lone \xD800"),
                               String(std::u16string(u"a\0b", 3))}) {
        cases.push_back({makeImage(window, window, {name}),
                         kPrefix + "The channel name \"" + name.toUtf8() +
                             "\" is too long or has characters that a file cannot hold."});
    }
    for (const auto& [image, message] : cases) {
        EXPECT_EQ(save(image, path_), message);
        EXPECT_EQ(readBytes(path_), "precious");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path().std()), {}), 1);
    }
    const ChannelImage image = makeImage(window, window, beauty);
    EXPECT_EQ(save(image, folder_ / "no folder/image.exr"),
              "File \"FILE\" cannot be written: No such file or directory.");
    EXPECT_EQ(save(image, folder_.path()), "File \"FILE\" cannot be written: it is a folder.");
    EXPECT_EQ(save(image, path_), "");
    EXPECT_EQ(getRefusal(path_), "");
}

TEST_F(ExrSaveRefusal, SaysThatTheDiskIsFull) {
    const Path full(String("/dev/full"));
    if (!std::filesystem::exists(full.std())) {
        GTEST_SKIP() << "There is no device that is always full.";
    }
    for (const int size : {4, 500}) {
        const Bucket window{0, 0, size, size};
        EXPECT_EQ(save(makeImage(window, window, {"R", "G", "B"}), full),
                  "File \"FILE\" cannot be written: No space left on device.");
    }
}

}  // namespace
}  // namespace tavrin::image
