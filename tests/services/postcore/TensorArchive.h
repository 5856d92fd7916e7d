#pragma once

#include "services/postcore/denoise/neural/NeuralModel.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tavrin::postcore {

/// Writes the bytes of archives of tensors.
class TensorArchive {
public:
    template <class T>
    static void append(std::vector<std::byte>& bytes, T value) {
        const auto* first = reinterpret_cast<const std::byte*>(&value);
        bytes.insert(bytes.end(), first, first + sizeof(T));
    }

    static void append(std::vector<std::byte>& bytes, const std::string& text) {
        for (const char character : text) {
            append(bytes, character);
        }
    }

    /// Values of type T are floats, or halves as their bits.
    template <class T>
    void add(const std::string& name, const std::vector<std::uint32_t>& shape,
             const std::vector<T>& values) {
        append(table_, static_cast<std::uint16_t>(name.size()));
        append(table_, name);
        append(table_, static_cast<std::uint8_t>(shape.size()));
        for (const std::uint32_t size : shape) {
            append(table_, size);
        }
        append(table_, std::string(shape.size() == 1 ? "x" : "oihw"));
        append(table_, sizeof(T) == 2 ? 'h' : 'f');
        append(table_, static_cast<std::uint64_t>(kHeaderSize + data_.size()));
        for (const T value : values) {
            append(data_, value);
        }
        ++count_;
    }

    std::vector<std::byte> getBytes() const {
        std::vector<std::byte> bytes;
        append(bytes, std::uint16_t{0x41D7});
        append(bytes, std::uint8_t{2});
        append(bytes, std::uint8_t{0});
        append(bytes, static_cast<std::uint64_t>(kHeaderSize + data_.size()));
        bytes.insert(bytes.end(), data_.begin(), data_.end());
        append(bytes, count_);
        bytes.insert(bytes.end(), table_.begin(), table_.end());
        return bytes;
    }

private:
    static constexpr std::size_t kHeaderSize = 12;

    std::vector<std::byte> data_;
    std::vector<std::byte> table_;
    std::uint32_t count_ = 0;
};

/// An archive of a small network with random weights.
inline std::vector<std::byte> makeNetworkArchive(std::uint32_t inputs) {
    const struct {
        const char* name;
        std::uint32_t inputs;
        std::uint32_t outputs;
    } layers[] = {
        {"enc_conv0", inputs, 16}, {"enc_conv1", 16, 16},           {"enc_conv2", 16, 32},
        {"enc_conv3", 32, 16},     {"enc_conv4", 16, 16},           {"enc_conv5a", 16, 32},
        {"enc_conv5b", 32, 16},    {"dec_conv4a", 32, 16},          {"dec_conv4b", 16, 32},
        {"dec_conv3a", 64, 16},    {"dec_conv3b", 16, 16},          {"dec_conv2a", 32, 16},
        {"dec_conv2b", 16, 16},    {"dec_conv1a", 16 + inputs, 16}, {"dec_conv1b", 16, 16},
        {"dec_conv0", 16, 3},
    };
    std::mt19937 random(3);
    std::normal_distribution<float> normal;
    TensorArchive archive;
    for (const auto& layer : layers) {
        std::vector<float> weights(std::size_t{9} * layer.inputs * layer.outputs);
        for (float& weight : weights) {
            weight = 0.4f * normal(random) / std::sqrt(static_cast<float>(layer.inputs));
        }
        std::vector<float> bias(layer.outputs);
        for (float& value : bias) {
            value = 0.1f * normal(random);
        }
        archive.add(std::string(layer.name) + ".weight", {layer.outputs, layer.inputs, 3, 3},
                    weights);
        archive.add(std::string(layer.name) + ".bias", {layer.outputs}, bias);
    }
    return archive.getBytes();
}

}  // namespace tavrin::postcore
