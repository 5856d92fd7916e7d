#include "services/postcore/denoise/neural/TensorFile.h"

#include "foundation/BinaryFileInputStream.h"
#include "foundation/Exception.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>

namespace tavrin::postcore {
namespace {

static_assert(std::endian::native == std::endian::little, "The file's numbers are little-endian.");

constexpr std::uint16_t kMagic = 0x41D7;
constexpr std::uint8_t kVersion = 2;
// The largest network has 16 MB, two tensors for each of 18 convolutions.
constexpr std::uint64_t kLargestFile = std::uint64_t{256} << 20;
constexpr std::uint32_t kMostTensors = 4096;
constexpr std::size_t kMostDimensions = 4;

/// What is wrong with the file, as the end of a sentence.
class FormatError {
public:
    explicit FormatError(const char* reason) : reason_(reason) {}
    const char* getReason() const { return reason_; }

private:
    const char* reason_;
};

/// Takes numbers one after the other.
class ByteReader {
public:
    ByteReader(std::span<const std::byte> bytes, std::uint64_t offset) : bytes_(bytes) {
        if (offset > bytes.size()) {
            throw FormatError("its table lies outside of it");
        }
        bytes_ = bytes.subspan(static_cast<std::size_t>(offset));
    }

    template <class T>
    T take() {
        T value;
        std::memcpy(&value, takeBytes(sizeof(T)).data(), sizeof(T));
        return value;
    }

    std::span<const std::byte> takeBytes(std::size_t count) {
        if (count > bytes_.size()) {
            throw FormatError("it ends too early");
        }
        const auto taken = bytes_.first(count);
        bytes_ = bytes_.subspan(count);
        return taken;
    }

    std::string takeText(std::size_t length) {
        const auto taken = takeBytes(length);
        return {reinterpret_cast<const char*>(taken.data()), taken.size()};
    }

private:
    std::span<const std::byte> bytes_;
};

float convertHalf(std::uint16_t half) {
    const float sign = (half & 0x8000u) != 0 ? -1.0f : 1.0f;
    const int exponent = (half >> 10) & 0x1F;
    const int mantissa = half & 0x3FF;
    if (exponent == 31) {
        throw FormatError("it holds a number that is not finite");
    }
    const int significand = exponent == 0 ? mantissa : mantissa + 1024;
    return sign * std::ldexp(static_cast<float>(significand), (exponent == 0 ? 1 : exponent) - 25);
}

/// The values of a tensor of which there are `count`, each of `size` bytes.
std::span<const std::byte> findValues(std::span<const std::byte> file, std::uint64_t offset,
                                      std::uint64_t count, std::size_t size) {
    if (offset > file.size() || count > (file.size() - offset) / size) {
        throw FormatError("a tensor in it lies outside of it");
    }
    return file.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(count) * size);
}

std::vector<float> readValues(std::span<const std::byte> file, std::uint64_t offset, char type,
                              std::uint64_t count) {
    std::vector<float> values;
    if (type == 'h') {
        ByteReader reader(findValues(file, offset, count, sizeof(std::uint16_t)), 0);
        values.resize(static_cast<std::size_t>(count));
        for (float& value : values) {
            value = convertHalf(reader.take<std::uint16_t>());
        }
    } else if (type == 'f') {
        ByteReader reader(findValues(file, offset, count, sizeof(float)), 0);
        values.resize(static_cast<std::size_t>(count));
        for (float& value : values) {
            value = reader.take<float>();
            if (!std::isfinite(value)) {
                throw FormatError("it holds a number that is not finite");
            }
        }
    } else {
        throw FormatError("it holds a tensor of an unknown type");
    }
    return values;
}

std::pair<std::string, Tensor> readTensor(std::span<const std::byte> file, ByteReader& table) {
    const auto nameLength = table.take<std::uint16_t>();
    std::pair<std::string, Tensor> result(table.takeText(nameLength), {});
    Tensor& tensor = result.second;

    const auto dimensions = table.take<std::uint8_t>();
    if (dimensions == 0 || dimensions > kMostDimensions) {
        throw FormatError("it holds a tensor of an impossible shape");
    }
    std::uint64_t count = 1;
    for (int i = 0; i < dimensions; ++i) {
        const auto size = table.take<std::uint32_t>();
        // Cannot overflow: the product before is below 2^28.
        count *= size;
        if (size == 0 || count > kLargestFile) {
            throw FormatError("it holds a tensor of an impossible shape");
        }
        tensor.shape.push_back(size);
    }
    const std::string layout = table.takeText(dimensions);
    if (layout != "x" && layout != "oihw") {
        throw FormatError("it holds a tensor of an unknown layout");
    }
    const char type = static_cast<char>(table.take<std::uint8_t>());
    const auto offset = table.take<std::uint64_t>();
    tensor.values = readValues(file, offset, type, count);
    return result;
}

}  // namespace

Result<TensorFile> TensorFile::parse(std::span<const std::byte> bytes) {
    try {
        ByteReader header(bytes, 0);
        if (header.take<std::uint16_t>() != kMagic) {
            throw FormatError("it is not an archive of tensors");
        }
        if (header.take<std::uint8_t>() != kVersion) {
            throw FormatError("it has an unknown version");
        }
        header.take<std::uint8_t>();  // the minor version adds nothing that matters here

        ByteReader table(bytes, header.take<std::uint64_t>());
        const auto count = table.take<std::uint32_t>();
        if (count > kMostTensors) {
            throw FormatError("it promises too many tensors");
        }
        TensorFile result;
        // Tensors may share bytes, so that the size of the file does not limit what they take.
        std::uint64_t values = 0;
        for (std::uint32_t i = 0; i < count; ++i) {
            auto tensor = readTensor(bytes, table);
            values += tensor.second.values.size();
            if (values > bytes.size()) {
                throw FormatError("its tensors overlap");
            }
            if (!result.tensors_.insert(std::move(tensor)).second) {
                throw FormatError("it holds two tensors of one name");
            }
        }
        return result;
    } catch (const FormatError& error) {
        return Failure(error.getReason());
    }
}

Result<TensorFile> TensorFile::read(const Path& path) {
    try {
        BinaryFileInputStream stream(path);
        if (stream.getSize() > kLargestFile) {
            return Failure(makeMessage(path, "the file is too large"));
        }
        std::vector<std::byte> bytes(static_cast<std::size_t>(stream.getSize()));
        stream.read(bytes.data(), bytes.size());
        Result<TensorFile> result = parse(bytes);
        if (!result) {
            return Failure(makeMessage(path, result.error()));
        }
        return result;
    } catch (const Exception& exception) {
        return Failure(exception.message());
    }
}

String TensorFile::makeMessage(const Path& path, const String& reason) {
    return "The denoiser's weights \"" + path.native() + "\" cannot be used: " + reason + ".";
}

const Tensor* TensorFile::find(std::string_view name) const {
    const auto found = tensors_.find(name);
    return found == tensors_.end() ? nullptr : &found->second;
}

}  // namespace tavrin::postcore
