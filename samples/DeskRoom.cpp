#include "samples/DeskProps.h"
#include "samples/Materials.h"
#include "samples/Patterns.h"

namespace tavrin::samples {
namespace {

constexpr double kWall = -4.5;  // z of the wall's face
constexpr double kLeft = -5.0;  // the window's opening
constexpr double kRight = -0.75;
constexpr double kSill = 0.35;
constexpr double kLintel = 5.0;
constexpr double kDepth = 0.5;  // of the opening

void addWall(SceneBuilder& builder) {
    const Material wall = makePatterned(plaster);
    const auto addPart = [&](double x0, double y0, double x1, double y1) {
        builder.addQuad({x0, y0, kWall}, {x1 - x0, 0, 0}, {0, y1 - y0, 0}, wall);
    };
    addPart(-14, -8, kLeft, 10);
    addPart(kRight, -8, 14, 10);
    addPart(kLeft, -8, kRight, kSill);
    addPart(kLeft, kLintel, kRight, 10);
    const double back = kWall - kDepth;
    builder.addQuad({kLeft, kSill, back}, {0, 0, kDepth}, {0, kLintel - kSill, 0}, wall);
    builder.addQuad({kRight, kSill, back}, {0, 0, kDepth}, {0, kLintel - kSill, 0}, wall);
    builder.addQuad({kLeft, kLintel, back}, {kRight - kLeft, 0, 0}, {0, 0, kDepth}, wall);
}

void addWindow(SceneBuilder& builder) {
    Material outside;
    outside.kind = Material::Kind::Opening;
    outside.outside = eveningCity;
    outside.color = Spectrum::gray(0.3);  // about its mean radiance
    outside.light = kWindowLight;
    builder.addQuad({kLeft, kSill, kWall - kDepth}, {kRight - kLeft, 0, 0}, {0, kLintel - kSill, 0},
                    outside);

    const Material paint = makeCoated({0.20, 0.20, 0.19}, 0.25);
    const Frame frame = uprightFrame(0);
    const double z = kWall - kDepth + 0.1;
    const double middleY = 0.5 * (kSill + kLintel);
    const double middleX = 0.5 * (kLeft + kRight);
    for (const double x : {kLeft, middleX, kRight}) {
        builder.addBox({x, middleY, z}, frame, {0.09, middleY, 0.08}, 0.02, paint);
    }
    for (const double y : {kSill, 2.35, kLintel}) {
        builder.addBox({middleX, y, z}, frame, {middleX - kLeft, 0.07, 0.07}, 0.02, paint);
    }
    builder.addBox({middleX, kSill - 0.04, kWall - 0.15}, frame,
                   {middleX - kLeft + 0.15, 0.06, 0.45}, 0.03, paint);
}

}  // namespace

void addRoom(SceneBuilder& builder) {
    builder.addBox({0, -0.15, 1.3}, uprightFrame(0), {9, 0.15, 4.7}, 0.04, makePatterned(walnut));
    builder.addQuad({-14, -8, -6}, {28, 0, 0}, {0, 0, 24}, makeMatt({0.05, 0.045, 0.04}));
    addWall(builder);
    addWindow(builder);
}

void addKeyLight(SceneBuilder& builder) {
    // Faces the middle of the desk.
    const Vector center{3.9, 4.6, 4.4};
    const Vector towards = normalize(Vector{0.2, 0.4, 0.2} - center);
    const Frame frame = Frame::along(towards, cross({0, 1, 0}, towards));
    const Vector u = 1.5 * frame.tangent;
    const Vector v = 1.1 * frame.bitangent;
    builder.addQuad(center - 0.5 * u - 0.5 * v, u, v,
                    makeEmitter(Spectrum{1.0, 0.77, 0.52} * 40, kKeyLight));
}

void addNeonRing(SceneBuilder& builder, const Vector& center, double radius) {
    constexpr int kPieces = 44;
    constexpr double kTube = 0.05;
    constexpr double kGap = 0.09;  // radians on each side of the electrodes, below
    std::vector<Vector> points;
    for (int i = 0; i <= kPieces; ++i) {
        const double angle = -kPi / 2 + kGap + (2 * kPi - 2 * kGap) * i / kPieces;
        points.push_back(center + radius * Vector{std::cos(angle), std::sin(angle), 0});
    }
    builder.addTube(points, kTube, makeEmitter({15, 1.5, 4.2}, kNeonLight));

    const Material electrode = makeCoated({0.02, 0.02, 0.02}, 0.2);
    for (const Vector& end : {points.front(), points.back()}) {
        const double side = end.x > center.x ? -1 : 1;
        builder.addCapsule(end, end + Vector{side * 0.05, -0.005, 0}, 1.12 * kTube, electrode);
        builder.addCapsule(end + Vector{side * 0.05, 0, 0}, {end.x, end.y, kWall}, 0.03, electrode);
    }
    for (const double angle : {0.5, 2.6}) {
        const Vector at = center + radius * Vector{std::cos(angle), std::sin(angle), 0};
        builder.addCapsule(at, {at.x, at.y, kWall}, 0.025, electrode);
    }
}

}  // namespace tavrin::samples
