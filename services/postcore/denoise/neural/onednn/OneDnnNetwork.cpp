#include "services/postcore/denoise/neural/onednn/OneDnnNetwork.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

// The library's thread pool is the compiler's OpenMP, of which this is all that is needed.
extern "C" void omp_set_num_threads(int count);

namespace tavrin::postcore {
namespace {

using dnnl::memory;

constexpr auto kFloat = memory::data_type::f32;

/// How many channels the layout has side by side whose kernels are made for the processor's
/// vectors.
int getBlockSizeOfProcessor() {
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

dnnl::primitive_attr makeAttributes(const dnnl::post_ops& operations = {}) {
    dnnl::primitive_attr attributes;
    attributes.set_scratchpad_mode(dnnl::scratchpad_mode::user);
    attributes.set_post_ops(operations);
    return attributes;
}

/// The library's fallbacks take a hundred times as long.
bool isReference(const char* implementation) {
    return std::string_view(implementation).starts_with("ref");
}

}  // namespace

OneDnnNetwork::OneDnnNetwork(std::span<const NetworkLayer> layers, int width, int height,
                             int threads)
    : width_(width), height_(height), threads_(threads), blockSize_(getBlockSizeOfProcessor()) {
    omp_set_num_threads(threads_);
    current_ = makeView(layers.front().inputs, 0);
    skips_.push_back(current_);
    for (const NetworkLayer& layer : layers) {
        addLayer(layer, &layer == &layers.back());
    }
    placeBuffers();
}

int OneDnnNetwork::pad(int channels) const {
    return (channels + blockSize_ - 1) / blockSize_ * blockSize_;
}

std::size_t OneDnnNetwork::getPixelCount(int level) const {
    return static_cast<std::size_t>(width_ >> level) * static_cast<std::size_t>(height_ >> level);
}

OneDnnNetwork::View OneDnnNetwork::makeView(int channels, int level) {
    const auto padded = static_cast<std::size_t>(pad(channels));
    return {plan_.add(getPixelCount(level) * padded * sizeof(float)), pad(channels), level};
}

memory::desc OneDnnNetwork::describe(const View& view) const {
    return {{1, view.channels, height_ >> view.level, width_ >> view.level},
            kFloat,
            blockSize_ == 16 ? memory::format_tag::nChw16c : memory::format_tag::nChw8c};
}

void OneDnnNetwork::addLayer(const NetworkLayer& layer, bool isLast) {
    const View from = current_;
    const int level = isUpsampled_ ? from.level - 1 : from.level;
    const View to = makeView(layer.outputs, level);
    if (layer.skip != kNoSkip) {
        addJoinedConvolution(layer, to);
    } else if (isUpsampled_ || pad(layer.inputs) != from.channels) {
        throw std::runtime_error("two layers do not fit together");
    } else {
        addConvolution({layer, 0, layer.inputs}, from, to, Sum::Bias, !isLast);
    }
    current_ = to;
    isUpsampled_ = layer.end == LayerEnd::Upsample;
    if (layer.end == LayerEnd::Pool) {
        current_ = makeView(layer.outputs, level + 1);
        addPooling(to, current_);
        skips_.push_back(current_);
    }
}

void OneDnnNetwork::addJoinedConvolution(const NetworkLayer& layer, const View& to) {
    const View& skip = skips_.at(static_cast<std::size_t>(layer.skip));
    const int upsampled = current_.channels;
    const int skipped = layer.inputs - upsampled;
    if (!isUpsampled_ || skipped <= 0 || pad(skipped) != skip.channels || skip.level != to.level) {
        throw std::runtime_error("a skip connection does not fit");
    }
    addUpsampledConvolution({layer, 0, upsampled}, current_, to);
    addConvolution({layer, upsampled, skipped}, skip, to, Sum::BiasAndDestination, true);
}

memory OneDnnNetwork::makeWeights(const memory::desc& description, std::vector<float> weights,
                                  const memory::dims& shape) {
    memory plain({shape, kFloat, memory::format_tag::oihw}, engine_, weights.data());
    memory result(description, engine_);
    dnnl::reorder(plain, result).execute(stream_, plain, result);
    stream_.wait();
    return result;
}

void OneDnnNetwork::addConvolution(const LayerPart& part, const View& from, const View& to, Sum sum,
                                   bool mayTransform) {
    dnnl::post_ops operations;
    if (sum == Sum::BiasAndDestination) {
        operations.append_sum(1.0f);
    }
    if (sum != Sum::Nothing) {
        // Negative results become 0.
        operations.append_eltwise(1.0f, dnnl::algorithm::eltwise_relu, 0.0f, 0.0f);
    }
    const memory::dims shape = {to.channels, from.channels, 3, 3};
    const memory::desc anyWeights(shape, kFloat, memory::format_tag::any);
    const memory::desc biasDescription({to.channels}, kFloat, memory::format_tag::x);
    const auto make = [&](dnnl::algorithm algorithm) {
        return dnnl::convolution_forward::primitive_desc({dnnl::prop_kind::forward_inference,
                                                          algorithm,
                                                          describe(from),
                                                          anyWeights,
                                                          biasDescription,
                                                          describe(to),
                                                          {1, 1},
                                                          {1, 1},
                                                          {1, 1}},
                                                         makeAttributes(operations), engine_);
    };
    // Winograd's algorithm takes a third less time than the direct one, where it is implemented for
    // the shape and the processor; otherwise the library throws.
    const auto description = [&] {
        try {
            return make(mayTransform ? dnnl::algorithm::convolution_winograd
                                     : dnnl::algorithm::convolution_direct);
        } catch (const dnnl::error&) {
            return make(dnnl::algorithm::convolution_direct);
        }
    }();

    memory bias(biasDescription, engine_);
    auto* biases = static_cast<float*>(bias.get_data_handle());
    std::fill_n(biases, to.channels, 0.0f);
    if (sum != Sum::Nothing) {
        std::ranges::copy(part.layer.bias, biases);
    }
    addStep(description, from, to,
            9.0 * from.channels * to.channels * static_cast<double>(getPixelCount(to.level)),
            {{DNNL_ARG_WEIGHTS, makeWeights(description.weights_desc(),
                                            padWeights(part, from.channels, to.channels), shape)},
             {DNNL_ARG_BIAS, bias}});
}

void OneDnnNetwork::addUpsampledConvolution(const LayerPart& part, const View& from,
                                            const View& to) {
    if (!addTransposedConvolution(part, from, to)) {
        const View upsampled = makeView(from.channels, to.level);
        addUpsampling(from, upsampled);
        addConvolution(part, upsampled, to, Sum::Nothing, true);
    }
}

bool OneDnnNetwork::addTransposedConvolution(const LayerPart& part, const View& from,
                                             const View& to) {
    const memory::dims shape = {to.channels, from.channels, 4, 4};
    const dnnl::deconvolution_forward::primitive_desc description(
        {dnnl::prop_kind::forward_inference,
         dnnl::algorithm::deconvolution_direct,
         describe(from),
         {shape, kFloat, memory::format_tag::any},
         describe(to),
         {2, 2},
         {1, 1},
         {1, 1}},
        makeAttributes(), engine_);
    if (isReference(description.impl_info_str())) {
        return false;
    }
    addStep(description, from, to,
            16.0 * from.channels * to.channels * static_cast<double>(getPixelCount(from.level)),
            {{DNNL_ARG_WEIGHTS,
              makeWeights(description.weights_desc(),
                          padUpsampledWeights(part, from.channels, to.channels), shape)}});
    return true;
}

void OneDnnNetwork::addPooling(const View& from, const View& to) {
    const dnnl::pooling_v2_forward::primitive_desc description({dnnl::prop_kind::forward_inference,
                                                                dnnl::algorithm::pooling_max,
                                                                describe(from),
                                                                describe(to),
                                                                {2, 2},
                                                                {2, 2},
                                                                {0, 0},
                                                                {0, 0},
                                                                {0, 0}},
                                                               makeAttributes(), engine_);
    addStep(description, from, to, 0.0, {});
}

void OneDnnNetwork::addUpsampling(const View& from, const View& to) {
    const dnnl::resampling_forward::primitive_desc description(
        {dnnl::prop_kind::forward_inference, dnnl::algorithm::resampling_nearest, describe(from),
         describe(to)},
        makeAttributes(), engine_);
    addStep(description, from, to, 0.0, {});
}

template <class Description>
void OneDnnNetwork::addStep(const Description& description, const View& from, const View& to,
                            double cost, std::unordered_map<int, memory> arguments) {
    if (isReference(description.impl_info_str())) {
        throw std::runtime_error("there is no fast implementation for this processor");
    }
    const int step = static_cast<int>(steps_.size());
    plan_.use(from.buffer, step);
    plan_.use(to.buffer, step);
    scratchpadBytes_ = std::max(scratchpadBytes_, description.scratchpad_desc().get_size());
    arguments[DNNL_ARG_SCRATCHPAD] = memory(description.scratchpad_desc(), engine_, nullptr);
    steps_.push_back({dnnl::primitive(description), from, to, std::move(arguments), cost});
    cost_ += cost;
}

void OneDnnNetwork::placeBuffers() {
    memory_ = PixelArray<std::byte>(plan_.arrange());
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
    return reinterpret_cast<float*>(memory_.data() + plan_.get(view.buffer).offset);
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
