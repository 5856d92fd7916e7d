// The operators that work through OpenColorIO, against the library itself and against formulas.

#include "services/colorkit/ColorMappingOperator.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/AcesOperator.h"
#include "services/colorkit/operators/LutOperator.h"
#include "services/colorkit/operators/OpenColorIoViewOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"
#include "tests/support/TemporaryFolder.h"

#include <OpenColorIO/OpenColorIO.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace OCIO = OCIO_NAMESPACE;

namespace tavrin::colorkit::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ColorTransforms : public testing::Test {
protected:
    Path writeFile(const char* name, const std::string& text) const {
        const Path path = folder_ / name;
        std::ofstream(path.std()) << text;
        return path;
    }

    /// A table that warms colours and crosses the channels a little.
    Path writeCube(double warmth = 0.8) const {
        constexpr int kSize = 17;
        std::string text = "LUT_3D_SIZE " + std::to_string(kSize) + "\n";
        for (int b = 0; b < kSize; ++b) {
            for (int g = 0; g < kSize; ++g) {
                for (int r = 0; r < kSize; ++r) {
                    const double x = r / 16.0, y = g / 16.0, z = b / 16.0;
                    text += std::to_string(std::pow(x, warmth)) + " " +
                            std::to_string(0.9 * y + 0.1 * x * z) + " " +
                            std::to_string(std::pow(z, 1.3)) + "\n";
                }
            }
        }
        return writeFile("warm.cube", text);
    }

    static OperatorValues makeLut(const Path& path, float opacity = 1.0f, bool isLinear = false,
                                  bool isLogarithmic = false) {
        return OperatorValues(LutOperator::kDescriptor)
            .setEnabled(true)
            .set(LutOperator::kPath, path)
            .set(LutOperator::kOpacity, opacity)
            .set(LutOperator::kLinear, isLinear)
            .set(LutOperator::kLogarithmic, isLogarithmic);
    }

    /// What OpenColorIO makes of a colour with the table alone.
    static Reference applyFile(const Path& path, const Reference& color) {
        const auto transform = OCIO::FileTransform::Create();
        transform->setSrc(path.std().c_str());
        transform->setInterpolation(OCIO::INTERP_TETRAHEDRAL);
        const auto processor = OCIO::Config::CreateRaw()->getProcessor(transform);
        float pixel[3] = {float(color[0]), float(color[1]), float(color[2])};
        processor->getOptimizedCPUProcessor(OCIO::OPTIMIZATION_NONE)->applyRGB(pixel);
        return {pixel[0], pixel[1], pixel[2]};
    }

    /// The sentence of the error callback when these values become a mapping.
    static String getError(const OperatorValues& values) {
        String error;
        CommonColorMappingContext context;
        context.errorCallback = [&](int id, const String& text) {
            EXPECT_EQ(id, static_cast<int>(MappingError::Transform));
            error += text;
        };
        const ColorMappingOperator<0> mapping(makePipeline({values}), true, {context, {64, 48}});
        std::vector<Rgb> row = {{0.5f, 0.25f, 2.0f, 1.0f}};
        const Rgb before = row.front();
        context.displayGamma = 1.0f;
        ColorMappingOperator<0>(makePipeline({values}), true, {context, {64, 48}}).mapRow(row, {});
        EXPECT_TRUE(error.isEmpty() || haveSameBits(row.front(), before));
        return error;
    }

    const tests::TemporaryFolder folder_;
};

double encode(double x) {
    return x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1 / 2.4) - 0.055;
}

double decode(double x) {
    return x <= 0.04045 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
}

double shape(double x) {
    return (std::log2(x / 0.18) + 10) / 16.5;
}

Reference perComponent(double (*function)(double), const Reference& color) {
    return {function(color[0]), function(color[1]), function(color[2])};
}

TEST_F(ColorTransforms, LutMatchesOpenColorIoInAllItsSpaces) {
    const Path path = writeCube();
    for (const float opacity : {1.0f, 0.3f}) {
        for (const bool isLinear : {false, true}) {
            for (const bool isLogarithmic : {false, true}) {
                SCOPED_TRACE(testing::Message() << opacity << isLinear << isLogarithmic);
                std::vector<Rgb> colors;
                for (int i = 0; i < 300; ++i) {
                    colors.push_back({0.001f + 0.004f * float(i), 1.3f - 0.004f * float(i),
                                      0.3f * float(i % 7)});
                }
                // A context of 2.2, so that the table works in sRGB; its encoding is undone.
                const auto mapped =
                    mapWith({makeLut(path, opacity, isLinear, isLogarithmic)}, colors, 2.2f);
                for (std::size_t i = 0; i < colors.size(); ++i) {
                    const Reference color = toMappable(colors[i]);
                    const Reference base = isLinear ? color : perComponent(encode, color);
                    const Reference table =
                        applyFile(path, isLogarithmic ? perComponent(shape, color) : base);
                    const float components[] = {mapped[i].r, mapped[i].g, mapped[i].b};
                    for (int c = 0; c < 3; ++c) {
                        const double blended = (1 - opacity) * base[c] + opacity * table[c];
                        const double linear = isLinear ? blended : decode(blended);
                        ASSERT_NEAR(components[c], encode(linear), 3e-6) << i << " " << c;
                    }
                }
            }
        }
    }
}

