#include "services/postcore/denoise/neural/TensorFile.h"
#include "tests/services/postcore/TensorArchive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tavrin::postcore {
namespace {

using testing::ElementsAre;

TensorArchive makeArchive() {
    TensorArchive archive;
    archive.add("a", {2}, std::vector<float>{1.5f, -3e-20f});
    // 1, -2, the largest half, the smallest one above 0, -0 and the largest below the normal ones.
    archive.add("b", {1, 6, 1, 1},
                std::vector<std::uint16_t>{0x3C00, 0xC000, 0x7BFF, 0x0001, 0x8000, 0x03FF});
    return archive;
}

TEST(TensorFile, ReadsFloatsAndHalves) {
    const Result<TensorFile> file = TensorFile::parse(makeArchive().getBytes());
    ASSERT_TRUE(file) << file.error().toUtf8();
    ASSERT_NE(file->find("a"), nullptr);
    ASSERT_NE(file->find("b"), nullptr);
    EXPECT_EQ(file->find("c"), nullptr);
    EXPECT_THAT(file->find("a")->values, ElementsAre(1.5f, -3e-20f));
    EXPECT_THAT(file->find("b")->shape, ElementsAre(1u, 6u, 1u, 1u));
    EXPECT_THAT(file->find("b")->values, ElementsAre(1.0f, -2.0f, 65504.0f, std::ldexp(1.0f, -24),
                                                     -0.0f, std::ldexp(1023.0f, -24)));
}

TEST(TensorFile, RefusesWhatIsCutOffAnywhere) {
    const std::vector<std::byte> bytes = makeArchive().getBytes();
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        // A copy of exactly that size lets the address sanitizer see reads beyond it.
        const std::vector<std::byte> part(bytes.begin(), bytes.begin() + std::ptrdiff_t(size));
        EXPECT_FALSE(TensorFile::parse(part)) << size;
    }
}

TEST(TensorFile, RefusesImpossibleNumbers) {
    const std::size_t table = 12 + 2 * 4 + 6 * 2;
    const std::size_t entry = table + 4 + 2 + 1;  // after the name of the first tensor
    const struct {
        std::size_t position;
        std::vector<unsigned char> bytes;
        const char* reason;
    } cases[] = {
        {0, {0}, "it is not an archive of tensors"},
        {2, {3}, "it has an unknown version"},
        {4, {0, 0, 0, 0, 0, 0, 0, 0x80}, "its table lies outside of it"},
        {12, {0, 0, 0x80, 0x7F}, "it holds a number that is not finite"},
        {12 + 8, {0, 0x7C}, "it holds a number that is not finite"},
        {table, {255, 255, 255, 255}, "it promises too many tensors"},
        {table + 4, {255, 255}, "it ends too early"},
        {table + 6, {'b'}, "it holds two tensors of one name"},
        {entry, {0}, "it holds a tensor of an impossible shape"},
        {entry, {9}, "it holds a tensor of an impossible shape"},
        {entry + 1, {0, 0, 0, 0}, "it holds a tensor of an impossible shape"},
        {entry + 1, {255, 255, 255, 255}, "it holds a tensor of an impossible shape"},
        {entry + 1, {0, 0, 1, 0}, "a tensor in it lies outside of it"},
        {entry + 5, {'y'}, "it holds a tensor of an unknown layout"},
        {entry + 6, {'d'}, "it holds a tensor of an unknown type"},
        {entry + 7, {255, 255, 255, 255, 255, 255, 255, 255}, "a tensor in it lies outside of it"},
    };
    for (const auto& [position, replacement, reason] : cases) {
        std::vector<std::byte> bytes = makeArchive().getBytes();
        std::memcpy(bytes.data() + position, replacement.data(), replacement.size());
        const Result<TensorFile> file = TensorFile::parse(bytes);
        ASSERT_FALSE(file) << reason;
        EXPECT_EQ(file.error(), reason);
    }
}

TEST(NeuralModel, RefusesLayersThatDoNotFit) {
    const auto create = [](const std::vector<std::byte>& bytes, int inputs) {
        return NeuralModel::create(*TensorFile::parse(bytes), inputs);
    };
    EXPECT_TRUE(create(makeNetworkArchive(6), 6));
    EXPECT_EQ(create(makeNetworkArchive(6), 3).error(),
              "its layer \"enc_conv0\" does not fit to the one before");
    EXPECT_EQ(create(makeArchive().getBytes(), 3).error(),
              "it does not hold the layer \"enc_conv0\"");
}

}  // namespace
}  // namespace tavrin::postcore
