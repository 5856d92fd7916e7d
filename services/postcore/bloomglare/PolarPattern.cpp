#include "services/postcore/bloomglare/PolarPattern.h"

#include "foundation/Function.h"
#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/Angles.h"
#include "services/postcore/bloomglare/Interpolation.h"
#include "services/postcore/bloomglare/WavelengthKernels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tavrin::postcore {
namespace {

constexpr float kDirectionStep = kPi / static_cast<float>(kPolarDirections);

void forEachRow(const PolarPattern& pattern, const Function<void(int)>& body) {
    Scheduler::defaultInstance().parallelFor(0, pattern.getHeight(), TaskPriority::Normal,
                                             [&](std::int64_t y) { body(static_cast<int>(y)); });
}

/// Averages over a window of `width` columns, at least 1 and at most row.size(), around each column
/// of a row whose ends meet. Of the columns at the window's ends, parts count.
void averageAround(std::span<float> row, double width, std::vector<double>& sums) {
    const double half = 0.5 * (width - 1.0);
    const auto reach = static_cast<std::size_t>(half) + 1;
    const double part = half - static_cast<double>(reach - 1);
    const double scale = 1.0 / width;
    // sums[i] is that of all columns before column i - reach.
    sums.resize(row.size() + 2 * reach + 1);
    double* next = sums.data();
    double sum = *next++ = 0.0;
    for (const std::span<const float> piece : {row.last(reach), row, row.first(reach)}) {
        for (const float value : piece) {
            *next++ = sum += double{value};
        }
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::size_t end = i + 2 * reach;
        const double around = mix(sums[end], sums[end + 1], part) - mix(sums[i + 1], sums[i], part);
        row[i] = static_cast<float>(std::max(around * scale, 0.0));
    }
}

/// How much of each row of the shortest wavelength's pattern is at `distance`. A longer wavelength
/// brings light here from nearer to the middle, and spreads it over an area larger by the square.
std::vector<RowWeight> getRowWeights(int distance, const std::vector<WavelengthColor>& colors,
                                     int rowCount) {
    std::vector<RowWeight> weights;
    const auto add = [&](int row, float part, const std::array<float, 3>& color) {
        if (row >= rowCount) {
            return;
        }
        while (weights.empty() || row < weights.front().row) {  // wavelengths come in order
            weights.insert(weights.begin(), {weights.empty() ? row : weights.front().row - 1, {}});
        }
        auto& channels = weights[static_cast<std::size_t>(row - weights.front().row)].channels;
        for (std::size_t c = 0; c < channels.size(); ++c) {
            channels[c] += part * color[c];
        }
    };
    for (const WavelengthColor& color : colors) {
        const float scale = kShortestWavelength / color.wavelength;
        const float place = static_cast<float>(distance) * scale;
        const int row = static_cast<int>(place);
        const float part = place - static_cast<float>(row);
        add(row + 1, scale * scale * part, color.channels);
        add(row, scale * scale * (1.0f - part), color.channels);
    }
    return weights;
}

// A few columns' sums for all channels stay in the nearest cache.
constexpr int kColumnsAtOnce = 512;

}  // namespace

PolarPattern toPolarPattern(const ApertureSpectrum& spectrum) {
    PolarPattern pattern(kPolarDirections, spectrum.getReach() + 1);
    std::vector<Vec2> directions;
    for (int i = 0; i < kPolarDirections; ++i) {
        directions.push_back(getDirection(kDirectionStep * static_cast<float>(i)));
    }
    forEachRow(pattern, [&](int y) {
        const auto distance = static_cast<float>(y);
        std::ranges::transform(directions, pattern.row(y).begin(), [&](Vec2 direction) {
            return spectrum.sample(distance * direction.x, -distance * direction.y);
        });
    });
    return pattern;
}

void blurDirections(PolarPattern& pattern, float deviation) {
    // Three averages are close to a bell; a window of n columns has the variance (n² - 1) / 12, of
    // which the columns' own part is left out.
    constexpr int kPasses = 3;
    const double columns = deviation / kDirectionStep;
    const double width = std::min(std::sqrt(12.0 / kPasses * columns * columns + 1.0),
                                  static_cast<double>(pattern.getWidth()));
    forEachRow(pattern, [&](int y) {
        std::vector<double> sums;
        for (int pass = 0; pass < kPasses; ++pass) {
            averageAround(pattern.row(y), width, sums);
        }
    });
}

PolarColorPattern spreadWavelengths(const PolarPattern& pattern,
                                    const std::vector<WavelengthColor>& colors, int reach) {
    PolarColorPattern result;
    for (PolarPattern& channel : result) {
        channel = PolarPattern(pattern.getWidth(), reach + 1);
    }
    forEachRow(result[0], [&](int y) {
        const std::vector<RowWeight> weights = getRowWeights(y, colors, pattern.getHeight());
        for (int x = 0; x < pattern.getWidth(); x += kColumnsAtOnce) {
            sumRows(pattern.row(0).data() + x, static_cast<std::size_t>(pattern.getWidth()),
                    weights.data(), weights.size(), kColumnsAtOnce,
                    {&result[0].at(x, y), &result[1].at(x, y), &result[2].at(x, y)});
        }
    });
    return result;
}

}  // namespace tavrin::postcore
