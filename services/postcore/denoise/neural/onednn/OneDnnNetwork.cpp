#include "services/postcore/denoise/neural/onednn/OneDnnNetwork.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

// The library's thread pool is the compiler's OpenMP, of which this is all that is needed.
extern "C" void omp_set_num_threads(int count);

namespace tavrin::postcore {
namespace {

using dnnl::memory;

constexpr auto kFloat = memory::data_type::f32;

/// The layout whose kernels are made for the processor's vectors: a block fills one.
int getVectorSize() {
    switch (dnnl::get_effective_cpu_isa()) {
        case dnnl::cpu_isa::sse41:
        case dnnl::cpu_isa::avx:
        case dnnl::cpu_isa::avx2:
        case dnnl::cpu_isa::avx2_vnni:
            return 8;
        default:
            return 16;
    }
}

dnnl::primitive_attr makeAttributes() {
    dnnl::primitive_attr attributes;
    attributes.set_scratchpad_mode(dnnl::scratchpad_mode::user);
    return attributes;
}

/// Negative results become 0.
dnnl::primitive_attr makeConvolutionAttributes() {
    dnnl::post_ops rectify;
    rectify.append_eltwise(1.0f, dnnl::algorithm::eltwise_relu, 0.0f, 0.0f);
    dnnl::primitive_attr attributes = makeAttributes();
    attributes.set_post_ops(rectify);
    return attributes;
}

/// Winograd's algorithm takes a third less time than the direct one, where it is implemented for
/// the shape and the processor.
dnnl::convolution_forward::primitive_desc makeConvolution(
    const dnnl::engine& engine, const memory::desc& source, const memory::desc& weights,
    const memory::desc& bias, const memory::desc& destination, bool mayTransform) {
    const auto make = [&](dnnl::algorithm algorithm) {
        return dnnl::convolution_forward::primitive_desc({dnnl::prop_kind::forward_inference,
                                                          algorithm,
                                                          source,
                                                          weights,
                                                          bias,
                                                          destination,
                                                          {1, 1},
                                                          {1, 1},
                                                          {1, 1}},
                                                         makeConvolutionAttributes(), engine);
    };
    if (mayTransform) {
        try {
            return make(dnnl::algorithm::convolution_winograd);
        } catch (const dnnl::error&) {
            // Not implemented.
        }
    }
    return make(dnnl::algorithm::convolution_direct);
}

/// The weights with zeros for the channels that fill up blocks.
std::vector<float> padWeights(const NetworkLayer& layer, int paddedInputs, int paddedOutputs) {
    constexpr std::size_t kWindow = 9;
    const auto inputs = static_cast<std::size_t>(layer.inputs);
    const auto padded = static_cast<std::size_t>(paddedInputs);
    std::vector<float> result(static_cast<std::size_t>(paddedOutputs) * padded * kWindow);
    for (std::size_t o = 0; o < static_cast<std::size_t>(layer.outputs); ++o) {
        const auto row = layer.weights.subspan(o * inputs * kWindow, inputs * kWindow);
        std::ranges::copy(row, result.begin() + static_cast<std::ptrdiff_t>(o * padded * kWindow));
    }
    return result;
}

}  // namespace

OneDnnNetwork::OneDnnNetwork(std::span<const NetworkLayer> layers, int width, int height,
                             int threads)
    : width_(width), height_(height), threads_(threads), blockSize_(getVectorSize()) {
    omp_set_num_threads(threads_);
    planSkips(layers);
    current_ = skips_.front();
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const bool isLast = i + 1 == layers.size();
        addLayer(layers[i], isLast ? nullptr : &layers[i + 1], isLast);
    }
    placeBuffers();
}

int OneDnnNetwork::pad(int channels) const {
    return (channels + blockSize_ - 1) / blockSize_ * blockSize_;
}

OneDnnNetwork::View OneDnnNetwork::makeView(int channels, int level) {
    const std::size_t pixels =
        static_cast<std::size_t>(width_ >> level) * static_cast<std::size_t>(height_ >> level);
    const auto padded = static_cast<std::size_t>(pad(channels));
    return {plan_.add(pixels * padded * sizeof(float)), 0, pad(channels), level};
}

memory::desc OneDnnNetwork::describe(const View& view) const {
    return {{1, view.channels, height_ >> view.level, width_ >> view.level},
            kFloat,
            blockSize_ == 16 ? memory::format_tag::nChw16c : memory::format_tag::nChw8c};
}

void OneDnnNetwork::planSkips(std::span<const NetworkLayer> layers) {
    // The network's input, then the result of each layer that pools.
    std::vector<int> channels = {layers.front().inputs};
    for (const NetworkLayer& layer : layers) {
        if (layer.end == LayerEnd::Pool) {
            channels.push_back(layer.outputs);
        }
    }
    for (std::size_t skip = 0; skip < channels.size(); ++skip) {
        const int level = static_cast<int>(skip);
        const auto joining = std::ranges::find(layers, level, &NetworkLayer::skip);
        const int before = joining == layers.end() ? 0 : joining->inputs - channels[skip];
        if (before < 0 || before % blockSize_ != 0) {
            throw std::runtime_error("a skip connection does not fit");
        }
        const View joined = makeView(before + channels[skip], level);
        joined_.push_back(joined);
        skips_.push_back({joined.buffer, before, joined.channels - before, level});
    }
}

