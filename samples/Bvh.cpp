#include "samples/Bvh.h"

#include <algorithm>
#include <numeric>

namespace tavrin::samples {
namespace {

constexpr std::uint32_t kLeafShapes = 2;

}  // namespace

Bvh::Bvh(std::vector<Shape> shapes) : shapes_(std::move(shapes)), order_(shapes_.size()) {
    for (const Shape& shape : shapes_) {
        bounds_.push_back(getBounds(shape));
    }
    std::iota(order_.begin(), order_.end(), 0u);
    build(0, static_cast<std::uint32_t>(order_.size()), 0);
}

void Bvh::build(std::uint32_t begin, std::uint32_t end, int depth) {
    const std::size_t index = nodes_.size();
    nodes_.emplace_back();
    for (std::uint32_t i = begin; i < end; ++i) {
        nodes_[index].bounds.include(bounds_[order_[i]]);
    }
    if (end - begin <= kLeafShapes || depth == kMaxDepth - 1) {
        nodes_[index].first = begin;
        nodes_[index].count = end - begin;
        return;
    }
    const std::uint32_t middle = split(begin, end);
    build(begin, middle, depth + 1);
    nodes_[index].first = static_cast<std::uint32_t>(nodes_.size());
    build(middle, end, depth + 1);
}

// Orders the shapes so that cutting at the returned place has the least surface-area cost
// (MacDonald and Booth 1990) over the sorted orders of the three axes.
std::uint32_t Bvh::split(std::uint32_t begin, std::uint32_t end) {
    const std::size_t count = end - begin;
    double bestCost = 1e300;
    std::vector<std::uint32_t> bestOrder;
    std::uint32_t best = begin + static_cast<std::uint32_t>(count / 2);
    for (int axis = 0; axis < 3; ++axis) {
        std::vector<std::uint32_t> order(order_.begin() + begin, order_.begin() + end);
        std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
            return bounds_[a].center()[axis] < bounds_[b].center()[axis];
        });
        std::vector<double> areaAfter(count);
        Bounds after;
        for (std::size_t i = count; i-- > 0;) {
            after.include(bounds_[order[i]]);
            areaAfter[i] = after.area();
        }
        Bounds before;
        for (std::size_t i = 1; i < count; ++i) {
            before.include(bounds_[order[i - 1]]);
            const double cost = before.area() * double(i) + areaAfter[i] * double(count - i);
            if (cost < bestCost) {
                bestCost = cost;
                best = begin + static_cast<std::uint32_t>(i);
                bestOrder = order;
            }
        }
    }
    std::copy(bestOrder.begin(), bestOrder.end(), order_.begin() + begin);
    return best;
}

std::optional<Bvh::Nearest> Bvh::findNearest(const Ray& ray) const {
    std::optional<Nearest> nearest;
    double farthest = 1e30;
    traverse(ray, farthest, [&](std::uint32_t shape) {
        if (const auto distance = intersect(shapes_[shape], ray, kNearest, farthest)) {
            farthest = *distance;
            nearest = Nearest{*distance, shape};
        }
        return true;
    });
    return nearest;
}

}  // namespace tavrin::samples
