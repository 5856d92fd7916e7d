#pragma once

#include "samples/SceneBuilder.h"

namespace tavrin::samples {

// The things of the desk scene; a position is the middle of the foot.

/// The desk, the wall behind it and the window with its frame.
void addRoom(SceneBuilder& builder);
/// A lamp beside the viewer, outside the picture.
void addKeyLight(SceneBuilder& builder);
/// A ring of neon on the wall.
void addNeonRing(SceneBuilder& builder, const Vector& center, double radius);
/// A standing lamp with a clear bulb.
void addFilamentLamp(SceneBuilder& builder, const Vector& position);

/// A stack of three books; returns the height of its top.
double addBooks(SceneBuilder& builder, const Vector& position);
void addMug(SceneBuilder& builder, const Vector& position);
/// A vase with twigs of berries.
void addVase(SceneBuilder& builder, const Vector& position);
/// A ball of clear glass on a brass ring.
void addGlassBall(SceneBuilder& builder, const Vector& position, double radius);
/// A brushed steel canister with a copper knob.
void addCanister(SceneBuilder& builder, const Vector& position);
/// A closed notebook with a fountain pen on it.
void addNotebook(SceneBuilder& builder, const Vector& position);
/// Bearing balls and glass marbles.
void addMarbles(SceneBuilder& builder);

}  // namespace tavrin::samples
