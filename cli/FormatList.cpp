#include "cli/FormatList.h"

#include "services/imageio/ImageSaveSettings.h"

#include <ostream>
#include <string>

namespace tavrin::cli {
namespace {

using imageio::ImageFormatInfo;

std::string join(const std::vector<String>& words, const char* separator) {
    std::string joined;
    for (const String& word : words) {
        joined += (joined.empty() ? "" : separator) + word.toUtf8();
    }
    return joined;
}

void printFormat(std::ostream& out, const ImageFormatInfo& format) {
    out << format.name.toUtf8() << ": " << format.displayName.toUtf8() << " (."
        << join(format.extensions, ", .") << ")" << (format.carriesAlpha ? ", alpha" : "")
        << (format.holdsFloats() ? ", floating point" : "") << '\n';
    for (const imageio::ImageSaveChoice& choice : imageio::getImageSaveChoices(format)) {
        out << "  " << choice.key.toUtf8() << '=';
        if (choice.words.empty()) {
            out << "1..100 (" << *format.quality << " by default)\n";
        } else {
            out << join(choice.words, "|") << '\n';
        }
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
