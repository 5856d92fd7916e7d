#include "foundation/Scheduler.h"
#include "services/postcore/denoise/AutoExposure.h"
#include "services/postcore/denoise/neural/TiledNetwork.h"
#include "services/postcore/denoise/neural/TransferFunction.h"
#include "tests/services/postcore/TensorArchive.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <thread>

namespace tavrin::postcore {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

void forEachInstructionSet(const std::function<void()>& body) {
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        body();
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

double computeCurve(double y) {
    const double value = y <= 1.57945760e-6 ? 1412.83765 * y
                         : y <= 3.22087631e-2
                             ? 1.64593172 * std::pow(y, 0.431384981) - 2.94139609e-3
                             : 0.192653254 * std::log(y + 6.26026094e-3) + 0.998620152;
    return 0.318967155 * value;
}

TEST(TransferFunction, IsTheCurveAndItsInverse) {
    forEachInstructionSet([] {
        std::vector<Rgb> colors;
        for (double light = 1e-9; light < 7e4; light *= 1.07) {
            const auto value = static_cast<float>(light);
            colors.push_back({value, 2.0f * value, value / 2.0f, kNan});
        }
        std::vector<Rgb> encoded(colors.size());
        encodeColors(colors, 0.5f, encoded);
        std::vector<Rgb> decoded(colors.size());
        decodeColors(encoded, 0.5f, decoded);
        for (std::size_t i = 0; i < colors.size(); ++i) {
            for (const auto component : {&Rgb::r, &Rgb::g, &Rgb::b}) {
                const double light = std::min(0.5 * double(colors[i].*component), 65504.0);
                const double expected = computeCurve(light);
                EXPECT_NEAR(encoded[i].*component, expected, 1e-6 * (expected + 1e-2)) << light;
                // Floats leave 6e-8 of 1, which the logarithm makes more.
                EXPECT_NEAR(decoded[i].*component, 2.0 * light, 1e-5 * light + 1e-9);
            }
        }
    });
    Rgb known{0.18f, 1.0f, 65504.0f, 0.0f};
    encodeColors({&known, 1}, 1.0f, {&known, 1});
    EXPECT_NEAR(known.r, 0.2153f, 1e-4f);
    EXPECT_NEAR(known.g, 0.3189f, 1e-4f);
    EXPECT_NEAR(known.b, 1.0f, 1e-5f);
}

TEST(TransferFunction, TakesAnything) {
    const float values[] = {kNan, kInfinity, -kInfinity, -1.0f, 3e38f, 0.0f, 1e-45f};
    forEachInstructionSet([&] {
        for (const float value : values) {
            const bool isLight = value == 3e38f;
            Rgb pixel{value, value, value, value};
            encodeColors({&pixel, 1}, 1e3f, {&pixel, 1});
            EXPECT_NEAR(pixel.g, isLight ? 1.0f : 0.0f, 1e-5f) << value;
            pixel = {value, value, value, value};
            decodeColors({&pixel, 1}, 1e-38f, {&pixel, 1});
            EXPECT_TRUE(std::isfinite(pixel.r) && pixel.r >= 0.0f) << value;
        }
    });
}

TEST(AutoExposure, MakesTheLogarithmicMeanMiddleGrey) {
    Scheduler& scheduler = Scheduler::defaultInstance();
    BitmapImpl<Rgb> image(40, 32);
    const auto fill = [&image](int x0, int x1, float value) {
        for (int y = 0; y < image.getHeight(); ++y) {
            std::fill_n(image.row(y).begin() + x0, x1 - x0, Rgb{value, value, value, 1});
        }
    };
    fill(0, 40, 0.0f);
    EXPECT_EQ(computeAutoExposure(scheduler, image), 1.0f);
    // Three columns of bins, 13, 13 and 14 pixels wide; the black one does not count.
    fill(0, 13, 4.0f);
    fill(13, 26, 1.0f);
    EXPECT_NEAR(computeAutoExposure(scheduler, image), 0.18f / 2.0f, 1e-5f);
    fill(26, 40, kInfinity);
    EXPECT_NEAR(computeAutoExposure(scheduler, image), 0.18f / 2.0f, 1e-5f);
    fill(0, 40, 3e38f);
    EXPECT_TRUE(std::isnormal(computeAutoExposure(scheduler, image)));
}

RC_GTEST_PROP(TilePlan, CoversThePictureOnceWithEnoughAround, ()) {
    const Pixel size{*rc::gen::inRange(1, 3000), *rc::gen::inRange(1, 3000)};
    const int overlap = 16 * *rc::gen::inRange(0, 7);
    const std::int64_t most = *rc::gen::inRange(70'000, 2'000'000);
    const TilePlan plan = planTiles(size, 16, overlap, most);
    const auto [width, height] = plan.tileSize;
    RC_ASSERT(width % 16 == 0 && height % 16 == 0);
    RC_ASSERT(std::int64_t{width} * height <= most);
    std::int64_t covered = 0;
    for (const Tile& tile : plan.tiles) {
        const Bucket area{tile.origin.x, tile.origin.y, tile.origin.x + width,
                          tile.origin.y + height};
        const auto isFar = [overlap](int areaBegin, int begin, int end, int areaEnd, int whole) {
            const bool endsTogether = end == whole && areaEnd == (whole + 15) / 16 * 16;
            return (areaBegin == 0 || begin - areaBegin >= overlap) &&
                   (endsTogether || areaEnd - end >= overlap);
        };
        RC_ASSERT(tile.origin.x % 16 == 0 && tile.origin.y % 16 == 0);
        RC_ASSERT(!tile.result.isEmpty() && area.contains(tile.result));
        RC_ASSERT(isFar(area.x0, tile.result.x0, tile.result.x1, area.x1, size.x));
        RC_ASSERT(isFar(area.y0, tile.result.y0, tile.result.y1, area.y1, size.y));
        covered += std::int64_t{tile.result.width()} * tile.result.height();
        for (const Tile& other : plan.tiles) {
            RC_ASSERT(&other == &tile || other.result.x0 >= tile.result.x1 ||
                      other.result.x1 <= tile.result.x0 || other.result.y0 >= tile.result.y1 ||
                      other.result.y1 <= tile.result.y0);
        }
    }
    RC_ASSERT(covered == std::int64_t{size.x} * size.y);
}

/// A picture with any number of channels.
struct Planes {
    Pixel size;
    std::vector<std::vector<double>> channels;

    double get(std::size_t channel, int x, int y) const {
        const bool isInside = x >= 0 && y >= 0 && x < size.x && y < size.y;
        return isInside ? channels[channel][static_cast<std::size_t>(y * size.x + x)] : 0.0;
    }
};

Planes makePlanes(std::size_t channels, Pixel size,
                  const std::function<double(std::size_t, int, int)>& value) {
    Planes planes{size, {}};
    for (std::size_t channel = 0; channel < channels; ++channel) {
        auto& plane = planes.channels.emplace_back();
        for (int y = 0; y < size.y; ++y) {
            for (int x = 0; x < size.x; ++x) {
                plane.push_back(value(channel, x, y));
            }
        }
    }
    return planes;
}

Planes convolve(const Planes& input, const NetworkLayer& layer) {
    return makePlanes(std::size_t(layer.outputs), input.size, [&](std::size_t o, int x, int y) {
        double sum = layer.bias[o];
        for (std::size_t i = 0; i < input.channels.size(); ++i) {
            for (int k = 0; k < 9; ++k) {
                const float weight =
                    layer
                        .weights[(o * input.channels.size() + i) * 9 + static_cast<std::size_t>(k)];
                sum += double(weight) * input.get(i, x + k % 3 - 1, y + k / 3 - 1);
            }
        }
        return std::max(sum, 0.0);
    });
}

/// The network as it is defined, in double precision.
Planes computeNetwork(const Planes& input, const std::vector<NetworkLayer>& layers) {
    std::vector<Planes> skips = {input};
    Planes current = input;
    for (const NetworkLayer& layer : layers) {
        if (layer.skip != kNoSkip) {
            const Planes& skip = skips[static_cast<std::size_t>(layer.skip)];
            std::ranges::copy(skip.channels, std::back_inserter(current.channels));
        }
        const Planes result = convolve(current, layer);
        const Pixel size = result.size;
        if (layer.end == LayerEnd::Pool) {
            current = makePlanes(
                result.channels.size(), {size.x / 2, size.y / 2}, [&](std::size_t c, int x, int y) {
                    return std::max({result.get(c, 2 * x, 2 * y), result.get(c, 2 * x + 1, 2 * y),
                                     result.get(c, 2 * x, 2 * y + 1),
                                     result.get(c, 2 * x + 1, 2 * y + 1)});
                });
            skips.push_back(current);
        } else if (layer.end == LayerEnd::Upsample) {
            current = makePlanes(
                result.channels.size(), {size.x * 2, size.y * 2},
                [&](std::size_t c, int x, int y) { return result.get(c, x / 2, y / 2); });
        } else {
            current = result;
        }
    }
    return current;
}

NeuralModel makeModel(int inputs) {
    const auto bytes = makeNetworkArchive(static_cast<std::uint32_t>(inputs));
    return *NeuralModel::create(*TensorFile::parse(bytes), inputs);
}

/// The network's result for a picture of its inputs.
Planes runNetwork(const NeuralModel& model, const Planes& input, std::int64_t mostTilePixels) {
    Planes result = makePlanes(3, input.size, [](std::size_t, int, int) { return -1.0; });
    WorkMonitor monitor;
    TiledNetwork network(*getNetworkCreator());
    const auto run = [&] {
        network.run(
            model, input.size, mostTilePixels,
            [&](const Tile& tile, const TiledNetwork::Channels& channels) {
                const auto block = static_cast<std::size_t>(channels.blockSize);
                const std::size_t blocks = (input.channels.size() + block - 1) / block;
                for (std::size_t c = 0; c < blocks * block; ++c) {
                    for (int y = 0; y < channels.size.y; ++y) {
                        float* row = channels.getRow(static_cast<int>(c / block), y) + c % block;
                        for (int x = 0; x < channels.size.x; ++x) {
                            row[std::size_t(x) * block] =
                                c >= input.channels.size()
                                    ? 0.0f
                                    : static_cast<float>(
                                          input.get(c, tile.origin.x + x, tile.origin.y + y));
                        }
                    }
                }
            },
            [&](const Tile& tile, const TiledNetwork::Channels& channels) {
                for (int y = tile.result.y0; y < tile.result.y1; ++y) {
                    const float* row = channels.getRow(0, y - tile.origin.y);
                    for (int x = tile.result.x0; x < tile.result.x1; ++x) {
                        for (std::size_t c = 0; c < 3; ++c) {
                            result.channels[c][static_cast<std::size_t>(y * input.size.x + x)] =
                                row[std::size_t(x - tile.origin.x) *
                                        std::size_t(channels.blockSize) +
                                    c];
                        }
                    }
                }
            },
            monitor);
    };
    std::jthread(run).join();  // the library's threads end with the one that called it
    EXPECT_EQ(monitor.getFraction(), 1.0f);
    return result;
}

Planes makeInput(int inputs, Pixel size) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> value(0.0f, 1.0f);
    return makePlanes(std::size_t(inputs), size,
                      [&](std::size_t, int, int) { return double(value(random)); });
}

TEST(TiledNetwork, ComputesTheNetworkAsDefined) {
    for (const int inputs : {3, 9}) {
        const NeuralModel model = makeModel(inputs);
        const Planes input = makeInput(inputs, {48, 32});
        const Planes expected = computeNetwork(input, model.getLayers());
        const Planes result = runNetwork(model, input, TiledNetwork::kMostTilePixels);
        double most = 0.0;
        for (std::size_t c = 0; c < 3; ++c) {
            for (std::size_t i = 0; i < expected.channels[c].size(); ++i) {
                ASSERT_NEAR(result.channels[c][i], expected.channels[c][i], 1e-4) << i;
                most = std::max(most, expected.channels[c][i]);
            }
        }
        EXPECT_GT(most, 0.1) << "The network says nothing.";
    }
}

TEST(TiledNetwork, ComputesTilesAsItDoesTheWhole) {
    const NeuralModel model = makeModel(3);
    const Planes input = makeInput(3, {453, 301});
    const Planes whole = runNetwork(model, input, TiledNetwork::kMostTilePixels);
    const Planes tiled = runNetwork(model, input, 60'000);
    for (std::size_t c = 0; c < 3; ++c) {
        for (std::size_t i = 0; i < whole.channels[c].size(); ++i) {
            // Sums are in another order at the edges of tiles.
            ASSERT_NEAR(whole.channels[c][i], tiled.channels[c][i], 1e-6) << c << ", " << i;
        }
    }
}

}  // namespace
}  // namespace tavrin::postcore
