#pragma once

#include "base/pipeline/TxrSaving.h"

#include <mutex>

namespace tavrin::pipeline {

/// Saves everything that has been loaded, with the denoised variants and the settings as they are,
/// as a TXR file that can be opened and edited again.
class SaveTxrOperator final : public TxrSaving {
public:
    ~SaveTxrOperator() override { shutDown(); }

    /// Asks for saving to the file, over what is there, and returns at once. Any thread.
    void save(const Path& path);

private:
    void update() override;

    std::mutex mutex_;
    Path path_;  ///< guarded by mutex_
};

}  // namespace tavrin::pipeline
