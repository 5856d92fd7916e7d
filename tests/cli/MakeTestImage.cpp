// Writes the small images that the command-line cases start from, with the OpenEXR library alone:
//
//     make-test-image KIND FILE

#include <ImfChannelList.h>
#include <ImfFloatAttribute.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfIntAttribute.h>
#include <ImfMultiPartOutputFile.h>
#include <ImfOutputFile.h>
#include <ImfOutputPart.h>
#include <ImfPartType.h>
#include <ImfStandardAttributes.h>
#include <ImfStringAttribute.h>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kWidth = 4;
constexpr int kHeight = 2;

Imf::Header makeHeader(const std::vector<std::string>& channels, int width = kWidth,
                       int height = kHeight) {
    Imf::Header header(width, height);
    header.compression() = Imf::ZIPS_COMPRESSION;
    for (const std::string& channel : channels) {
        header.channels().insert(channel, Imf::Channel(Imf::FLOAT));
    }
    return header;
}

/// Channel i has the value (i + 1) / 8 in its first pixel and 1/16 more in each following one.
class Planes {
public:
    explicit Planes(const std::vector<std::string>& channels) {
        for (const std::string& channel : channels) {
            std::vector<float>& plane = planes_[channel];
            for (int i = 0; i < kWidth * kHeight; ++i) {
                plane.push_back(float(planes_.size()) / 8.0f + float(i) / 16.0f);
            }
            frameBuffer_.insert(channel,
                                Imf::Slice(Imf::FLOAT, reinterpret_cast<char*>(plane.data()),
                                           sizeof(float), sizeof(float) * kWidth));
        }
    }

    const Imf::FrameBuffer& getFrameBuffer() const { return frameBuffer_; }

private:
    std::map<std::string, std::vector<float>> planes_;
    Imf::FrameBuffer frameBuffer_;
};

void write(const Imf::Header& header, const std::vector<std::string>& channels,
           const std::string& file) {
    const Planes planes(channels);
    Imf::OutputFile output(file.c_str(), header);
    output.setFrameBuffer(planes.getFrameBuffer());
    output.writePixels(kHeight);
}

/// A render with a light select, a data pass and names that file systems do not like.
void writeRender(const std::string& file) {
    const std::vector<std::string> channels = {"A",          "B",          "G",     "Key.B",
                                               "Key.G",      "Key.R",      "R",     "Sub/Pass.B",
                                               "Sub/Pass.G", "Sub/Pass.R", "ZDepth"};
    Imf::Header header = makeHeader(channels);
    header.insert("comment", Imf::StringAttribute("first\nsecond"));
    header.insert("tavrin.lightmix.elements", Imf::StringAttribute("\"Key\""));
    Imf::addWhiteLuminance(header, 80.0f);
    write(header, channels, file);
}

/// A grey picture with a firefly, its variance and its passes, and an element without variance.
void writeNoisy(const std::string& file) {
    const std::vector<std::string> channels = {
        "B",       "G",           "R",           "Plain.B",     "Plain.G",
        "Plain.R", "SqrBeauty.B", "SqrBeauty.G", "SqrBeauty.R", "TAVRIN_FB_WEIGHTS"};
    constexpr std::size_t kNoisyWidth = 64;
    constexpr std::size_t kNoisyHeight = 48;
    Imf::Header header = makeHeader(channels, kNoisyWidth, kNoisyHeight);
    std::vector<float> grey(kNoisyWidth * kNoisyHeight, 0.25f);
    std::vector<float> noisy = grey;
    noisy[kNoisyWidth + 1] = 5.0f;
    std::vector<float> variance(grey.size(), 0.001f);
    variance[kNoisyWidth + 1] = 20.0f;
    std::vector<float> passes(grey.size(), 8.0f);
    Imf::FrameBuffer frameBuffer;
    for (const std::string& channel : channels) {
        std::vector<float>& plane = channel.size() == 1             ? noisy
                                    : channel.starts_with("Sqr")    ? variance
                                    : channel.starts_with("TAVRIN") ? passes
                                                                    : grey;
        frameBuffer.insert(channel, Imf::Slice(Imf::FLOAT, reinterpret_cast<char*>(plane.data()),
                                               sizeof(float), sizeof(float) * kNoisyWidth));
    }
    Imf::OutputFile output(file.c_str(), header);
    output.setFrameBuffer(frameBuffer);
    output.writePixels(kNoisyHeight);
}

