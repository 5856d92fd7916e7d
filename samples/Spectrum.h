#pragma once

#include <algorithm>
#include <cmath>

namespace tavrin::samples {

/// A linear RGB radiance, reflectance or transmittance.
struct Spectrum {
    double r = 0;
    double g = 0;
    double b = 0;

    static Spectrum gray(double value) { return {value, value, value}; }

    double max() const { return std::max({r, g, b}); }
    double mean() const { return (r + g + b) / 3; }
    bool isBlack() const { return r == 0 && g == 0 && b == 0; }

    Spectrum& operator+=(const Spectrum& other) { return *this = *this + other; }
    Spectrum& operator*=(const Spectrum& other) { return *this = *this * other; }
    Spectrum& operator*=(double s) { return *this = *this * s; }
    friend Spectrum operator+(const Spectrum& a, const Spectrum& b) {
        return {a.r + b.r, a.g + b.g, a.b + b.b};
    }
    friend Spectrum operator-(const Spectrum& a, const Spectrum& b) {
        return {a.r - b.r, a.g - b.g, a.b - b.b};
    }
    friend Spectrum operator*(const Spectrum& a, const Spectrum& b) {
        return {a.r * b.r, a.g * b.g, a.b * b.b};
    }
    friend Spectrum operator*(const Spectrum& a, double s) { return {a.r * s, a.g * s, a.b * s}; }
    friend Spectrum operator*(double s, const Spectrum& a) { return a * s; }
};

/// Between a (t = 0) and b (t = 1).
inline Spectrum mix(const Spectrum& a, const Spectrum& b, double t) {
    return a + (b - a) * t;
}

/// exp(−coefficient × distance) of each component (Beer–Lambert).
inline Spectrum absorb(const Spectrum& coefficient, double distance) {
    return {std::exp(-coefficient.r * distance), std::exp(-coefficient.g * distance),
            std::exp(-coefficient.b * distance)};
}

}  // namespace tavrin::samples
