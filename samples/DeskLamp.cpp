#include "samples/DeskProps.h"
#include "samples/Materials.h"

namespace tavrin::samples {
namespace {

constexpr Vector kUp{0, 1, 0};

// Hairpins around the axis, as in the first lamps with long carbon filaments.
void addFilament(SceneBuilder& builder, const Vector& base) {
    constexpr int kPins = 3;
    constexpr double kWire = 0.006;
    const Material glowing = makeEmitter(Spectrum{1.0, 0.56, 0.20} * 190, kFilamentLight);
    const Material support = makeMetal(kSteel, 0.2);
    const auto at = [&](double angle, double radius, double height) {
        return base + Vector{radius * std::cos(angle), height, radius * std::sin(angle)};
    };
    for (int i = 0; i < kPins; ++i) {
        const double up = 2 * kPi * (i + 0.25) / kPins;
        const double down = 2 * kPi * (i + 0.75) / kPins;
        builder.addTube({at(up, 0.09, 0.30), at(up, 0.15, 0.85)}, kWire, glowing);
        builder.addTube({at(down, 0.15, 0.85), at(down, 0.09, 0.30)}, kWire, glowing);
        builder.addTube({at(up, 0.15, 0.85), at(down, 0.15, 0.85)}, kWire, glowing);
        builder.addRod({at(up, 0.04, 0.16), at(up, 0.09, 0.30)}, 0.004, support);
    }
    builder.addRod({base, base + 0.55 * kUp}, 0.016, makeCoated({0.7, 0.7, 0.68}, 0.1));
}

}  // namespace

void addFilamentLamp(SceneBuilder& builder, const Vector& position) {
    const Material wood = makeCoated({0.16, 0.065, 0.03}, 0.12);
    const Material brass = makeMetal(kBrass, 0.16, 3);
    builder.addLathe(position, kUp,
                     {{{0.46, 0}, {0.46, 0.05}},
                      {{0.46, 0.05},
                       {0.44, 0.09},
                       {0.36, 0.12},
                       {0.26, 0.15},
                       {0.20, 0.22},
                       {0.155, 0.32},
                       {0.17, 0.42},
                       {0.195, 0.50},
                       {0.185, 0.56}},
                      {{0.185, 0.56}, {0.0, 0.56}}},
                     wood);
    builder.addLathe(position, kUp,
                     {{{0.16, 0.55}, {0.16, 0.61}},
                      {{0.16, 0.61}, {0.145, 0.63}, {0.15, 0.69}, {0.165, 0.75}},
                      {{0.165, 0.75}, {0.165, 0.85}},
                      {{0.165, 0.85}, {0.0, 0.85}}},
                     brass);
    const Vector socket = position + 0.85 * kUp;
    builder.addLathe(socket, kUp,
                     {{{0.145, 0},
                       {0.155, 0.12},
                       {0.26, 0.30},
                       {0.40, 0.55},
                       {0.44, 0.78},
                       {0.38, 1.04},
                       {0.22, 1.20},
                       {0.06, 1.25},
                       {0.03, 1.29},
                       {0.0, 1.31}}},
                     makeThinGlass({0.985, 0.965, 0.92}));
    addFilament(builder, socket + 0.06 * kUp);
}

}  // namespace tavrin::samples
