#pragma once

#include "samples/Shape.h"

#include <cstdint>
#include <vector>

namespace tavrin::samples {

/// A tree of boxes over the shapes of a scene. Immutable: any thread may ask.
class Bvh {
public:
    struct Nearest {
        double distance = 0;
        std::uint32_t shape = 0;  ///< index in the list the tree was made of
    };

    explicit Bvh(std::vector<Shape> shapes);

    const Shape& getShape(std::uint32_t index) const { return shapes_[index]; }
    std::optional<Nearest> findNearest(const Ray& ray) const;
    /// Calls visit(shape index) for each shape whose first hit lies nearer than `farthest`, in any
    /// order, until it answers false.
    template <class Visit>
    void visitHits(const Ray& ray, double farthest, Visit visit) const;

    /// Hits nearer than this, in decimetres, are the ray's own start.
    static constexpr double kNearest = 1e-6;

private:
    struct Node {
        Bounds bounds;
        std::uint32_t first =
            0;  ///< of a leaf: in order_; else: the right child (the left is next)
        std::uint32_t count = 0;  ///< shapes of a leaf, 0 for an inner node
    };
    static constexpr int kMaxDepth = 64;

    void build(std::uint32_t begin, std::uint32_t end, int depth);
    std::uint32_t split(std::uint32_t begin, std::uint32_t end);
    template <class VisitLeafShape>
    void traverse(const Ray& ray, double& farthest, VisitLeafShape visit) const;

    std::vector<Shape> shapes_;
    std::vector<Bounds> bounds_;
    std::vector<std::uint32_t> order_;
    std::vector<Node> nodes_;
};

namespace detail {

/// A ray prepared for the test against many boxes.
struct BoxRay {
    explicit BoxRay(const Ray& ray)
        : origin(ray.origin),
          inverse{1 / ray.direction.x, 1 / ray.direction.y, 1 / ray.direction.z} {}

    /// The distance at which the ray enters the box, or 1e300 when it misses it.
    double enter(const Bounds& box, double farthest) const {
        const bool left = inverse.x < 0;
        const bool down = inverse.y < 0;
        const bool back = inverse.z < 0;
        // The order of the arguments drops the NaN of a ray that lies in a side of the box.
        double from = std::max(0.0, ((left ? box.high.x : box.low.x) - origin.x) * inverse.x);
        double to = std::min(farthest, ((left ? box.low.x : box.high.x) - origin.x) * inverse.x);
        from = std::max(from, ((down ? box.high.y : box.low.y) - origin.y) * inverse.y);
        to = std::min(to, ((down ? box.low.y : box.high.y) - origin.y) * inverse.y);
        from = std::max(from, ((back ? box.high.z : box.low.z) - origin.z) * inverse.z);
        to = std::min(to, ((back ? box.low.z : box.high.z) - origin.z) * inverse.z);
        constexpr double kRounding = 1 + 1e-12;
        return from <= to * kRounding ? from : 1e300;
    }

    Vector origin;
    Vector inverse;
};

}  // namespace detail

template <class VisitLeafShape>
void Bvh::traverse(const Ray& ray, double& farthest, VisitLeafShape visit) const {
    const detail::BoxRay boxRay(ray);
    struct Waiting {
        std::uint32_t node;
        double enter;
    };
    Waiting stack[kMaxDepth + 1];
    int depth = 0;
    stack[depth++] = {0, boxRay.enter(nodes_[0].bounds, farthest)};
    while (depth > 0) {
        const Waiting current = stack[--depth];
        if (current.enter >= farthest) {
            continue;
        }
        const Node& node = nodes_[current.node];
        for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
            if (!visit(order_[i])) {
                return;
            }
        }
        if (node.count > 0) {
            continue;
        }
        Waiting near{current.node + 1, boxRay.enter(nodes_[current.node + 1].bounds, farthest)};
        Waiting far{node.first, boxRay.enter(nodes_[node.first].bounds, farthest)};
        if (far.enter < near.enter) {
            std::swap(near, far);
        }
        if (far.enter < farthest) {
            stack[depth++] = far;
        }
        if (near.enter < farthest) {
            stack[depth++] = near;
        }
    }
}

template <class Visit>
void Bvh::visitHits(const Ray& ray, double farthest, Visit visit) const {
    traverse(ray, farthest, [&](std::uint32_t shape) {
        return !intersect(shapes_[shape], ray, kNearest, farthest) || visit(shape);
    });
}

}  // namespace tavrin::samples
