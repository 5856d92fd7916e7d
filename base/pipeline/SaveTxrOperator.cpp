#include "base/pipeline/SaveTxrOperator.h"

namespace tavrin::pipeline {

void SaveTxrOperator::save(const Path& path) {
    {
        const std::lock_guard lock(mutex_);
        path_ = path;
    }
    run("Pipeline_SaveTxrOperator");
}

void SaveTxrOperator::update() {
    Path path;
    {
        const std::lock_guard lock(mutex_);
        path = path_;
    }
    TxrSaving::save(
        path, [] {}, [this](image::ChannelImage& target) { exportWholeImage(target); });
}

}  // namespace tavrin::pipeline
