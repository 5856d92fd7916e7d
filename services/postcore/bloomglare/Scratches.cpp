#include "services/postcore/bloomglare/Scratches.h"

#include "services/postcore/bloomglare/Angles.h"
#include "services/postcore/bloomglare/RandomNumbers.h"

#include <algorithm>
#include <cmath>

namespace tavrin::postcore {
namespace {

// In radii of the aperture, without zoom: so thin that the light they scatter reaches the end of
// the glare.
constexpr float kWidth = 0.008f;
constexpr float kTaper = 0.7f;        // of scratches that are not regular
constexpr float kLargestBend = 0.1f;  // in lengths
constexpr float kClusterPitch = 3.0f * kWidth;
// Random scratches cover everything when there are infinitely many of them.
constexpr float kLargestRandomDensity = 0.98f;
// Part of the density at which a regular pattern is dense along its scratches, too.
constexpr float kGap = 0.25f;

/// Draws the scratches of one pattern, without its zoom and rotation.
class ScratchDrawer {
public:
    explicit ScratchDrawer(const ApertureScratches& scratches)
        : scratches_(scratches),
          isRandom_(scratches.pattern == ScratchesPattern::Random),
          length_(std::max(2.0f * scratches.length, kWidth)) {}

    ApertureMarks draw() {
        if (scratches_.haveCommonOrigin) {
            addRays();
        } else if (isRandom_) {
            addScattered();
        } else {
            addRows();
        }
        return std::move(result_);
    }

private:
    /// Rows of scratches in the manner of bricks, with gaps according to the density.
    void addRows() {
        const float step = length_ * (1.0f + kGap * (1.0f - scratches_.density));
        const float crowding =
            std::lerp(scratches_.density, getRandomCrowding(), scratches_.slopeVariation);
        const float pitch = kWidth * length_ / (crowding * step);
        const int rows = static_cast<int>(std::ceil((1.0f + 0.5f * length_) / pitch));
        const int columns = static_cast<int>(std::ceil((1.0f + 0.5f * length_) / step)) + 1;
        for (int j = -rows; j <= rows; ++j) {
            const float shift = j % 2 != 0 ? 0.5f : 0.0f;
            for (int i = -columns; i <= columns; ++i) {
                RandomNumbers random{scratches_.seed, 0, i, j};
                const float x = step * (static_cast<float>(i) + shift);
                add({x, pitch * static_cast<float>(j)}, makeSlope(random), random);
            }
        }
    }

    /// Clusters of parallel scratches anywhere.
    void addScattered() {
        const float side = 2.0f + length_;
        const int count = countRandom(side * side);
        for (int i = 0; i < count; ++i) {
            RandomNumbers shared{scratches_.seed, 1, i / scratches_.clustering};
            const Vec2 middle{0.5f * side * shared.nextSigned(), 0.5f * side * shared.nextSigned()};
            const float angle = makeSlope(shared);
            RandomNumbers own{scratches_.seed, 2, i};
            add(placeInCluster(middle, angle, i, own), angle, own);
        }
    }

    /// Clusters of parallel scratches around the origin, at equal angles. Regular ones start there.
    void addRays() {
        const int count = countRandom(kPi);
        const int clusters = (count + getClustering() - 1) / getClustering();
        for (int i = 0; i < count; ++i) {
            const int cluster = i / getClustering();
            RandomNumbers shared{scratches_.seed, 3, cluster};
            const float angle = kTurn * static_cast<float>(cluster) / static_cast<float>(clusters) +
                                makeSlope(shared);
            const float free = std::max(1.0f - length_, 0.0f);
            const float start = isRandom_ ? free * shared.next() : 0.0f;
            const Vec2 direction = getDirection(angle);
            const float distance = start + 0.5f * length_;
            RandomNumbers own{scratches_.seed, 4, i};
            add(placeInCluster({distance * direction.x, distance * direction.y}, angle, i, own),
                angle, own);
        }
    }

    int getClustering() const { return isRandom_ ? scratches_.clustering : 1; }

    /// How many times the area scattered scratches have that cover the density's part of it: a
    /// point is free of n of them with the probability (1 - a)^n, a being the part that one covers.
    float getRandomCrowding() const {
        return -std::log1p(-std::min(scratches_.density, kLargestRandomDensity));
    }

    int countRandom(float area) const {
        const float taper = isRandom_ ? 1.0f - kTaper / 3.0f : 1.0f;
        const float covered = kWidth * (taper * length_ + 0.25f * kPi * kWidth);
        return static_cast<int>(std::ceil(getRandomCrowding() * area / covered));
    }

    float makeSlope(RandomNumbers& random) const {
        return 0.5f * kPi * scratches_.slopeVariation * random.nextSigned();
    }

    /// Beside the others of its cluster.
    Vec2 placeInCluster(Vec2 middle, float angle, int index, RandomNumbers& random) const {
        const int clustering = getClustering();
        if (clustering == 1) {
            return middle;
        }
        const float place =
            static_cast<float>(index % clustering) - 0.5f * static_cast<float>(clustering - 1);
        const float across = kClusterPitch * (place + 0.4f * random.nextSigned());
        const float along = 0.2f * length_ * random.nextSigned();
        const Vec2 axis = getDirection(angle);
        return {middle.x + along * axis.x - across * axis.y,
                middle.y + along * axis.y + across * axis.x};
    }

    void add(Vec2 center, float angle, RandomNumbers& random) {
        const float width = kWidth * (1.0f + scratches_.widthVariation * random.nextSigned());
        const float bend = kLargestBend * length_ * scratches_.slopeVariation * random.nextSigned();
        result_.marks.push_back({.center = center,
                                 .direction = getDirection(angle),
                                 .halfLength = 0.5f * length_,
                                 .halfWidth = 0.5f * width,
                                 .bend = isRandom_ ? bend : 0.0f,
                                 .taper = isRandom_ ? kTaper : 0.0f});
    }

    const ApertureScratches& scratches_;
    const bool isRandom_;
    const float length_;  // in radii of the aperture
    ApertureMarks result_;
};

}  // namespace

ApertureMarks makeScratches(const ApertureScratches& scratches) {
    ApertureMarks result;
    if (scratches.density > 0.0f) {
        result = ScratchDrawer(scratches).draw();
    }
    result.coverAll = scratches.density >= 1.0f;
    result.transform(toRadians(scratches.rotation), scratches.zoom);
    return result;
}

}  // namespace tavrin::postcore
