#pragma once

#include "base/pipeline/IImageInfoProvider.h"

namespace tavrin::pipeline {

/// Adds what is known of the loaded image beside its pixels.
template <class Base>
class ImageInfoMixin : public Base {
public:
    /// Set once, before the operator is used; the provider outlives the operator.
    void setImageInfoProvider(const IImageInfoProvider& provider) { provider_ = &provider; }

protected:
    const IImageInfoProvider& imageInfo() const { return *provider_; }

private:
    const IImageInfoProvider* provider_ = nullptr;
};

}  // namespace tavrin::pipeline
