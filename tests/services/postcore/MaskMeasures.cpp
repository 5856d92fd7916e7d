#include "tests/services/postcore/MaskMeasures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>

namespace tavrin::postcore {
namespace {

double getStep(const BitmapImpl<float>& mask) {
    return 2.0 / mask.getWidth();
}

Vec2 getPoint(const BitmapImpl<float>& mask, int x, int y) {
    const double step = getStep(mask);
    return {static_cast<float>((x + 0.5) * step - 1.0), static_cast<float>(1.0 - (y + 0.5) * step)};
}

void forEachPixel(const BitmapImpl<float>& mask, const auto& visit) {
    for (int y = 0; y < mask.getHeight(); ++y) {
        for (int x = 0; x < mask.getWidth(); ++x) {
            visit(x, y, getPoint(mask, x, y));
        }
    }
}

double getMean(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

}  // namespace

double getArea(const BitmapImpl<float>& mask) {
    const double step = getStep(mask);
    return std::accumulate(mask.pixels().begin(), mask.pixels().end(), 0.0) * step * step;
}

double getOpenness(const BitmapImpl<float>& mask, double x, double y) {
    const double half = 0.5 * mask.getWidth();
    return mask.at(static_cast<int>((1.0 + x) * half), static_cast<int>((1.0 - y) * half));
}

double getRingOpenness(const BitmapImpl<float>& mask, double from, double to) {
    std::vector<double> values;
    forEachPixel(mask, [&](int x, int y, Vec2 point) {
        const double distance = std::hypot(point.x, point.y);
        if (distance >= from && distance <= to) {
            values.push_back(mask.at(x, y));
        }
    });
    return getMean(values);
}

double getDifference(const BitmapImpl<float>& left, const BitmapImpl<float>& right) {
    double sum = 0.0;
    forEachPixel(left,
                 [&](int x, int y, Vec2) { sum += std::abs(left.at(x, y) - right.at(x, y)); });
    return sum / static_cast<double>(left.getPixelCount());
}

double getClumpiness(const BitmapImpl<float>& mask) {
    const int blockSize = mask.getWidth() / 16;
    std::vector<double> blocks;
    for (int top = 5 * blockSize; top < 11 * blockSize; top += blockSize) {
        for (int left = 5 * blockSize; left < 11 * blockSize; left += blockSize) {
            double sum = 0.0;
            for (int i = 0; i < blockSize * blockSize; ++i) {
                sum += mask.at(left + i % blockSize, top + i / blockSize);
            }
            blocks.push_back(sum / (blockSize * blockSize));
        }
    }
    return getSpread(blocks);
}

Grain getGrain(const BitmapImpl<float>& mask) {
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    forEachPixel(mask, [&](int x, int y, Vec2 point) {
        if (std::hypot(point.x, point.y) < 0.9f) {
            const double dx = mask.at(x + 1, y) - mask.at(x - 1, y);
            const double dy = mask.at(x, y - 1) - mask.at(x, y + 1);
            xx += dx * dx;
            xy += dx * dy;
            yy += dy * dy;
        }
    });
    const double across = 0.5 * std::atan2(2.0 * xy, xx - yy) * 180.0 / std::numbers::pi;
    return {across > 0.0 ? across - 90.0 : across + 90.0,
            std::hypot(xx - yy, 2.0 * xy) / (xx + yy)};
}

std::vector<DarkMark> findDarkMarks(const BitmapImpl<float>& mask, double reach) {
    BitmapImpl<float> rest = mask;
    const double step = getStep(mask);
    std::vector<DarkMark> marks;
    forEachPixel(mask, [&](int startX, int startY, Vec2 start) {
        if (std::hypot(start.x, start.y) > reach || rest.at(startX, startY) >= 0.5f) {
            return;
        }
        std::vector<Pixel> pixels{{startX, startY}};
        rest.at(startX, startY) = 1.0f;
        Bucket bounds{startX, startY, startX, startY};
        Vec2 sum;
        bool isInside = true;
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const auto [x, y] = pixels[i];
            const Vec2 point = getPoint(mask, x, y);
            if (std::hypot(point.x, point.y) > reach) {
                isInside = false;
                continue;
            }
            sum = {sum.x + point.x, sum.y + point.y};
            bounds = {std::min(bounds.x0, x), std::min(bounds.y0, y), std::max(bounds.x1, x),
                      std::max(bounds.y1, y)};
            for (const Pixel next : {Pixel{x - 1, y}, {x + 1, y}, {x, y - 1}, {x, y + 1}}) {
                if (rest.at(next.x, next.y) < 0.5f) {
                    rest.at(next.x, next.y) = 1.0f;
                    pixels.push_back(next);
                }
            }
        }
        if (isInside) {
            const auto count = static_cast<float>(pixels.size());
            marks.push_back({count * step * step,
                             step * std::hypot(bounds.width() + 1, bounds.height() + 1),
                             {sum.x / count, sum.y / count}});
        }
    });
    return marks;
}

double getSpread(const std::vector<double>& values) {
    const double mean = getMean(values);
    double squares = 0.0;
    for (const double value : values) {
        squares += (value - mean) * (value - mean);
    }
    return std::sqrt(squares / static_cast<double>(values.size())) / mean;
}

std::vector<double> getAreas(const std::vector<DarkMark>& marks) {
    std::vector<double> areas;
    std::ranges::transform(marks, std::back_inserter(areas), &DarkMark::area);
    return areas;
}

std::vector<Vec2> getWaysToNeighbors(const std::vector<DarkMark>& marks) {
    std::vector<Vec2> ways;
    for (const DarkMark& mark : marks) {
        if (std::hypot(mark.middle.x, mark.middle.y) > 0.7f) {
            continue;
        }
        Vec2 nearest{std::numeric_limits<float>::infinity(), 0.0f};
        for (const DarkMark& other : marks) {
            const Vec2 way{other.middle.x - mark.middle.x, other.middle.y - mark.middle.y};
            if (&other != &mark && std::hypot(way.x, way.y) < std::hypot(nearest.x, nearest.y)) {
                nearest = way;
            }
        }
        ways.push_back(nearest);
    }
    return ways;
}

}  // namespace tavrin::postcore