TEST_F(ColorTransforms, LutReadsEveryFormat) {
    // The library's own writers make the files: x -> 0.8 x + 0.1 on every channel.
    const auto config = OCIO::Config::CreateRaw()->createEditableCopy();
    const auto target = OCIO::ColorSpace::Create();
    target->setName("target");
    const auto matrix = OCIO::MatrixTransform::Create();
    const double factors[16] = {0.8, 0, 0, 0, 0, 0.8, 0, 0, 0, 0, 0.8, 0, 0, 0, 0, 1};
    const double offsets[4] = {0.1, 0.1, 0.1, 0};
    matrix->setMatrix(factors);
    matrix->setOffset(offsets);
    target->setTransform(matrix, OCIO::COLORSPACE_DIR_FROM_REFERENCE);
    config->addColorSpace(target);
    const auto source = OCIO::ColorSpace::Create();
    source->setName("source");
    config->addColorSpace(source);

    std::vector<Path> files;
    for (const auto& [format, extension] : {
             std::pair{"iridas_cube", "cube"},
             {"resolve_cube", "cube"},
             {"flame", "3dl"},
             {"lustre", "3dl"},
             {"cinespace", "csp"},
             {"truelight", "cub"},
         }) {
        const auto baker = OCIO::Baker::Create();
        baker->setConfig(config);
        baker->setFormat(format);
        baker->setInputSpace("source");
        baker->setTargetSpace("target");
        std::ostringstream text;
        baker->bake(text);
        files.push_back(writeFile((std::string(format) + "." + extension).c_str(), text.str()));
    }
    const auto group = OCIO::GroupTransform::Create();
    group->appendTransform(matrix);
    std::ostringstream clf;
    group->write(config, "Academy/ASC Common LUT Format", clf);
    files.push_back(writeFile("matrix.clf", clf.str()));

    files.push_back(
        writeFile("two.spi1d", "Version 1\nFrom 0 1\nLength 2\nComponents 1\n{\n0.1\n0.9\n}\n"));
    std::string cube = "SPILUT 1.0\n3 3\n2 2 2\n";
    for (int i = 0; i < 8; ++i) {
        const int index[] = {i / 4, i / 2 % 2, i % 2};
        for (const int x : index) {
            cube += std::to_string(x) + " ";
        }
        for (const int x : index) {
            cube += std::to_string(0.1 + 0.8 * x) + " ";
        }
        cube += "\n";
    }
    files.push_back(writeFile("two.spi3d", cube));

    for (const Path& file : files) {
        SCOPED_TRACE(file.fileName().toUtf8());
        const OperatorValues lut = makeLut(file, 1.0f, true);
        EXPECT_EQ(getError(lut).toUtf8(), "");
        const Rgb mapped = mapWith({lut}, {{0.0f, 0.33f, 0.9f}}).front();
        EXPECT_NEAR(mapped.r, 0.1, 1e-3);
        EXPECT_NEAR(mapped.g, 0.364, 1e-3);
        EXPECT_NEAR(mapped.b, 0.82, 1e-3);
    }
}

TEST_F(ColorTransforms, UnusableLutIsOneSentenceAndAnUnchangedPicture) {
    const std::pair<Path, const char*> table[] = {
        {folder_ / "missing.cube", "cannot be used: there is no such file."},
        {folder_.path(), "cannot be used: it is not a file."},
        {writeFile("empty.cube", ""), "cannot be used: "},
        {writeFile("text.cube", "not a table\n"), "cannot be used: "},
        {writeFile("huge.cube", "LUT_3D_SIZE 100000\n0 0 0\n"), "cannot be used: "},
        {writeFile("huge.spi3d", "SPILUT 1.0\n3 3\n60000 60000 60000\n0 0 0 0 0 0\n"),
         "cannot be used: "},
        {writeFile("short.spi1d", "Version 1\nFrom 0 1\nLength 999999999\nComponents 1\n{\n0\n}\n"),
         "cannot be used: "},
        {writeFile("unknown.xyz", "1 2 3\n"), "cannot be used: "},
    };
    for (const auto& [path, reason] : table) {
        SCOPED_TRACE(path.native().toUtf8());
        const std::string error = getError(makeLut(path)).toUtf8();
        EXPECT_THAT(error, StartsWith("The LUT \"" + path.native().toUtf8() + "\""));
        EXPECT_THAT(error, HasSubstr(reason));
        EXPECT_EQ(error.find('\n'), std::string::npos);
        EXPECT_EQ(error.back(), '.');
    }
    EXPECT_EQ(getError(makeLut(Path())).toUtf8(), "") << "no table is chosen yet";
}

