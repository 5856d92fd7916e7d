#include "base/image/Accumulator.h"

#include "base/image/AttributeNames.h"
#include "base/image/RowLoop.h"
#include "base/settings/PropertyHelp.h"
#include "foundation/Exception.h"
#include "foundation/platform/Memory.h"
#include "services/postcore/PropertyDescriptor.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace tavrin::image {
namespace {

using postcore::PropertyDescriptor;

const String kPropertiesDiffer =
    "One or more postprocessing properties differed among the merged images. Using properties from "
    "the first image.";
const String kElementsDiffer =
    "Element metadata differed among the merged images. Using element metadata from the first "
    "image.";
const String kNotTxr =
    "One or more of the merged images have not been recognized as TXR images. The resulting "
    "postprocessing properties and/or render statistics of the merged image may be incorrect.";

// The loops over one row. They are separate functions with pointers that never overlap, which is
// what compilers need to work on several values at once.

void addProducts(float* __restrict sums, const float* __restrict values,
                 const float* __restrict weights, std::size_t count) {
    for (std::size_t x = 0; x < count; ++x) {
        sums[x] += values[x] * weights[x];
    }
}

void addProducts(float* __restrict sums, const float* __restrict values, float weight,
                 std::size_t count) {
    for (std::size_t x = 0; x < count; ++x) {
        sums[x] += weight * values[x];
    }
}

void addValues(float* __restrict sums, const float* __restrict values, std::size_t count) {
    for (std::size_t x = 0; x < count; ++x) {
        sums[x] += values[x];
    }
}

void addConstant(float* sums, float value, std::size_t count) {
    for (std::size_t x = 0; x < count; ++x) {
        sums[x] += value;
    }
}

void divideByWeights(float* __restrict sums, const float* __restrict weights, std::size_t count) {
    for (std::size_t x = 0; x < count; ++x) {
        // A mask, as GCC makes a branch of a choice between floats. Without weight all bits are
        // cleared, whatever the division gave.
        const std::uint32_t mask = weights[x] == 0.0f ? 0 : 0xFFFFFFFF;
        const float mean = sums[x] / weights[x];
        sums[x] = std::bit_cast<float>(std::bit_cast<std::uint32_t>(mean) & mask);
    }
}

/// The rows of a channel from a pixel of it on. T is float or const float.
template <class T>
struct Rows {
    T* start;
    std::size_t stride;

    T* operator[](int y) const { return start + std::size_t(y) * stride; }
};

Rows<const float> getRows(const Channel<float>& channel) {
    return {channel.getData(), channel.getWidth()};
}

Rows<float> getRows(Channel<float>& channel, Pixel offset = {}) {
    const Rows<float> rows{channel.getData(), channel.getWidth()};
    return {rows[offset.y] + offset.x, rows.stride};
}

/// A channel that is merged, and the sums under its pixels.
struct Term {
    Rows<float> sums;
    Rows<const float> values;
};

/// The size of the channels that belong to a data window.
Pixel getPlaneSize(const Bucket& window) {
    return window.isEmpty() ? Pixel{} : window.size();
}

Bucket getOutputWindow(const ChannelImage& image) {
    const Bucket& display = image.getDisplayWindow();
    const Bucket& data = image.getDataWindow();
    if (display.isEmpty() || data.isEmpty()) {
        return display.isEmpty() ? data : display;
    }
    return {std::min(display.x0, data.x0), std::min(display.y0, data.y0),
            std::max(display.x1, data.x1), std::max(display.y1, data.y1)};
}

/// The display window, which has no pixels in a file, may be of any size.
void checkFitsInMemory(const Bucket& window, std::size_t channelCount) {
    const auto getLength = [](int from, int to) { return double(to) - double(from); };
    const double width = getLength(window.x0, window.x1);
    const double height = getLength(window.y0, window.y1);
    const double needed = width * height * double(channelCount * sizeof(float));
    if (needed > double(platform::availableMemory())) {
        const auto toText = [](double number) {
            return String::fromUtf8(std::to_string(static_cast<long long>(number)));
        };
        throw Exception("A merged image of " + toText(width) + " x " + toText(height) +
                        " pixels, which its display window asks for, does not fit in memory.");
    }
}

/// Whether the name is that of a float channel of the image other than the one of its weights.
bool isMergeable(const ChannelImage& image, const String& name, const Weight& weight) {
    const String* weightName = std::get_if<String>(&weight);
    return image.hasChannel<float>(name) && (weightName == nullptr || *weightName != name);
}

void fillWithZeros(ChannelImage& image) {
    std::vector<Rows<float>> planes;
    for (const auto& [name, channel] : image.getChannels()) {
        planes.push_back(getRows(image.getChannel<float>(name)));
    }
    const Pixel size = getPlaneSize(image.getDataWindow());
    forEachRow(size, [&](int y) {
        for (const Rows<float>& plane : planes) {
            std::fill_n(plane[y], size.x, 0.0f);
        }
    });
}

/// Numbers in a file may be anything.
int addSaturated(int a, int b) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp<std::int64_t>(std::int64_t{a} + b, Limits::min(), Limits::max()));
}

}  // namespace

Accumulator::Accumulator(String weightsChannelName, Function<void(const String&)> onWarning)
    : weightsChannelName_(std::move(weightsChannelName)), onWarning_(std::move(onWarning)) {}

void Accumulator::add(const Weight& weight, const ChannelImage& image) {
    if (count_ < 0) {
        start(weight, image);
    }
    addPixels(weight, image);
    if (image_.isTxrImage()) {
        addMetadata(image);
    }
    ++count_;
}

