#include "services/postcore/denoise/neural/TileChannels.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <vector>

namespace tavrin::postcore {
namespace {

constexpr std::int64_t kRowsPerTask = 8;
// Nine channels of input in blocks of eight or sixteen.
constexpr int kMostChannels = 16;

/// One row of the tile, as far as it lies in the picture; the parts may be null.
struct InputRow {
    std::span<const Rgb> picture;  ///< encoded
    const Rgb* albedo = nullptr;
    const Rgb* normals = nullptr;
};

int countInputs(const NetworkInput& input) {
    return input.normals != nullptr ? 9 : input.albedo != nullptr ? 6 : 3;
}

/// Writes all channels of whole blocks, zeros where there is nothing: what the last tile has left
/// there does not count.
void writeRow(const InputRow& row, int inputs, int y, const TiledNetwork::Channels& channels) {
    const int blockSize = channels.blockSize;
    const int blocks = (inputs + blockSize - 1) / blockSize;
    const auto block = static_cast<std::size_t>(blockSize);
    for (std::size_t x = 0; x < static_cast<std::size_t>(channels.size.x); ++x) {
        float values[kMostChannels] = {};
        if (x < row.picture.size()) {
            std::memcpy(values, &row.picture[x], 3 * sizeof(float));
            if (row.albedo != nullptr) {
                values[3] = clampFinite(row.albedo[x].r, 0.0f, 1.0f);
                values[4] = clampFinite(row.albedo[x].g, 0.0f, 1.0f);
                values[5] = clampFinite(row.albedo[x].b, 0.0f, 1.0f);
            }
            if (row.normals != nullptr) {
                values[6] = encodeNormal(row.normals[x].r);
                values[7] = encodeNormal(row.normals[x].g);
                values[8] = encodeNormal(row.normals[x].b);
            }
        }
        for (int i = 0; i < blocks; ++i) {
            std::memcpy(channels.getRow(i, y) + x * block, values + i * blockSize,
                        block * sizeof(float));
        }
    }
}

}  // namespace

void writeTile(Scheduler& scheduler, const NetworkInput& input, const PixelCode& code,
               const Tile& tile, const TiledNetwork::Channels& channels) {
    const auto firstColumn = static_cast<std::size_t>(tile.origin.x);
    const int width = std::min(channels.size.x, input.picture->getWidth() - tile.origin.x);
    const auto getRow = [&](const BitmapImpl<Rgb>* bitmap, int y) {
        return bitmap == nullptr ? nullptr : bitmap->row(y).data() + firstColumn;
    };
    const auto writeRows = [&](std::int64_t from, std::int64_t to) {
        std::vector<Rgb> encoded(static_cast<std::size_t>(width));
        for (int y = static_cast<int>(from); y < to; ++y) {
            const int imageY = tile.origin.y + y;
            InputRow row;
            if (imageY < input.picture->getHeight()) {
                code.encode(input.picture->row(imageY).subspan(firstColumn, encoded.size()),
                            encoded);
                row.picture = encoded;
                row.albedo = getRow(input.albedo, imageY);
                row.normals = getRow(input.normals, imageY);
            }
            writeRow(row, countInputs(input), y, channels);
        }
    };
    scheduler.parallelForRanges(0, channels.size.y, kRowsPerTask, TaskPriority::Normal, writeRows);
}

void readTile(Scheduler& scheduler, const TiledNetwork::Channels& channels, const PixelCode& code,
              const Tile& tile, BitmapImpl<Rgb>& result) {
    const auto [x0, y0, x1, y1] = tile.result;
    const auto readRows = [&, x0 = x0, x1 = x1](std::int64_t from, std::int64_t to) {
        for (int y = static_cast<int>(from); y < to; ++y) {
            const auto row = result.row(y).subspan(static_cast<std::size_t>(x0),
                                                   static_cast<std::size_t>(x1 - x0));
            const float* values = channels.getRow(0, y - tile.origin.y) +
                                  std::int64_t{x0 - tile.origin.x} * channels.blockSize;
            for (Rgb& pixel : row) {
                pixel = {values[0], values[1], values[2], 0.0f};
                values += channels.blockSize;
            }
            code.decode(row, row);
        }
    };
    scheduler.parallelForRanges(y0, y1, kRowsPerTask, TaskPriority::Normal, readRows);
}

}  // namespace tavrin::postcore
