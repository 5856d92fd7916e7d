#include "cli/FormatList.h"

#include "services/imageio/ImageFormat.h"

#include <ostream>
#include <string>

namespace tavrin::cli {
namespace {

using imageio::BitDepth;
using imageio::ImageFormatInfo;

std::string getText(const String& text) {
    return text.toUtf8();
}

std::string getText(BitDepth depth) {
    return imageio::toString(depth).toUtf8();
}

template <class T>
std::string join(const std::vector<T>& items, const char* separator) {
    std::string joined;
    for (const T& item : items) {
        joined += (joined.empty() ? "" : separator) + getText(item);
    }
    return joined;
}

void printFormat(std::ostream& out, const ImageFormatInfo& format) {
    out << getText(format.name) << ": " << getText(format.displayName) << " (."
        << join(format.extensions, ", .") << ")" << (format.carriesAlpha ? ", alpha" : "")
        << (format.holdsFloats() ? ", floating point" : "") << '\n';
    if (format.bitDepths.size() > 1) {
        out << "  bitdepth=" << join(format.bitDepths, "|") << '\n';
    }
    if (format.quality) {
        out << "  quality=1..100 (" << *format.quality << " by default)\n";
    }
    if (!format.compressions.empty()) {
        out << "  compression=" << join(format.compressions, "|") << '\n';
    }
}

}  // namespace

void printFormats(std::ostream& out) {
    out << "txr: TXR image (.txr), the whole image with all elements\n";
    for (const ImageFormatInfo& format : imageio::getImageFormats()) {
        printFormat(out, format);
    }
}

}  // namespace tavrin::cli
