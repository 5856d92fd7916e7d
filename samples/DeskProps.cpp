#include "samples/DeskProps.h"

#include "samples/Materials.h"
#include "samples/Patterns.h"

namespace tavrin::samples {
namespace {

constexpr Vector kUp{0, 1, 0};

// A book lies on its side with its spine to the left of its frame; size is half of it.
void addBook(SceneBuilder& builder, const Vector& position, double degrees, const Vector& size,
             const Spectrum& cloth) {
    constexpr double kBoard = 0.025;
    const Frame frame = uprightFrame(degrees);
    const Material cover = makePatterned([cloth](const Vector& p) { return bookCloth(p, cloth); });
    const auto place = [&](double x, double y) { return position + x * frame.tangent + y * kUp; };
    for (const double y : {kBoard, 2 * size.y - kBoard}) {
        builder.addBox(place(0, y), frame, {size.x, kBoard, size.z}, 0.014, cover);
    }
    builder.addBox(place(-size.x + kBoard, size.y), frame, {kBoard, size.y, size.z}, 0.02, cover);
    builder.addBox(place(0, size.y), frame, {size.x - 0.05, size.y - 2 * kBoard, size.z - 0.05},
                   0.004, makePatterned(pageEdges));
}

}  // namespace

double addBooks(SceneBuilder& builder, const Vector& position) {
    struct Volume {
        Vector shift;
        double degrees;
        Vector size;
        Spectrum cloth;
    };
    const Volume volumes[] = {
        {{0.05, 0, 0}, 8, {1.02, 0.15, 0.72}, {0.055, 0.085, 0.13}},
        {{-0.05, 0, 0.02}, -5, {0.95, 0.12, 0.66}, {0.34, 0.065, 0.045}},
        {{0.0, 0, -0.02}, 15, {0.84, 0.10, 0.60}, {0.42, 0.27, 0.085}},
    };
    double height = 0;
    for (const Volume& volume : volumes) {
        addBook(builder, position + volume.shift + height * kUp, 180 + volume.degrees, volume.size,
                volume.cloth);
        height += 2 * volume.size.y;
    }
    return height;
}

void addMug(SceneBuilder& builder, const Vector& position) {
    const double foot = position.y;
    const Material glaze = makePatterned(
        [foot](const Vector& p) {
            return runningGlaze(p, foot, foot + 0.8, {0.52, 0.44, 0.33}, {0.02, 0.16, 0.18});
        },
        kCeramicMask);
    builder.addLathe(position, kUp,
                     {{{0.0, 0.0}, {0.27, 0.0}},
                      {{0.27, 0.0},
                       {0.33, 0.03},
                       {0.375, 0.14},
                       {0.385, 0.40},
                       {0.38, 0.74},
                       {0.375, 0.775},
                       {0.355, 0.785},
                       {0.335, 0.77},
                       {0.335, 0.65}},
                      {{0.335, 0.65}, {0.335, 0.10}, {0.25, 0.05}, {0.0, 0.05}}},
                     glaze);
    std::vector<Vector> handle;
    for (int i = 0; i <= 12; ++i) {
        const double angle = -1.45 + 2.9 * i / 12;
        handle.push_back(position + Vector{-0.34 - 0.26 * std::cos(angle),
                                           0.41 + 0.24 * std::sin(angle), 0.12 * std::cos(angle)});
    }
    builder.addRod(handle, 0.045, glaze);
}

void addVase(SceneBuilder& builder, const Vector& position) {
    const Material glaze = makePatterned(
        [](const Vector& p) {
            return runningGlaze(p, 0.0, 1.5, {0.045, 0.05, 0.09}, {0.55, 0.50, 0.42});
        },
        kCeramicMask);
    builder.addLathe(position, kUp,
                     {{{0.0, 0.0}, {0.26, 0.0}},
                      {{0.26, 0.0},
                       {0.32, 0.04},
                       {0.44, 0.30},
                       {0.50, 0.58},
                       {0.43, 0.88},
                       {0.24, 1.10},
                       {0.155, 1.24},
                       {0.15, 1.38},
                       {0.20, 1.50},
                       {0.215, 1.525},
                       {0.19, 1.52},
                       {0.125, 1.36},
                       {0.13, 1.15}}},
                     glaze);

    const Material bark = makeMatt({0.13, 0.075, 0.045});
    const Material berry = makeCoated({0.55, 0.025, 0.02}, 0.07);
    struct Twig {
        Vector lean;
        double height;
    };
    const Twig twigs[] = {{{-0.62, 0, 0.12}, 1.35},
                          {{0.06, 0, -0.2}, 1.65},
                          {{0.60, 0, 0.2}, 1.2},
                          {{-0.24, 0, 0.30}, 1.05}};
    for (const Twig& twig : twigs) {
        std::vector<Vector> points;
        for (int i = 0; i <= 10; ++i) {
            const double t = i / 10.0;
            const Vector sway{0.05 * std::sin(9 * t + twig.height * 7), 0,
                              0.04 * std::cos(8 * t + twig.height * 5)};
            points.push_back(position + Vector{0, 1.1, 0} + t * t * twig.lean + t * sway +
                             (0.25 + t * twig.height) * kUp);
        }
        builder.addRod(points, 0.016, bark);
        for (std::size_t i = 4; i < points.size(); ++i) {
            const double angle = 2.4 * double(i) + 5 * twig.height;  // the golden angle of leaves
            const Vector side{0.13 * std::cos(angle), 0.06, 0.13 * std::sin(angle)};
            builder.addCapsule(points[i], points[i] + side, 0.007, bark);
            builder.addSphere(points[i] + 1.25 * side, 0.048 + 0.012 * std::sin(angle), berry);
        }
    }
}

void addGlassBall(SceneBuilder& builder, const Vector& position, double radius) {
    // The ring touches the ball from below.
    constexpr double kRing = 0.30;
    constexpr double kThickness = 0.045;
    const double reach = radius + kThickness;
    const double height = kThickness + std::sqrt(reach * reach - kRing * kRing);
    builder.addSphere(position + height * kUp, radius, makeGlass({0.05, 0.018, 0.03}));
    std::vector<SceneBuilder::ProfilePoint> circle;
    for (int i = 0; i <= 8; ++i) {
        const double angle = 2 * kPi * i / 8;
        circle.push_back(
            {kRing + kThickness * std::cos(angle), kThickness + kThickness * std::sin(angle)});
    }
    builder.addLathe(position, kUp, {circle}, makeMetal(kBrass, 0.09));
}

void addCanister(SceneBuilder& builder, const Vector& position) {
    const Material steel = makeMetal(kSteel, 0.17, 5);
    builder.addLathe(position, kUp,
                     {{{0.50, 0.0}, {0.52, 0.02}},
                      {{0.52, 0.02}, {0.52, 0.98}},
                      {{0.52, 0.98}, {0.51, 1.0}, {0.495, 1.005}},
                      {{0.495, 1.005}, {0.495, 1.03}},
                      {{0.495, 1.03}, {0.53, 1.03}},
                      {{0.53, 1.03}, {0.53, 1.15}},
                      {{0.53, 1.15}, {0.52, 1.17}, {0.50, 1.18}},
                      {{0.50, 1.18}, {0.0, 1.20}}},
                     steel);
    builder.addLathe(position + 1.19 * kUp, kUp,
                     {{{0.06, 0.0},
                       {0.05, 0.06},
                       {0.06, 0.09},
                       {0.12, 0.14},
                       {0.135, 0.20},
                       {0.10, 0.26},
                       {0.0, 0.285}}},
                     makeMetal(kCopper, 0.07));
}

void addNotebook(SceneBuilder& builder, const Vector& position) {
    const Frame frame = uprightFrame(24);
    const Material leather = makePatterned([](const Vector& p) {
        return bookCloth(p, {0.030, 0.055, 0.048});
    });
    builder.addBox(position + 0.02 * kUp, frame, {0.78, 0.02, 0.55}, 0.018, leather);
    builder.addBox(position + 0.13 * kUp, frame, {0.78, 0.02, 0.55}, 0.018, leather);
    builder.addBox(position + 0.075 * kUp, frame, {0.75, 0.04, 0.52}, 0.004,
                   makePatterned(pageEdges));

    const Frame turned = uprightFrame(-14);
    const Vector axis = turned.tangent;
    const Vector start = position + Vector{-0.62, 0.15 + 0.062, 0.02};
    builder.addLathe(start, axis,
                     {{{0.0, 0.0}, {0.035, 0.01}, {0.05, 0.06}, {0.058, 0.30}, {0.06, 0.62}}},
                     makeCoated({0.012, 0.012, 0.015}, 0.03));
    builder.addLathe(start, axis, {{{0.062, 0.62}, {0.064, 0.64}, {0.064, 0.67}, {0.062, 0.69}}},
                     makeMetal(kBrass, 0.06));
    builder.addLathe(start, axis, {{{0.058, 0.69}, {0.056, 0.85}, {0.045, 1.0}, {0.038, 1.05}}},
                     makeCoated({0.012, 0.012, 0.015}, 0.03));
    builder.addLathe(start, axis, {{{0.038, 1.05}, {0.03, 1.12}, {0.004, 1.28}, {0.0, 1.29}}},
                     makeMetal(kBrass, 0.08));
}

void addMarbles(SceneBuilder& builder) {
    const Material chrome = makeMetal({0.85, 0.86, 0.88}, 0.02);
    builder.addSphere({0.42, 0.12, 1.95}, 0.12, chrome);
    builder.addSphere({-1.28, 0.10, 1.75}, 0.10, chrome);
    builder.addSphere({0.74, 0.09, 1.68}, 0.09, makeGlass({0.3, 2.2, 3.4}));
    builder.addSphere({-1.60, 0.13, 1.55}, 0.13, makeGlass({3.0, 0.9, 0.25}));
}

}  // namespace tavrin::samples
