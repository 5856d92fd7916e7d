#include "samples/Patterns.h"

#include "samples/Noise.h"

namespace tavrin::samples {
namespace {

constexpr Spectrum kHorizon{1.0, 0.42, 0.18};
constexpr Spectrum kDusk{0.34, 0.34, 0.62};
constexpr Spectrum kNight{0.12, 0.27, 0.72};

Spectrum sky(double elevation) {
    const Spectrum low = mix(kHorizon, kDusk, smoothStep(0.0, 0.13, elevation));
    return mix(low, kNight, smoothStep(0.05, 0.32, elevation));
}

// One of the colours of street and office lights.
Spectrum lampColor(double choice) {
    if (choice < 0.55) {
        return {1.0, 0.62, 0.28};
    }
    if (choice < 0.8) {
        return {1.0, 0.88, 0.70};
    }
    return choice < 0.92 ? Spectrum{0.45, 0.80, 1.0} : Spectrum{1.0, 0.16, 0.10};
}

// Round lamps scattered over the cells of a grid; x and y in tangents of angles.
Spectrum lamps(double x, double y, double spacing, double radius, double share, double radiance,
               int layer) {
    const int column = int(std::floor(x / spacing));
    const int row = int(std::floor(y / spacing));
    if (cellNoise(column, row, layer) >= share) {
        return {};
    }
    const double dx = x / spacing - column - 0.3 - 0.4 * cellNoise(column, row, layer + 1);
    const double dy = y / spacing - row - 0.3 - 0.4 * cellNoise(column, row, layer + 2);
    if (std::hypot(dx, dy) * spacing > radius) {
        return {};
    }
    const double strength = 0.4 + cellNoise(column, row, layer + 4);
    return lampColor(cellNoise(column, row, layer + 3)) * (radiance * strength);
}

}  // namespace

Material::Pattern walnut(const Vector& position) {
    constexpr double kBoardWidth = 1.3;
    const double board = std::floor(position.z / kBoardWidth);
    const double across = position.z / kBoardWidth - board;
    const double shift = 31.7 * cellNoise(int(board), 3, 7);
    const Vector grain{0.22 * position.x + shift, 3 * position.y, 1.9 * position.z + shift};
    const double warp = fractalNoise(grain, 4);
    const double rings = 0.5 + 0.5 * std::sin(26 * (warp + 0.12 * position.z));
    const double pores = fractalNoise({1.6 * position.x + shift, 9, 42 * position.z}, 3);
    const double seam = smoothStep(0.0, 0.012, std::min(across, 1 - across));
    const Spectrum dark{0.075, 0.034, 0.017};
    const Spectrum light{0.34, 0.175, 0.085};
    const double tone = 0.15 + 0.55 * rings * warp + 0.45 * pores;
    const double shade = (0.85 + 0.3 * cellNoise(int(board), 1, 1)) * (0.25 + 0.75 * seam);
    return {mix(dark, light, tone) * shade, 0.13 + 0.16 * pores + 0.3 * (1 - seam)};
}

Material::Pattern plaster(const Vector& position) {
    const double broad = fractalNoise(0.9 * position, 4);
    const double strokes = fractalNoise({2.2 * position.x, 7 * position.y, 2 * position.z}, 4);
    const double tone = 0.55 + 0.5 * broad + 0.35 * (strokes - 0.5);
    return {Spectrum{0.17, 0.20, 0.225} * tone, 0.5};
}

Material::Pattern runningGlaze(const Vector& position, double foot, double rim, const Spectrum& low,
                               const Spectrum& high) {
    const double runs =
        fractalNoise({4.5 * position.x, 0.8 * position.y, 4.5 * position.z}, 3) - 0.5;
    const double t = (position.y - foot) / (rim - foot) + 0.55 * runs;
    const double speckle = smoothStep(0.74, 0.80, fractalNoise(26 * position, 2));
    const Spectrum glaze = mix(low, high, smoothStep(0.25, 0.75, t));
    return {mix(glaze, {0.05, 0.04, 0.035}, 0.7 * speckle), 0.035 + 0.05 * speckle};
}

Material::Pattern pageEdges(const Vector& position) {
    const double leaves = valueNoise({2 * position.x, 90 * position.y, 2 * position.z});
    return {Spectrum{0.72, 0.64, 0.50} * (0.55 + 0.45 * leaves), 0.6};
}

Material::Pattern bookCloth(const Vector& position, const Spectrum& color) {
    const double weave = 0.5 + 0.25 * (std::sin(160 * position.x + 90 * position.y) +
                                       std::sin(160 * position.z - 90 * position.y));
    const double wear = fractalNoise(3 * position, 4);
    return {color * (0.75 + 0.2 * weave + 0.25 * wear), 0.42};
}

Spectrum eveningCity(const Vector& direction) {
    const double depth = std::max(-direction.z, 1e-3);
    const double x = direction.x / depth;
    const double y = direction.y / depth + 0.10;  // the horizon stands a little above the sill
    // Two rows of buildings; the far one is hazier.
    const double nearHeight = 0.055 * cellNoise(int(std::floor(x / 0.045)), 1, 5) - 0.02;
    const double farHeight = 0.02 + 0.045 * cellNoise(int(std::floor(x / 0.026)), 2, 5);
    if (y > std::max(nearHeight, farHeight)) {
        return sky(y);
    }
    const bool isNear = y <= nearHeight;
    const Spectrum walls = isNear ? Spectrum{0.012, 0.016, 0.030} : Spectrum{0.07, 0.06, 0.085};
    return walls + lamps(x, y, 0.012, 0.0028, 0.24, 5, 11) +
           (isNear ? lamps(x, y, 0.034, 0.0046, 0.5, 22, 23) : Spectrum{});
}

}  // namespace tavrin::samples
