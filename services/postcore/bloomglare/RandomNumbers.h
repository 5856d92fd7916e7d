#pragma once

#include <cstdint>
#include <initializer_list>

namespace tavrin::postcore {

/// A short sequence of random numbers that belongs to a key and is the same on every machine, which
/// the distributions of the standard library are not. The generator is SplitMix (G. Steele,
/// D. Lea, C. Flood, "Fast splittable pseudorandom number generators", 2014).
class RandomNumbers {
public:
    explicit RandomNumbers(std::initializer_list<int> key) {
        for (const int part : key) {
            state_ = mix(state_ + kStep + static_cast<std::uint32_t>(part));
        }
    }

    /// At least 0, less than 1.
    float next() {
        state_ += kStep;
        return static_cast<float>(mix(state_) >> 40) * 0x1p-24f;
    }
    /// At least -1, less than 1.
    float nextSigned() { return 2.0f * next() - 1.0f; }

private:
    static constexpr std::uint64_t kStep = 0x9e3779b97f4a7c15u;

    static constexpr std::uint64_t mix(std::uint64_t z) {
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    std::uint64_t state_ = 0;
};

}  // namespace tavrin::postcore
