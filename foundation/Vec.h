#pragma once

namespace tavrin {
inline namespace foundation {

/// Two floats.
struct Vec2 {
    float x = 0.0f;
    float y = 0.0f;

    friend bool operator==(const Vec2&, const Vec2&) = default;
};

/// Three floats.
struct Vec3 {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    friend bool operator==(const Vec3&, const Vec3&) = default;
};

}  // namespace foundation
}  // namespace tavrin
