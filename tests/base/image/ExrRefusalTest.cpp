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
#include <limits>
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
std::string number(std::uint32_t value) {
    std::string text;
    for (int shift = 0; shift < 32; shift += 8) {
        text += static_cast<char>(value >> shift);
    }
    return text;
}

/// The bytes of an attribute, also of one that no library would write.
std::string attribute(const std::string& name, const std::string& type, const std::string& value) {
    return name + '\0' + type + '\0' + number(std::uint32_t(value.size())) + value;
}

/// Changes both windows in the header of a file.
void setBoxes(std::string& file, const std::string& box) {
    for (const std::string name : {"dataWindow", "displayWindow"}) {
        const std::string field = attribute(name, "box2i", box);
        file.replace(file.find(name + '\0'), field.size(), field);
    }
}

/// Changes the promise of the header of a file.
void setSize(std::string& file, std::uint32_t size) {
    setBoxes(file, number(0) + number(0) + number(size - 1) + number(size - 1));
}

class ExrRefusal : public testing::Test {
protected:
    std::string getBytes(const TestExr& file) const {
        file.write(path_);
        return readBytes(path_);
    }
    std::string refusalOf(const std::string& bytes) const {
        writeBytes(path_, bytes);
        return getRefusal(path_);
    }
    std::string refusalOf(const TestExr& file) const { return refusalOf(getBytes(file)); }
    /// Of a small file with these bytes before all its attributes.
    std::string refusalWith(const std::string& attributes) const {
        return refusalOf(getBytes({}).insert(8, attributes));
    }

    tests::TemporaryFolder folder_;
    Path path_ = folder_ / "image.exr";
};

TEST_F(ExrRefusal, OfWhatIsNoImageForUs) {
    EXPECT_EQ(getRefusal(path_), "File \"FILE\" cannot be opened: No such file or directory.");
    EXPECT_EQ(getRefusal(folder_.path()), "File \"FILE\" cannot be opened: it is a folder.");
    EXPECT_EQ(getRefusal(Path()), "File \"\" cannot be opened: No such file or directory.");
    EXPECT_EQ(refusalOf("\x89PNG\r\n\x1A\n" + std::string(100, 'x')),
              kPrefix + "File is not a supported image file.");

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
    EXPECT_EQ(getRefusal(path_), kPrefix +
                                     "It stores deep data, several values for each pixel; only "
                                     "flat images can be opened.");
}

TEST_F(ExrRefusal, OfImagesWithoutNestedWindowsOrBeauty) {
    const auto sample = [](const char* channel) {
        return [channel](Imf::Header& header) {
            header.channels().insert(channel, Imf::Channel(Imf::HALF, 37, 71));
        };
    };
    EXPECT_EQ(refusalOf(TestExr{.displayWindow = {{1, 0}, {37, 70}}}), kInvalid);
    EXPECT_EQ(refusalOf(TestExr{.channels = {{"Z", Imf::FLOAT}, {"A", Imf::FLOAT}}}), kNoBeauty);
    EXPECT_EQ(refusalOf(TestExr{.channels = TestExr::rgb(Imf::UINT)}), kNoBeauty);
    EXPECT_EQ(refusalOf(TestExr{.channels = {{"Y", Imf::HALF}}, .change = sample("RY")}),
              kNoBeauty);
    EXPECT_NE(refusalOf(TestExr{.change = sample("Z")}).find("subsampling"), std::string::npos);
    std::string empty = getBytes({});
    setSize(empty, 0);
    EXPECT_EQ(refusalOf(empty),
              kPrefix + "File stores no pixel data.\n\nIts data window is defined empty.");
}