void OneDnnNetwork::addLayer(const NetworkLayer& layer, const NetworkLayer* next, bool isLast) {
    if (layer.skip != kNoSkip) {
        current_ = joined_[static_cast<std::size_t>(layer.skip)];
    }
    if (pad(layer.inputs) != current_.channels) {
        throw std::runtime_error("two layers do not fit together");
    }
    addConvolution(layer, makeView(layer.outputs, current_.level), isLast);
    if (layer.end == LayerEnd::Pool) {
        addPooling(skips_[static_cast<std::size_t>(++poolings_)]);
    } else if (layer.end == LayerEnd::Upsample) {
        const int level = current_.level - 1;
        const bool isJoined = next != nullptr && next->skip != kNoSkip;
        View to = isJoined ? joined_[static_cast<std::size_t>(next->skip)]
                           : makeView(current_.channels, level);
        to.channels = current_.channels;
        if (to.level != level) {
            throw std::runtime_error("a skip connection joins another size");
        }
        addUpsampling(to);
    }
}

void OneDnnNetwork::addConvolution(const NetworkLayer& layer, const View& to, bool isLast) {
    const int inputs = current_.channels;
    const int outputs = to.channels;
    std::vector<float> weights = padWeights(layer, inputs, outputs);
    std::vector<float> bias(layer.bias.begin(), layer.bias.end());
    bias.resize(static_cast<std::size_t>(outputs));

    const memory::dims shape = {outputs, inputs, 3, 3};
    const memory::desc biasDescription({outputs}, kFloat, memory::format_tag::x);
    const auto description =
        makeConvolution(engine_, describe(current_), {shape, kFloat, memory::format_tag::any},
                        biasDescription, describe(to), !isLast);

    memory plainWeights({shape, kFloat, memory::format_tag::oihw}, engine_, weights.data());
    memory ownWeights(description.weights_desc(), engine_);
    dnnl::reorder(plainWeights, ownWeights).execute(stream_, plainWeights, ownWeights);
    memory ownBias(biasDescription, engine_);
    std::memcpy(ownBias.get_data_handle(), bias.data(), bias.size() * sizeof(float));
    stream_.wait();

    const double pixels = double(width_ >> to.level) * double(height_ >> to.level);
    addStep(description, to, 2.0 * 9.0 * inputs * outputs * pixels,
            {{DNNL_ARG_WEIGHTS, ownWeights}, {DNNL_ARG_BIAS, ownBias}});
}

void OneDnnNetwork::addPooling(const View& to) {
    const dnnl::pooling_v2_forward::primitive_desc description({dnnl::prop_kind::forward_inference,
                                                                dnnl::algorithm::pooling_max,
                                                                describe(current_),
                                                                describe(to),
                                                                {2, 2},
                                                                {2, 2},
                                                                {0, 0},
                                                                {0, 0},
                                                                {0, 0}},
                                                               makeAttributes(), engine_);
    addStep(description, to, 0.0, {});
}

void OneDnnNetwork::addUpsampling(const View& to) {
    const dnnl::resampling_forward::primitive_desc description(
        {dnnl::prop_kind::forward_inference, dnnl::algorithm::resampling_nearest,
         describe(current_), describe(to)},
        makeAttributes(), engine_);
    addStep(description, to, 0.0, {});
}

template <class Description>
void OneDnnNetwork::addStep(const Description& description, const View& to, double cost,
                            std::unordered_map<int, memory> arguments) {
    // The library's fallbacks take a thousand times as long.
    if (std::string_view(description.impl_info_str()).starts_with("ref")) {
        throw std::runtime_error("there is no fast implementation for this processor");
    }
    const int step = static_cast<int>(steps_.size());
    plan_.use(current_.buffer, step);
    plan_.use(to.buffer, step);
    scratchpadBytes_ = std::max(scratchpadBytes_, description.scratchpad_desc().get_size());
    arguments[DNNL_ARG_SCRATCHPAD] = memory(description.scratchpad_desc(), engine_, nullptr);
    steps_.push_back({dnnl::primitive(description), current_, to, std::move(arguments), cost});
    cost_ += cost;
    current_ = to;
}

void OneDnnNetwork::placeBuffers() {
    const std::size_t bytes = plan_.arrange();
    memory_ = PixelArray<std::byte>(bytes);
    scratchpad_ = PixelArray<std::byte>(scratchpadBytes_);
    for (Step& step : steps_) {
        step.arguments[DNNL_ARG_SRC] =
            memory(describe(step.source), engine_, getAddress(step.source));
        step.arguments[DNNL_ARG_DST] =
            memory(describe(step.destination), engine_, getAddress(step.destination));
        step.arguments[DNNL_ARG_SCRATCHPAD].set_data_handle(scratchpad_.data());
    }
    input_ = getAddress(skips_.front());
    output_ = getAddress(current_);
}

float* OneDnnNetwork::getAddress(const View& view) {
    const std::size_t pixels = static_cast<std::size_t>(width_ >> view.level) *
                               static_cast<std::size_t>(height_ >> view.level);
    std::byte* bytes = memory_.data() + plan_.get(view.buffer).offset;
    return reinterpret_cast<float*>(bytes) + pixels * static_cast<std::size_t>(view.firstChannel);
}

bool OneDnnNetwork::run(INetworkProgress& progress, std::string& reason) noexcept {
    try {
        omp_set_num_threads(threads_);
        double done = 0.0;
        for (const Step& step : steps_) {
            step.primitive.execute(stream_, step.arguments);
            stream_.wait();
            done += step.cost;
            if (!progress.report(static_cast<float>(done / cost_))) {
                return false;
            }
        }
        return true;
    } catch (const std::exception& exception) {
        reason = exception.what();
        return false;
    }
}

}  // namespace tavrin::postcore
