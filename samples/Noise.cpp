#include "samples/Noise.h"

#include <cstdint>

namespace tavrin::samples {

double cellNoise(int x, int y, int z) {
    std::uint32_t bits = std::uint32_t(x) * 0x8da6b343u ^ std::uint32_t(y) * 0xd8163841u ^
                         std::uint32_t(z) * 0xcb1ab31fu;
    bits = (bits ^ (bits >> 16)) * 0x7feb352du;
    bits = (bits ^ (bits >> 15)) * 0x846ca68bu;
    return double(bits ^ (bits >> 16)) / 4294967296.0;
}

double valueNoise(const Vector& position) {
    const Vector floor{std::floor(position.x), std::floor(position.y), std::floor(position.z)};
    const Vector part = position - floor;
    const auto smooth = [](double t) { return t * t * (3 - 2 * t); };
    const double weights[3] = {smooth(part.x), smooth(part.y), smooth(part.z)};
    double sum = 0;
    for (int corner = 0; corner < 8; ++corner) {
        const int dx = corner & 1;
        const int dy = corner >> 1 & 1;
        const int dz = corner >> 2;
        const double weight = (dx != 0 ? weights[0] : 1 - weights[0]) *
                              (dy != 0 ? weights[1] : 1 - weights[1]) *
                              (dz != 0 ? weights[2] : 1 - weights[2]);
        sum += weight * cellNoise(int(floor.x) + dx, int(floor.y) + dy, int(floor.z) + dz);
    }
    return sum;
}

double fractalNoise(const Vector& position, int octaves) {
    double sum = 0;
    double weight = 0.5;
    double total = 0;
    Vector p = position;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * valueNoise(p);
        total += weight;
        weight *= 0.5;
        p = 2 * p + Vector{17.3, 5.1, 9.7};
    }
    return sum / total;
}

double smoothStep(double from, double to, double value) {
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

}  // namespace tavrin::samples