TEST_F(ExrRefusal, OfDamagedHeaders) {
    const std::string twice = kPrefix + "File stores duplicate attributes.";
    const std::string integer = attribute("\xFE", "int", number(1));
    const std::string channel =
        "Z" + std::string(1, '\0') + number(2) + number(0) + number(1) + number(1);
    EXPECT_EQ(refusalWith(attribute("lineOrder", "lineOrder", std::string(1, '\0'))), twice);
    EXPECT_EQ(refusalWith(integer + attribute("\xFE", "float", number(1))), twice);
    EXPECT_EQ(refusalWith(integer + attribute("\xFF", "int", number(1))), twice) << "as text";
    EXPECT_EQ(refusalWith(attribute("more", "chlist", channel + channel + '\0')),
              kPrefix + "File stores duplicate channels.");
    EXPECT_EQ(refusalWith(attribute(std::string(300, 'n'), "int", number(1))),
              kPrefix + "Its header is damaged: a name does not end.");
    EXPECT_EQ(refusalWith("note" + std::string(1, '\0') + "string" + '\0' + number(0xFFFFFFFF)),
              kPrefix + "Its header attribute \"note\" is longer than the file.");
    EXPECT_EQ(refusalWith(attribute("note", "string", std::string(32 << 20, 'x'))),
              kPrefix + "Its header has more than 32 MiB.");
}

/// Where sums and products of the numbers in a header overflow.
TEST_F(ExrRefusal, OfExtremeNumbers) {
    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
    const std::string window = kPrefix + "Invalid display window in image header.";
    const std::array<std::int32_t, 4> boxes[] = {
        {kLeast, kLeast, kMost, kMost}, {kMost, kMost, kMost, kMost},
        {kLeast, 0, kLeast, 0},         {0, 0, kMost, 0},
        {0, kLeast, 0, kMost},          {kLeast / 2, 0, 0, 0}};
    for (const auto& box : boxes) {
        std::string value;
        for (const std::int32_t coordinate : box) {
            value += number(std::uint32_t(coordinate));
        }
        std::string bytes = getBytes({});
        setBoxes(bytes, value);
        EXPECT_EQ(refusalOf(bytes), window) << testing::PrintToString(box);
    }
    const std::string large = "are far larger than the image.";
    for (const auto& [size, message] :
         {std::pair{0u, std::string("Invalid tile size in image header.")},
          {1u << 31, "Invalid tile size in image header."},
          {(1u << 31) - 1, "Its tiles of 2147483647 x 2147483647 pixels " + large},
          {8192u, "Its tiles of 8192 x 8192 pixels " + large}}) {
        std::string bytes = getBytes({.tiles = {8, 8}});
        const std::string start = std::string("tiledesc") + '\0' + number(9);
        bytes.replace(bytes.find(start) + start.size(), 8, number(size) + number(size));
        EXPECT_EQ(refusalOf(bytes), kPrefix + message) << size;
    }
}

/// The library would go on reading within the value of such an attribute, or behind it.
TEST_F(ExrRefusal, OfAttributesWhoseLengthIsNotThatOfTheirType) {
    std::istringstream types(
        "box2f box2i chlist chromaticities compression deepImageState double envmap float "
        "floatvector int keycode lineOrder m33d m33f m44d m44f rational tiledesc timecode v2d v2f "
        "v2i v3d v3f v3i");
    for (std::string type; types >> type;) {
        const auto even = [&type](Imf::Header& header) {
            using Attribute = std::unique_ptr<Imf::Attribute>;
            header.insert("even", *Attribute(Imf::Attribute::newAttribute(type.c_str())));
        };
        EXPECT_EQ(refusalOf(TestExr{.change = even}), "") << type;
        EXPECT_EQ(
            refusalWith(attribute("odd", type, number(1) + std::string(61, 'x'))),
            kPrefix + "Its header attribute \"odd\" has a length that its type does not have.")
            << type;
    }
}

