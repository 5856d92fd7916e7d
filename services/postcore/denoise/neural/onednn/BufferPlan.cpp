#include "services/postcore/denoise/neural/onednn/BufferPlan.h"

#include <algorithm>

namespace tavrin::postcore {
namespace {

std::size_t roundUp(std::size_t bytes) {
    return (bytes + BufferPlan::kAlignment - 1) / BufferPlan::kAlignment * BufferPlan::kAlignment;
}

std::size_t getEnd(const BufferPlan::Buffer& buffer) {
    return buffer.offset + roundUp(buffer.bytes);
}

bool areUsedTogether(const BufferPlan::Buffer& a, const BufferPlan::Buffer& b) {
    return a.first <= b.last && b.first <= a.last;
}

}  // namespace

int BufferPlan::add(std::size_t bytes) {
    buffers_.emplace_back().bytes = bytes;
    return static_cast<int>(buffers_.size()) - 1;
}

void BufferPlan::use(int buffer, int step) {
    Buffer& entry = buffers_[static_cast<std::size_t>(buffer)];
    entry.first = std::min(entry.first, step);
    entry.last = std::max(entry.last, step);
}

std::size_t BufferPlan::arrange() {
    // Large buffers first, each in the lowest gap between those that are in use with it.
    std::vector<Buffer*> order;
    for (Buffer& buffer : buffers_) {
        order.push_back(&buffer);
    }
    std::ranges::stable_sort(order, std::ranges::greater(), &Buffer::bytes);
    std::size_t total = 0;
    std::vector<const Buffer*> placed;  // by offset
    for (Buffer* buffer : order) {
        for (const Buffer* other : placed) {
            const bool isBefore = buffer->offset + roundUp(buffer->bytes) <= other->offset;
            if (areUsedTogether(*buffer, *other) && !isBefore) {
                buffer->offset = std::max(buffer->offset, getEnd(*other));
            }
        }
        placed.insert(std::ranges::upper_bound(placed, buffer->offset, {}, &Buffer::offset),
                      buffer);
        total = std::max(total, getEnd(*buffer));
    }
    return total;
}

}  // namespace tavrin::postcore
