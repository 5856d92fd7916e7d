#pragma once

namespace tavrin::postcore {

/// Dark lines that run from the rim of the aperture inwards; they give lights a halo.
struct ApertureGrating {
    bool isEnabled = false;
    float ratio = 0.5f;      ///< part of the rim that lines cover, 0 to 1
    float length = 0.1f;     ///< of the lines, in diameters of the aperture, 0 to 1
    float zoom = 1.0f;       ///< magnification of the lines, 1 to 10
    float direction = 0.0f;  ///< of the lines against that to the middle, in degrees, -90 to 90
    float strength = 1.0f;   ///< light that a line takes away, 0 to 1

    friend bool operator==(const ApertureGrating&, const ApertureGrating&) = default;
};

/// Something opaque that reaches into the aperture from its side.
struct ApertureOcclusion {
    bool isEnabled = false;
    bool isSymmetric = false;  ///< from both sides
    float ratio = 0.25f;       ///< part of the diameter that is covered, 0 to 1
    float rotation = 0.0f;     ///< where it comes from, in degrees, 0 to 360
    float arc = 0.5f;          ///< of its edge: 0 is straight, 1 as round as the aperture

    friend bool operator==(const ApertureOcclusion&, const ApertureOcclusion&) = default;
};

/// The numbers never change.
enum class ScratchesPattern : int { Regular = 0, Random = 1 };

/// Scratches in the lens.
struct ApertureScratches {
    bool isEnabled = false;
    ScratchesPattern pattern = ScratchesPattern::Random;
    bool haveCommonOrigin = false;  ///< start in one point, at equal angles
    int clustering = 1;             ///< scratches that lie together in the random pattern, 1 to 16
    float density = 0.2f;           ///< part of the aperture that they cover, 0 to 1
    float length = 0.5f;            ///< in diameters of the aperture, 0 to 1
    int seed = 0;                   ///< selects one of many random arrangements, 0 to 9999
    float slopeVariation = 0.2f;    ///< 0 is parallel, 1 in all directions
    float widthVariation = 0.5f;    ///< 0 is all as wide, 1 of any width
    float zoom = 1.0f;              ///< magnification of the pattern, 1 to 10
    float rotation = 0.0f;          ///< of the pattern, in degrees, 0 to 360
    float strength = 1.0f;          ///< light that a scratch takes away, 0 to 1

    friend bool operator==(const ApertureScratches&, const ApertureScratches&) = default;
};

/// The numbers never change.
enum class DustPattern : int { Squares = 0, Hexagons = 1 };

/// Particles of dust on the lens.
struct ApertureDust {
    bool isEnabled = false;
    DustPattern pattern = DustPattern::Squares;
    float density = 0.2f;            ///< part of the aperture that they cover, 0 to 1
    float radiusVariation = 0.5f;    ///< 0 is all as large, 1 of any size
    float positionVariation = 1.0f;  ///< 0 is on the pattern's grid, 1 anywhere
    float zoom = 1.0f;               ///< magnification of the pattern, 1 to 10
    float rotation = 0.0f;           ///< of the pattern, in degrees, 0 to 360
    float strength = 1.0f;           ///< light that a particle takes away, 0 to 1

    friend bool operator==(const ApertureDust&, const ApertureDust&) = default;
};

/// The aperture that glare comes from, as the user shapes it. A plain value. Rotations run
/// counterclockwise on the screen.
struct ApertureParams {
    bool isCustom = false;       ///< when not, nothing else here counts
    bool isBladed = true;        ///< a regular polygon in place of a circle
    int bladeCount = 6;          ///< 3 to 16
    float bladeRotation = 0.0f;  ///< of the polygon, in degrees, 0 to 360
    ApertureGrating grating;
    ApertureOcclusion occlusion;
    ApertureScratches scratches;
    ApertureDust dust;

    friend bool operator==(const ApertureParams&, const ApertureParams&) = default;
};

}  // namespace tavrin::postcore