/// The promises of a header are checked before memory is taken for them.
TEST_F(ExrRefusal, OfMoreThanCanBeHeld) {
    const struct {
        std::uint32_t size;
        int channels;
        std::uint64_t fileSize;
        const char* message;
    } cases[] = {
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
        TestExr file{.compression = Imf::DWAB_COMPRESSION};
        for (int i = 3; i < channels; ++i) {
            file.channels.emplace_back("Layer" + std::to_string(i), Imf::HALF);
        }
        std::string bytes = getBytes(file);
        setSize(bytes, size);
        bytes.resize(fileSize);
        writeBytes(path_, bytes);
        platform::resetPeakMemory();
        const std::uint64_t before = platform::getPeakMemory();
        EXPECT_EQ(getRefusal(path_).find(kPrefix + message), 0u) << getRefusal(path_);
        EXPECT_LT(platform::getPeakMemory(), before + (16u << 20));
    }
}

TEST_F(ExrRefusal, OfEveryPrefixAndOfNoneOfManyDamagesWithACrash) {
    Scheduler::setThreadCount(1);
    for (const Imf::TileDescription& tiles : {Imf::TileDescription(0, 0), {4, 4}}) {
        const std::string bytes =
            getBytes({.dataWindow = {{-2, 3}, {4, 9}},
                      .displayWindow = {{-2, 3}, {4, 9}},
                      .compression = tiles.xSize == 0 ? Imf::ZIP_COMPRESSION : Imf::PIZ_COMPRESSION,
                      .tiles = tiles});
        const auto check = [this](const std::string& content) {
            const std::string refusal = refusalOf(content);
            static_cast<void>(readExrInfo(path_));
            if (!refusal.empty()) {
                EXPECT_NE(refusal.find("\"FILE\""), std::string::npos) << refusal;
                EXPECT_EQ(refusal.back(), '.') << refusal;
            }
            return refusal.empty();
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
    const std::array<const char*, 2> cases[] = {
        {"Broken", "Cannot operate with image file \"FILE\". Broken."},
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
    EXPECT_EQ(makeFileMessage(" Broken ", Path()), "Broken.");
}

std::string saveRefusal(const ChannelImage& image, const Path& path) {
    const Result<void> result = ExrSaver().save(image, path);
    return result ? "" : withoutPath(result.error(), path);
}

TEST_F(ExrRefusal, ToSaveLeavesWhatWasThere) {
    writeBytes(path_, "precious");
    const Bucket window{0, 0, 4, 4};
    ChannelImage empty = makeImage(window, window, {"R", "G", "B"});
    empty.setAttribute("dataWindow", Bucket{2, 2, 2, 5});
    std::vector<std::pair<ChannelImage, std::string>> cases;
    cases.emplace_back(makeImage(window, window, {"R", "", "B"}),
                       kPrefix + "File channels must have non-empty names.");
    cases.emplace_back(std::move(empty),
                       "Cannot open image file \"FILE\". Invalid data window in image header.");
    for (const String& name : {String(std::u16string(300, u'n')), String(u"lone \xD800"),
                               String(std::u16string(u"a\0b", 3))}) {
        cases.emplace_back(makeImage(window, window, {name}),
                           kPrefix + "The channel name \"" + name.toUtf8() +
                               "\" is too long or has characters that a file cannot hold.");
    }
    for (const auto& [image, message] : cases) {
        EXPECT_EQ(saveRefusal(image, path_), message);
        EXPECT_EQ(readBytes(path_), "precious");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path().std()), {}), 1);
    }
    const ChannelImage image = makeImage(window, window, {"R", "G", "B"});
    EXPECT_EQ(saveRefusal(image, folder_ / "no folder/image.exr"),
              "File \"FILE\" cannot be written: No such file or directory.");
    EXPECT_EQ(saveRefusal(image, folder_.path()),
              "File \"FILE\" cannot be written: it is a folder.");
}

TEST(ExrSave, SaysThatTheDiskIsFull) {
    for (const int size : {4, 500}) {
        const Bucket window{0, 0, size, size};
        EXPECT_EQ(
            saveRefusal(makeImage(window, window, {"R", "G", "B"}), Path(String("/dev/full"))),
            "File \"FILE\" cannot be written: No space left on device.");
    }
}

}  // namespace
}  // namespace tavrin::image
