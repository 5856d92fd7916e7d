#pragma once

#include "foundation/Color.h"
#include "foundation/FatalError.h"
#include "foundation/Geometry.h"
#include "foundation/String.h"

#include <memory>
#include <type_traits>

namespace tavrin::image {

/// What attributes and channels share: an owned, named, copyable thing. I is the interface itself.
template <class I>
class ItemInterfaceCommon {
public:
    virtual ~ItemInterfaceCommon() = default;
    virtual std::unique_ptr<I> clone() const = 0;
    /// A new object that takes this one's contents: a channel is left 0 × 0, an attribute is
    /// copied.
    virtual std::unique_ptr<I> moveClone() = 0;
    virtual const String& getName() const = 0;
};

/// A named header value of a ChannelImage.
class IAttribute : public ItemInterfaceCommon<IAttribute> {
public:
    /// True only for the same type, name and value; a NaN equals nothing.
    virtual bool equals(const IAttribute& other) const = 0;
};

/// T is int, float, double, bool, String, Rgb, Pixel or Bucket.
template <class T>
class Attribute final : public IAttribute {
    static_assert(std::is_same_v<T, int> || std::is_same_v<T, float> || std::is_same_v<T, double> ||
                  std::is_same_v<T, bool> || std::is_same_v<T, String> || std::is_same_v<T, Rgb> ||
                  std::is_same_v<T, Pixel> || std::is_same_v<T, Bucket>);

public:
    Attribute(String name, T value) : name_(std::move(name)), value_(std::move(value)) {}

    std::unique_ptr<IAttribute> clone() const override {
        return std::make_unique<Attribute>(*this);
    }
    std::unique_ptr<IAttribute> moveClone() override { return clone(); }
    const String& getName() const override { return name_; }
    bool equals(const IAttribute& other) const override {
        const auto* same = dynamic_cast<const Attribute*>(&other);
        return same != nullptr && same->name_ == name_ && same->value_ == value_;
    }

    T& getValue() { return value_; }
    const T& getValue() const { return value_; }

private:
    String name_;
    T value_;
};

/// Calls visit(attribute) with the attribute as what it is, an Attribute<T>.
template <class Visitor>
void visitAttribute(const IAttribute& attribute, const Visitor& visit) {
    const auto tryType = [&]<class T>(std::type_identity<T>) {
        const auto* typed = dynamic_cast<const Attribute<T>*>(&attribute);
        if (typed != nullptr) {
            visit(*typed);
        }
        return typed != nullptr;
    };
    const auto tryTypes = [&]<class... T>(std::type_identity<T>... types) {
        return (tryType(types) || ...);
    };
    if (!tryTypes(std::type_identity<int>(), std::type_identity<float>(),
                  std::type_identity<double>(), std::type_identity<bool>(),
                  std::type_identity<String>(), std::type_identity<Rgb>(),
                  std::type_identity<Pixel>(), std::type_identity<Bucket>())) {
        fatalError("An attribute is of an unknown class.");
    }
}

}  // namespace tavrin::image