TEST_F(ColorTransforms, ChangedLutIsReadAgain) {
    const std::vector<Rgb> color = {{0.5f, 0.5f, 0.5f}};
    const OperatorValues lut = makeLut(writeCube(), 1.0f, true);
    const float before = mapWith({lut}, color).front().r;
    const Path path = writeCube(0.5);
    std::filesystem::last_write_time(
        path.std(), std::filesystem::last_write_time(path.std()) + std::chrono::seconds(2));
    EXPECT_NEAR(before, std::pow(0.5, 0.8), 1e-4);
    EXPECT_NEAR(mapWith({lut}, color).front().r, std::pow(0.5, 0.5), 1e-4);
}

TEST_F(ColorTransforms, AcesShowsGreysAsPublished) {
    const auto grey = [](float x) { return Rgb{x, x, x}; };
    const OperatorValues aces(AcesOperator::kDescriptor);
    const std::vector<Rgb> mapped =
        mapWith({aces}, {grey(0.0f), grey(0.18f), grey(1.0f), grey(100.0f), {1e30f, 0.0f, 0.0f}});
    // The reference transform puts 0.18 on 4.8 nits between 0.02 and 48; the surround compensation
    // of the video transform raises that to 0.9811. Diffuse white is shown as 81 % in sRGB.
    EXPECT_NEAR(mapped[1].g, std::pow((4.8 - 0.02) / (48 - 0.02), 0.9811), 5e-4);
    EXPECT_LT(mapped[0].g, 0.0005f);
    EXPECT_NEAR(mapped[2].g, decode(0.81), 0.005);
    EXPECT_NEAR(mapped[3].g, 1.0, 0.001);
    for (const Rgb& color : mapped) {
        EXPECT_LE(std::max({color.r, color.g, color.b}), 1.001f);
    }
    for (int i = 1; i < 4; ++i) {
        EXPECT_NEAR(mapped[i].r, mapped[i].g, 2e-3);
        EXPECT_NEAR(mapped[i].b, mapped[i].g, 2e-3);
    }
}

TEST_F(ColorTransforms, ViewGivesWhatTheConfigurationSays) {
    const Path path = writeFile("config.ocio", R"(ocio_profile_version: 2
roles: {default: lin_rec709, scene_linear: wide, aces_interchange: lin_rec709}
displays:
  Screen:
    - !<View> {name: Root, colorspace: root}
    - !<View> {name: Dark, colorspace: dark}
colorspaces:
  - !<ColorSpace> {name: lin_rec709}
  - !<ColorSpace>
    name: wide
    to_scene_reference: !<MatrixTransform> {matrix: [2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1]}
  - !<ColorSpace>
    name: root
    from_scene_reference: !<ExponentTransform> {value: [0.5, 0.5, 0.5, 1]}
  - !<ColorSpace>
    name: dark
    from_scene_reference: !<MatrixTransform> {matrix: [0.1, 0, 0, 0, 0, 0.1, 0, 0, 0, 0, 0.1, 0, 0, 0, 0, 1]}
)");
    OperatorValues view(OpenColorIoViewOperator::kDescriptor);
    view.set(OpenColorIoViewOperator::kConfiguration, path);
    const auto map = [&] { return mapWith({view}, {{0.25f, 0.04f, 0.81f}}, 2.2f).front(); };
    EXPECT_NEAR(map().r, 0.5, 1e-4);
    EXPECT_NEAR(map().g, 0.2, 1e-4);
    view.set(OpenColorIoViewOperator::kView, "Dark");
    EXPECT_NEAR(map().b, 0.081, 1e-4);
    view.set(OpenColorIoViewOperator::kSource, "wide");
    EXPECT_NEAR(map().b, 0.162, 1e-4);

    view.set(OpenColorIoViewOperator::kView, "Bright");
    EXPECT_THAT(getError(view).toUtf8(),
                HasSubstr("it has no view \"Bright\" of a display \"Screen\"."));
    view.set(OpenColorIoViewOperator::kConfiguration, folder_ / "none.ocio");
    EXPECT_THAT(getError(view).toUtf8(), HasSubstr("none.ocio\" cannot be used: there is no such"));
}

}  // namespace
}  // namespace tavrin::colorkit::test
