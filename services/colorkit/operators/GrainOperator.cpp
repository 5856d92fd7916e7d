#include "services/colorkit/operators/GrainOperator.h"

// The order matters: this source is included again for each instruction set.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "services/colorkit/operators/GrainOperator.cpp"
#include <hwy/foreach_target.h>
#include "services/colorkit/simd/Math-inl.h"
#include "services/colorkit/simd/PixelLoop-inl.h"
// clang-format on

HWY_BEFORE_NAMESPACE();
namespace tavrin::colorkit::HWY_NAMESPACE {

/// Spreads each bit of 32 over all (Wellons 2018, "Prospecting for Hash Functions", with constants
/// that were found in this way later).
template <class V>
HWY_INLINE V mixBits(V bits) {
    const hn::DFromV<V> du;
    bits = hn::Xor(bits, hn::ShiftRight<16>(bits));
    bits = hn::Mul(bits, hn::Set(du, 0x21F0AAADu));
    bits = hn::Xor(bits, hn::ShiftRight<15>(bits));
    bits = hn::Mul(bits, hn::Set(du, 0x735A2D97u));
    return hn::Xor(bits, hn::ShiftRight<15>(bits));
}

/// Noise of the whole positions x in a row: the sum of the four bytes of a hash, nearly normal,
/// with a mean of 0 and a standard deviation of 1.
template <class D, class VI>
HWY_INLINE hn::Vec<D> computeNoise(D d, VI x, std::uint32_t rowHash) {
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    constexpr float kMean = 4 * 127.5f;
    constexpr float kInverseDeviation = 1.0f / 147.80054f;  // sqrt(4 (256² - 1) / 12)
    const auto bits = mixBits(hn::Add(hn::BitCast(du, x), hn::Set(du, rowHash)));
    const auto mask = hn::Set(du, 0x00FF00FFu);
    const auto pairs = hn::Add(hn::And(bits, mask), hn::And(hn::ShiftRight<8>(bits), mask));
    const auto sum = hn::Add(hn::ShiftRight<16>(pairs), hn::And(pairs, hn::Set(du, 0xFFFFu)));
    return hn::Mul(hn::Sub(hn::ConvertTo(d, hn::BitCast(di, sum)), hn::Set(d, kMean)),
                   hn::Set(d, kInverseDeviation));
}

/// Noise between whole positions: bilinear, divided by the root of the squared weights' sum.
template <class D, class V>
HWY_INLINE V interpolateNoise(D d, V x, const GrainOperator::Row& row) {
    const hn::RebindToSigned<D> di;
    const V one = hn::Set(d, 1.0f);
    const V cell = hn::Floor(x);
    const V right = hn::Sub(x, cell);
    const V left = hn::Sub(one, right);
    const auto first = hn::ConvertTo(di, cell);
    const auto second = hn::Add(first, hn::Set(di, 1));
    const V top = hn::Set(d, row.upperWeight);
    const V bottom = hn::Set(d, row.lowerWeight);
    const V leftNoise = hn::MulAdd(computeNoise(d, first, row.upperHash), top,
                                   hn::Mul(computeNoise(d, first, row.lowerHash), bottom));
    const V rightNoise = hn::MulAdd(computeNoise(d, second, row.upperHash), top,
                                    hn::Mul(computeNoise(d, second, row.lowerHash), bottom));
    const V noise = hn::MulAdd(leftNoise, left, hn::Mul(rightNoise, right));
    const V squaredWeights = hn::MulAdd(left, left, hn::Mul(right, right));
    return hn::Div(noise, hn::Sqrt(hn::Mul(squaredWeights, hn::Set(d, row.squaredWeights))));
}

void addGrain(float amplitude, float inverseSize, const GrainOperator::Row& row,
              PixelBlock& block) {
    const PixelColumns columns(block);
    forEachIndexedColor(block, [&](auto d, std::size_t i, auto& r, auto& g, auto& b) HWY_ATTR {
        const auto x = hn::Load(hn::RebindToSigned<decltype(d)>(), columns.x + i);
        const auto noise =
            inverseSize == 1.0f
                ? computeNoise(d, x, row.upperHash)
                : interpolateNoise(d, hn::Mul(hn::ConvertTo(d, x), hn::Set(d, inverseSize)), row);
        const auto one = hn::Set(d, 1.0f);
        const auto luminance = hn::Max(computeLuminance(d, r, g, b), hn::Zero(d));
        const auto fade = hn::MulAdd(luminance, hn::Set(d, 4.0f), one);
        const auto factor = hn::Add(one, hn::Div(hn::Mul(noise, hn::Set(d, amplitude)), fade));
        multiplyColor(d, factor, r, g, b);
    });
}

}  // namespace tavrin::colorkit::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#include "services/colorkit/OperatorValues.h"

#include <cmath>

namespace tavrin::colorkit {
namespace {

constexpr const ParameterDeclaration* kParameters[] = {&GrainOperator::kAmount,
                                                       &GrainOperator::kSize};

HWY_EXPORT(addGrain);

std::uint32_t mixBits(std::uint32_t bits) {
    bits ^= bits >> 16;
    bits *= 0x21F0AAADu;
    bits ^= bits >> 15;
    bits *= 0x735A2D97u;
    return bits ^ (bits >> 15);
}

GrainOperator::Row makeRow(int y, double size, int seed) {
    const double cell = std::floor(y / size);
    const auto hash = [seed](double row) {
        return mixBits(static_cast<std::uint32_t>(static_cast<std::int64_t>(row)) +
                       mixBits(static_cast<std::uint32_t>(seed)));
    };
    const double lower = y / size - cell;
    const double upper = 1.0 - lower;
    return {hash(cell), hash(cell + 1.0), static_cast<float>(upper), static_cast<float>(lower),
            static_cast<float>(upper * upper + lower * lower)};
}

void appendStages(const OperatorValues& values, const MappingEnvironment& environment,
                  StageList& stages) {
    constexpr float kDeviation = 0.25f;
    const float amount = values.get(GrainOperator::kAmount);
    if (amount != 0.0f) {
        stages.add([amplitude = kDeviation * amount, size = values.get(GrainOperator::kSize),
                    seed = environment.context.noiseSeed](PixelBlock& block) {
            HWY_DYNAMIC_DISPATCH(addGrain)
            (amplitude, 1.0f / size, makeRow(block.position.y, size, seed), block);
        });
    }
}

}  // namespace

constinit const ColorMappingOperatorDescriptor GrainOperator::kDescriptor{
    .typeName = "Grain",
    .displayName = "Grain",
    .category = OperatorCategory::FinalLook,
    .description = "Adds the fine noise of photographic film.",
    .isEnabledByDefault = true,
    .parameters = kParameters,
    .appendStages = appendStages,
};

}  // namespace tavrin::colorkit
#endif
