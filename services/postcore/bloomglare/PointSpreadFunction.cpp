#include "services/postcore/bloomglare/PointSpreadFunction.h"

#include <numeric>

namespace tavrin::postcore {

void normalize(PointSpreadFunction& function) {
    for (std::vector<float>& plane : function.planes) {
        plane[function.index(function.radius, function.radius)] = 0.0f;
        const double sum = std::accumulate(plane.begin(), plane.end(), 0.0);
        for (float& weight : plane) {
            weight = sum > 0.0 ? static_cast<float>(weight / sum) : 0.0f;
        }
    }
}

}  // namespace tavrin::postcore
