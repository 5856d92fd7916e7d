#pragma once

#include "foundation/Path.h"
#include "foundation/Result.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin::postcore {

/// A named array of a trained network. Values are in row-major order, the last dimension fastest.
struct Tensor {
    std::vector<std::uint32_t> shape;  ///< the weights of a convolution: outputs, inputs, 3, 3
    std::vector<float> values;
};

/// The tensors in an archive of weights (.tza, version 2). Half-precision values become float.
/// Nothing is believed of the bytes: sizes and offsets are checked before they are used.
class TensorFile {
public:
    /// A failure is one sentence that names the file. Any thread.
    static Result<TensorFile> read(const Path& path);
    /// A failure is the end of a sentence, without a full stop.
    static Result<TensorFile> parse(std::span<const std::byte> bytes);
    /// The sentence about a file of weights that ends with the reason.
    static String makeMessage(const Path& path, const String& reason);

    /// Null when there is none of that name.
    const Tensor* find(std::string_view name) const;

private:
    std::map<std::string, Tensor, std::less<>> tensors_;
};

}  // namespace tavrin::postcore
