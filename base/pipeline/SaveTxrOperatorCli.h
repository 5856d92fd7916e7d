#pragma once

#include "base/pipeline/TxrSaving.h"

#include <mutex>
#include <vector>

namespace tavrin::pipeline {

/// Saves as a TXR file what a command line asks for: everything, or one element, which becomes the
/// beauty of the file, with what is needed to merge and to denoise it.
class SaveTxrOperatorCli final : public TxrSaving {
public:
    ~SaveTxrOperatorCli() override { shutDown(); }

    /// Asks for saving to the file, over what is there, and returns at once. `selector` is the
    /// display name of an element, or "*" for all. Any thread.
    void save(const String& selector, const Path& path);

    /// The elements that the filter accepts of those that can be saved.
    std::vector<image::ElementInfo> getSavableElements(const ElementFilter& filter) const;

private:
    void update() override;
    void checkSelector(const String& selector) const;
    void exportAsBeauty(const String& element, image::ChannelImage& target) const;

    std::mutex mutex_;
    String selector_ = "*";  ///< guarded by mutex_, as the path
    Path path_;
};

}  // namespace tavrin::pipeline
