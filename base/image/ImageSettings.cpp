#include "base/image/ImageSettings.h"

#include "base/image/AttributeNames.h"
#include "foundation/Exception.h"
#include "foundation/Optional.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/PipelineText.h"
#include "services/postcore/LegacyToneMapping.h"
#include "services/postcore/PropertyDescriptor.h"
#include "services/postcore/PropertyText.h"

namespace tavrin::image {
namespace {

using colorkit::ColorMapping;
using colorkit::IColorMappingOperator;
using postcore::LegacyAwarePostParamsSettings;
using postcore::Property;
using postcore::PropertyDescriptor;
using postcore::PropertyType;
using Warn = Function<void(const String&)>;

template <class T>
const T* find(const ChannelImage& image, const String& name) {
    return image.hasAttribute<T>(name) ? &image.getAttribute<T>(name) : nullptr;
}

/// What the attribute holds, when its type is that of the property. Texts of arrays that cannot be
/// used count as the default, of which `warn` is told.
Optional<Property> readProperty(const ChannelImage& image, const PropertyDescriptor& descriptor,
                                const Warn& warn) {
    const String name = postcore::getPropertyExrName(descriptor);
    if (descriptor.type == PropertyType::Int || descriptor.type == PropertyType::Bool) {
        const int* value = find<int>(image, name);
        if (value == nullptr) {
            return {};
        }
        return descriptor.type == PropertyType::Int ? Property(*value) : Property(*value != 0);
    }
    if (descriptor.type == PropertyType::Float) {
        const float* value = find<float>(image, name);
        return value != nullptr ? Optional<Property>(*value) : std::nullopt;
    }
    if (descriptor.type == PropertyType::Vec3) {
        const Rgb* value = find<Rgb>(image, name);
        return value != nullptr ? Optional<Property>(Vec3{value->r, value->g, value->b})
                                : std::nullopt;
    }
    const String* text = find<String>(image, name);
    if (text == nullptr || descriptor.type == PropertyType::String) {
        return text != nullptr ? Optional<Property>(*text) : std::nullopt;
    }
    // As long as a settings file may be.
    constexpr std::size_t kLongestArray = std::size_t{1} << 20;
    if (text->size() <= kLongestArray) {
        if (const auto value = postcore::parseAttributeText(descriptor.type, *text)) {
            return *value;
        }
    }
    warn("The value of \"" + descriptor.name + "\" cannot be read. Its default will be used.");
    return descriptor.defaultValue;
}

void writeProperty(ChannelImage& image, const PropertyDescriptor& descriptor,
                   const Property& property) {
    const String name = postcore::getPropertyExrName(descriptor);
    property.visit([&]<class T>(const T& value) {
        if constexpr (std::is_same_v<T, bool>) {
            image.setAttribute(name, value ? 1 : 0);
        } else if constexpr (std::is_same_v<T, Vec3>) {
            image.setAttribute(name, Rgb{value.x, value.y, value.z});
        } else if constexpr (std::is_same_v<T, int> || std::is_same_v<T, float> ||
                             std::is_same_v<T, String>) {
            image.setAttribute(name, value);
        } else {
            image.setAttribute(name, postcore::getAttributeText(property));
        }
    });
}

EntityHolder<IColorMappingOperator> readPipeline(const ChannelImage& image,
                                                 const LegacyAwarePostParamsSettings& legacy,
                                                 const Warn& warn) {
    if (const String* text = find<String>(image, kPipelineAttribute)) {
        String error;
        const auto pipeline = colorkit::deserializePipelineFromString(*text, error);
        if (error.isEmpty()) {
            // Also when it is empty: an image may be saved without any operator.
            return pipeline;
        }
        warn(error);
    }
    const auto pipeline = legacy.getColorMappingPipeline();
    return pipeline.isEmpty() ? colorkit::createDefaultPipeline() : pipeline;
}

void readToneMapping(const ChannelImage& image, const LegacyAwarePostParamsSettings& legacy,
                     ColorMapping& colorMapping, const Warn& warn) {
    try {
        const auto pipeline = readPipeline(image, legacy, warn);
        if (!colorkit::arePipelinesSame(pipeline, colorMapping.getPipeline())) {
            colorMapping.setPipeline(pipeline);
        }
    } catch (const std::exception& exception) {
        warn(
            "Loading of tone mapping settings failed. Default configuration will be used "
            "instead.\nError: " +
            exceptionToString(exception));
    }
    colorkit::CommonColorMappingContext context;
    context.errorCallback = [warn](int, const String& text) { warn(text); };
    colorMapping.setContext(context);
    const int* enabled = find<int>(image, kColorMappingEnabledAttribute);
    colorMapping.setEnabled(enabled == nullptr || *enabled != 0);
}

}  // namespace

void readSettings(const ChannelImage& image, const std::vector<int>& ids,
                  postcore::ISettings& settings, ColorMapping& colorMapping, const Warn& warn) {
    LegacyAwarePostParamsSettings legacy(settings);
    for (const int id : ids) {
        if (const PropertyDescriptor* descriptor = PropertyDescriptor::get(id)) {
            legacy.set(id,
                       readProperty(image, *descriptor, warn).value_or(descriptor->defaultValue));
        }
    }
    for (const PropertyDescriptor& descriptor : postcore::getLegacyTonemappingDescriptors()) {
        if (const auto value = readProperty(image, descriptor, warn)) {
            legacy.set(descriptor.id, *value);
        }
    }
    readToneMapping(image, legacy, colorMapping, warn);
}

void writeSettings(ChannelImage& image, const std::vector<int>& ids,
                   const postcore::ISettings& settings, const ColorMapping& colorMapping) {
    for (const int id : ids) {
        if (const PropertyDescriptor* descriptor = PropertyDescriptor::get(id)) {
            writeProperty(image, *descriptor, settings.get(id));
        }
    }
    image.setAttribute(kPipelineAttribute,
                       colorkit::serializePipelineToString(colorMapping.getPipeline()));
    image.setAttribute(kColorMappingEnabledAttribute, colorMapping.isEnabled() ? 1 : 0);
}

postcore::CameraData readCameraData(const ChannelImage& image) {
    postcore::CameraData camera;
    if (const int* type = find<int>(image, kCameraTypeAttribute)) {
        camera.type = static_cast<std::uint32_t>(*type);
    }
    const int* isVrEnabled = find<int>(image, kCameraVrAttribute);
    camera.isVrEnabled = isVrEnabled != nullptr && *isVrEnabled != 0;
    return camera;
}

}  // namespace tavrin::image
