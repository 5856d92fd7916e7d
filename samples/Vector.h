#pragma once

#include <algorithm>
#include <cmath>

namespace tavrin::samples {

inline constexpr double kPi = 3.14159265358979323846;

/// A position, direction or normal. Lengths are decimetres.
struct Vector {
    double x = 0;
    double y = 0;
    double z = 0;

    double operator[](int axis) const { return axis == 0 ? x : axis == 1 ? y : z; }

    friend Vector operator+(const Vector& a, const Vector& b) {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend Vector operator-(const Vector& a, const Vector& b) {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend Vector operator-(const Vector& a) { return {-a.x, -a.y, -a.z}; }
    friend Vector operator*(const Vector& a, double s) { return {a.x * s, a.y * s, a.z * s}; }
    friend Vector operator*(double s, const Vector& a) { return a * s; }
    friend Vector operator/(const Vector& a, double s) { return a * (1 / s); }
};

inline double dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vector cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double lengthSquared(const Vector& a) {
    return dot(a, a);
}
inline double length(const Vector& a) {
    return std::sqrt(lengthSquared(a));
}
inline Vector normalize(const Vector& a) {
    return a / length(a);
}

/// A point of the unit square, or of a plane.
struct Point2 {
    double x = 0;
    double y = 0;
};

/// Three right-angled unit directions; local vectors have z along the normal.
struct Frame {
    Vector tangent{1, 0, 0};
    Vector bitangent{0, 1, 0};
    Vector normal{0, 0, 1};

    /// Any frame around a unit normal (Duff et al. 2017, "Building an orthonormal basis,
    /// revisited").
    static Frame around(const Vector& normal) {
        const double sign = std::copysign(1.0, normal.z);
        const double a = -1 / (sign + normal.z);
        const double b = normal.x * normal.y * a;
        return {{1 + sign * normal.x * normal.x * a, sign * b, -sign * normal.x},
                {b, sign + normal.y * normal.y * a, -normal.y},
                normal};
    }
    /// The frame whose tangent is nearest to a direction that is not parallel to the normal.
    static Frame along(const Vector& normal, const Vector& direction) {
        const Vector bitangent = normalize(cross(normal, direction));
        return {cross(bitangent, normal), bitangent, normal};
    }

    Vector toLocal(const Vector& v) const {
        return {dot(v, tangent), dot(v, bitangent), dot(v, normal)};
    }
    Vector toWorld(const Vector& v) const { return v.x * tangent + v.y * bitangent + v.z * normal; }
};

struct Ray {
    Vector origin;
    Vector direction;  ///< unit length

    Vector at(double distance) const { return origin + distance * direction; }
};

}  // namespace tavrin::samples