/// Noise that no compression makes small: saving it takes some 100 ms and 5 MB.
void writeLarge(const std::string& file) {
    constexpr std::size_t kLargeWidth = 800;
    constexpr std::size_t kLargeHeight = 600;
    std::minstd_rand generator(1);
    std::uniform_real_distribution<float> uniform(0.0f, 2.0f);
    std::map<std::string, std::vector<float>> planes;
    Imf::FrameBuffer frameBuffer;
    for (const char* channel : {"B", "G", "R"}) {
        std::vector<float>& plane = planes[channel];
        std::generate_n(std::back_inserter(plane), kLargeWidth * kLargeHeight,
                        [&] { return uniform(generator); });
        frameBuffer.insert(channel, Imf::Slice(Imf::FLOAT, reinterpret_cast<char*>(plane.data()),
                                               sizeof(float), sizeof(float) * kLargeWidth));
    }
    Imf::Header header = makeHeader({"B", "G", "R"}, kLargeWidth, kLargeHeight);
    header.compression() = Imf::NO_COMPRESSION;
    Imf::OutputFile output(file.c_str(), header);
    output.setFrameBuffer(frameBuffer);
    output.writePixels(kLargeHeight);
}

/// Layers of a renderer that names its beauty in its own way.
void writeLayers(const std::string& file) {
    const std::vector<std::string> channels = {"View.Combined.B", "View.Combined.G",
                                               "View.Combined.R", "View.Depth.Z"};
    write(makeHeader(channels), channels, file);
}

/// Two elements whose names become the same file name.
void writeClash(const std::string& file) {
    const std::vector<std::string> channels = {"B",     "G",     "R",     "a/b.B", "a/b.G",
                                               "a/b.R", "a:b.B", "a:b.G", "a:b.R"};
    write(makeHeader(channels), channels, file);
}

/// Elements whose names lead out of a folder, command a terminal, or are longer than file names.
void writeNames(const std::string& file) {
    std::vector<std::string> channels = {"B", "G", "R"};
    const std::vector<std::string> names = {"../up",
                                            "/tmp/x",
                                            "..",
                                            "a\nb",
                                            "a\x1b[2J",
                                            "c\xC2\x9B"
                                            "1m",
                                            "bad\xFF",
                                            std::string(253, 'm')};
    for (const std::string& name : names) {
        for (const char* component : {".B", ".G", ".R"}) {
            channels.push_back(name + component);
        }
    }
    write(makeHeader(channels), channels, file);
}

/// A beauty, and a description of the elements that does not end.
void writeBrokenMetadata(const std::string& file) {
    const std::vector<std::string> channels = {"B", "G", "R"};
    Imf::Header header = makeHeader(channels);
    header.insert("tavrin.elements", Imf::StringAttribute("\"open"));
    write(header, channels, file);
}

/// A fresh render whose settings cannot be read: a list and the tone mapping.
void writeBrokenSettings(const std::string& file) {
    const std::vector<std::string> channels = {"B", "G", "R"};
    Imf::Header header = makeHeader(channels);
    header.insert("tavrin.post.lightMixIntensity", Imf::StringAttribute("1,much"));
    header.insert("tavrin.cm.pipeline",
                  Imf::StringAttribute(R"({"version":1,"operators":[],"operators":[]})"));
    for (const char* name : {"tavrin.istavrinexr", "tavrin.stats.passes", "tavrin.stats.time",
                             "tavrin.stats.rayspersecond"}) {
        header.insert(name, Imf::IntAttribute(1));
    }
    header.insert("tavrin.stats.rayspersample", Imf::FloatAttribute(1.0f));
    write(header, channels, file);
}

void writeParts(const std::string& file) {
    const std::vector<std::string> channels = {"B", "G", "R"};
    const Planes planes(channels);
    std::vector<Imf::Header> headers;
    for (const char* name : {"beauty", "key"}) {
        headers.push_back(makeHeader(channels));
        headers.back().setName(name);
        headers.back().setType(Imf::SCANLINEIMAGE);
    }
    Imf::MultiPartOutputFile output(file.c_str(), headers.data(), int(headers.size()));
    for (int part = 0; part < int(headers.size()); ++part) {
        Imf::OutputPart outputPart(output, part);
        outputPart.setFrameBuffer(planes.getFrameBuffer());
        outputPart.writePixels(kHeight);
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    static const std::map<std::string, void (*)(const std::string&)> kKinds = {
        {"render", writeRender},
        {"layers", writeLayers},
        {"clash", writeClash},
        {"metadata", writeBrokenMetadata},
        {"noisy", writeNoisy},
        {"parts", writeParts},
        {"names", writeNames},
        {"large", writeLarge},
        {"settings", writeBrokenSettings},
    };
    if (argumentCount != 3 || !kKinds.contains(arguments[1])) {
        std::cerr << "A kind of image and a file are expected.\n";
        return 2;
    }
    kKinds.at(arguments[1])(arguments[2]);
    return 0;
}
