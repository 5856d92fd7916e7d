#include "samples/DeskScene.h"

#include "samples/DeskProps.h"
#include "samples/Materials.h"

namespace tavrin::samples {

Scene makeDeskScene() {
    SceneBuilder builder;
    addRoom(builder);
    addKeyLight(builder);
    addNeonRing(builder, {2.25, 1.95, -4.2}, 1.05);
    addFilamentLamp(builder, {-0.78, 0, -0.55});
    const Vector books{-2.25, 0, 0.1};
    const double top = addBooks(builder, books);
    addMug(builder, books + Vector{-0.1, top, 0.05});
    addVase(builder, {1.12, 0, -0.75});
    addGlassBall(builder, {0.12, 0, 1.2}, 0.56);
    addCanister(builder, {2.35, 0, 0.15});
    addNotebook(builder, {1.62, 0, 1.5});
    addMarbles(builder);

    Scene::Options options;
    options.surroundings = {0.030, 0.036, 0.052};
    options.withoutCaustics[kKeyLight] = true;
    options.withoutCaustics[kFilamentLight] = true;
    return builder.build(options);
}

Camera::View getDeskView() {
    return {{0.45, 2.75, 9.4}, {0.05, 1.25, 0}, 40, 0.07, 8.25};
}

}  // namespace tavrin::samples