void Accumulator::finish() {
    std::vector<Rows<float>> planes;
    for (const auto& [name, channel] : image_.getChannels()) {
        if (name != weightsChannelName_) {
            planes.push_back(getRows(image_.getChannel<float>(name)));
        }
    }
    const auto weights = getRows(std::as_const(image_).getChannel<float>(weightsChannelName_));
    forEachRow(getPlaneSize(image_.getDataWindow()), [&](int y) {
        for (const Rows<float>& plane : planes) {
            divideByWeights(plane[y], weights[y], plane.stride);
        }
    });
    if (image_.isTxrImage()) {
        image_.getAttribute<float>(kRaysPerSampleStatistic) /= static_cast<float>(count_);
    }
}

void Accumulator::start(const Weight& weight, const ChannelImage& image) {
    const Bucket window = getOutputWindow(image);
    checkFitsInMemory(window, image.getChannels().size() + 1);
    ChannelImage sums(window, window, image.getAttribute<float>("gamma"));
    for (const auto& [name, channel] : image.getChannels()) {
        if (isMergeable(image, name, weight)) {
            sums.addChannel(name);
        }
    }
    sums.addChannel(weightsChannelName_);
    sums.fitChannelsToDataWindow();
    fillWithZeros(sums);
    if (image.isTxrImage()) {
        sums.setAttribute(kTxrMarkerAttribute, 1);
        for (const String& name : kSummedStatistics) {
            sums.setAttribute(name, 0);
        }
        sums.setAttribute(kRaysPerSampleStatistic, 0.0f);
    }
    image_ = std::move(sums);
    count_ = 0;
}

void Accumulator::addPixels(const Weight& weight, const ChannelImage& image) {
    const Bucket& window = image.getDataWindow();
    const Bucket& sumsWindow = image_.getDataWindow();
    const Pixel offset{window.x0 - sumsWindow.x0, window.y0 - sumsWindow.y0};
    const auto makeTerm = [&](const String& sums, const String& values) {
        return Term{getRows(image_.getChannel<float>(sums), offset),
                    getRows(image.getChannel<float>(values))};
    };
    std::vector<Term> terms;
    for (const auto& [name, channel] : image_.getChannels()) {
        if (name != weightsChannelName_ && isMergeable(image, name, weight)) {
            terms.push_back(makeTerm(name, name));
        }
    }
    // All channels of a row after another: the weights of the row stay in the cache.
    const Pixel size = getPlaneSize(window);
    const auto width = static_cast<std::size_t>(size.x);
    if (const String* weightName = std::get_if<String>(&weight)) {
        const Term weights = makeTerm(weightsChannelName_, *weightName);
        forEachRow(size, [&](int y) {
            for (const Term& term : terms) {
                addProducts(term.sums[y], term.values[y], weights.values[y], width);
            }
            addValues(weights.sums[y], weights.values[y], width);
        });
        return;
    }
    const float constant = std::get<float>(weight);
    forEachRow(size, [&](int y) {
        for (const Term& term : terms) {
            addProducts(term.sums[y], term.values[y], constant, width);
        }
    });
    addWeightEverywhere(constant);
}

void Accumulator::addWeightEverywhere(float weight) {
    const Rows<float> sums = getRows(image_.getChannel<float>(weightsChannelName_));
    forEachRow(getPlaneSize(image_.getDataWindow()),
               [&](int y) { addConstant(sums[y], weight, sums.stride); });
}

void Accumulator::addMetadata(const ChannelImage& image) {
    if (!image.isTxrImage()) {
        warnOnce(kNotTxr);
        return;
    }
    const auto matchOrAdoptAll = [&](const std::vector<String>& names) {
        // Not all_of, which would leave out what comes after the first difference.
        return std::ranges::count_if(
                   names, [&](const String& name) { return !matchOrAdopt(name, image); }) == 0;
    };
    std::vector<String> properties = {kPipelineAttribute, kColorMappingEnabledAttribute};
    for (const int id : settings::allPropertyIds()) {
        properties.push_back(postcore::getPropertyExrName(*PropertyDescriptor::get(id)));
    }
    if (!matchOrAdoptAll(properties)) {
        warnOnce(kPropertiesDiffer);
    }
    if (!matchOrAdoptAll({kElementsAttribute, kLightMixElementsAttribute})) {
        warnOnce(kElementsDiffer);
    }
    matchOrAdoptAll({kCameraTypeAttribute, kCameraVrAttribute});
    for (const String& name : kSummedStatistics) {
        int& sum = image_.getAttribute<int>(name);
        sum = addSaturated(sum, image.getAttribute<int>(name));
    }
    image_.getAttribute<float>(kRaysPerSampleStatistic) +=
        image.getAttribute<float>(kRaysPerSampleStatistic);
}

/// Takes the attribute over when only the image has it; false when both have it and it differs.
bool Accumulator::matchOrAdopt(const String& name, const ChannelImage& image) {
    const auto found = image.getAttributes().find(name);
    if (found == image.getAttributes().end()) {
        return true;
    }
    const auto own = image_.getAttributes().find(name);
    if (own == image_.getAttributes().end()) {
        image_.setAttribute(found->second->clone());
        return true;
    }
    return own->second->equals(*found->second);
}

void Accumulator::warnOnce(const String& text) {
    if (reported_.insert(text).second && onWarning_) {
        onWarning_(text);
    }
}

}  // namespace tavrin::image
