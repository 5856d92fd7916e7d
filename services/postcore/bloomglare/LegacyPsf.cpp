#include "services/postcore/bloomglare/LegacyPsf.h"

#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/GlareProperties.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

/// Every weight from getWeights(x, y), which answers those of the channels at x to the right of the
/// light and y below it.
template <class GetWeights>
PointSpreadFunction makePsf(int radius, const GetWeights& getWeights) {
    PointSpreadFunction psf;
    psf.radius = std::max(radius, 0);
    const auto size = static_cast<std::size_t>(psf.getSize());
    psf.planes.fill(std::vector<float>(size * size));
    Scheduler::defaultInstance().parallelFor(
        0, psf.getSize(), TaskPriority::Normal, [&](std::int64_t row) {
            const int y = static_cast<int>(row);
            for (int x = 0; x < psf.getSize(); ++x) {
                const auto weights = getWeights(x - psf.radius, y - psf.radius);
                for (std::size_t channel = 0; channel < psf.planes.size(); ++channel) {
                    psf.planes[channel][psf.index(x, y)] = weights[channel];
                }
            }
        });
    std::ranges::for_each(psf.planes, normalize);
    return psf;
}

/// Rays from the light, and how their brightness falls beside and along them.
class Rays {
public:
    Rays(const GlareParams& glare, int radius) : radius_(static_cast<float>(std::max(radius, 1))) {
        for (int i = 0; i < glare.streakCount; ++i) {
            const double angle = kTurn * (static_cast<double>(glare.rotation) / 360.0 +
                                          static_cast<double>(i) / glare.streakCount);
            directions_.push_back(
                {static_cast<float>(std::cos(angle)), static_cast<float>(-std::sin(angle))});
        }
        // Never thinner than pixels can show.
        width_ = 0.6f + 0.05f * glare.streakBlur * radius_;
        for (std::size_t channel = 0; channel < reaches_.size(); ++channel) {
            const double phase =
                static_cast<double>(glare.colorShift) + static_cast<double>(channel) / 3.0;
            const auto wave = static_cast<float>(std::cos(kTurn * phase));
            reaches_[channel] = 0.25f * radius_ * (1.0f + 0.5f * glare.colorIntensity * wave);
        }
    }

    std::array<float, 3> getWeights(float x, float y) const {
        float brightness = 0.0f;
        for (const Direction& direction : directions_) {
            const float along = x * direction.x + y * direction.y;
            const float across = (x * direction.y - y * direction.x) / width_;
            if (along > 0.0f && std::abs(across) < kWidths) {
                brightness += std::exp(-0.5f * across * across);
            }
        }
        const float distance = std::hypot(x, y);
        std::array<float, 3> weights = {};
        if (brightness > 0.0f && distance < radius_) {
            // Ends smoothly at the radius.
            const float part = distance / radius_;
            const float fading = 1.0f - part * part;
            for (std::size_t channel = 0; channel < weights.size(); ++channel) {
                const float reach = reaches_[channel];
                // A bright inner part on a long outer one.
                weights[channel] =
                    brightness * fading *
                    (std::exp(-distance / reach) + std::exp(-4.0f * distance / reach));
            }
        }
        return weights;
    }

private:
    struct Direction {
        float x;
        float y;
    };

    static constexpr float kWidths = 4.0f;  // beyond which nothing of a Gaussian is left

    const float radius_;
    std::vector<Direction> directions_;
    float width_ = 1.0f;
    std::array<float, 3> reaches_ = {};
};

}  // namespace

PointSpreadFunction makeLegacyBloomPsf(int radius) {
    struct Gaussian {
        float part;       // of the light
        float deviation;  // in radii
    };
    static constexpr Gaussian kGaussians[] = {{0.5f, 0.03f}, {0.3f, 0.1f}, {0.2f, 0.25f}};
    const float scale = 1.0f / static_cast<float>(std::max(radius, 1));
    return makePsf(radius, [scale](int x, int y) {
        const float distance = scale * std::hypot(static_cast<float>(x), static_cast<float>(y));
        float weight = 0.0f;
        for (const auto& [part, deviation] : kGaussians) {
            const float relative = distance / deviation;
            weight += part / (deviation * deviation) * std::exp(-0.5f * relative * relative);
        }
        // Ends smoothly at the radius, in a circle.
        const float rest = std::max(1.0f - distance * distance, 0.0f);
        weight *= rest * rest;
        return std::array{weight, weight, weight};
    });
}

PointSpreadFunction makeLegacyGlarePsf(const GlareParams& glare, int radius) {
    const Rays rays(limitToRanges(glare), radius);
    return makePsf(radius, [&rays](int x, int y) {
        return rays.getWeights(static_cast<float>(x), static_cast<float>(y));
    });
}

}  // namespace tavrin::postcore
