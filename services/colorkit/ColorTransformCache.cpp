#include "services/colorkit/ColorTransformCache.h"

#include "foundation/Exception.h"
#include "foundation/Path.h"
#include "foundation/Text.h"
#include "foundation/platform/DynamicLibrary.h"

#include <cstdint>
#include <filesystem>
#include <list>
#include <mutex>
#include <string_view>
#include <utility>

namespace tavrin::colorkit {
namespace {

using TransformResult = Result<SharedPtr<const IColorTransform>>;

constexpr std::size_t kMostEntries = 16;
// Tables of 129³, the most that OpenColorIO takes, have some 60 MB as text.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{256} << 20;

/// A file as it was when it was read.
struct FileState {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;

    friend bool operator==(const FileState&, const FileState&) = default;
};

/// How a request is called in messages, and the file behind it.
struct RequestInfo {
    String name;
    std::filesystem::path file;  ///< empty: there is none
};

struct RequestReader {
    RequestInfo operator()(const LutFile& lut) const {
        return {"The LUT \"" + Path(lut.path).native() + "\"", lut.path};
    }
    RequestInfo operator()(const AcesOutput&) const { return {"The ACES output transform", {}}; }
    RequestInfo operator()(const DisplayView& view) const {
        return {"The OpenColorIO configuration \"" + Path(view.configuration).native() + "\"",
                view.configuration};
    }
};

Result<FileState> examine(const std::filesystem::path& file) {
    if (file.empty()) {
        return FileState();
    }
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status)) {
        return Failure("there is no such file");
    }
    if (!std::filesystem::is_regular_file(status)) {
        return Failure("it is not a file");
    }
    FileState state;
    state.size = std::filesystem::file_size(file, error);
    state.time = std::filesystem::last_write_time(file, error);
    if (state.size > kLargestFile) {
        return Failure("it has more than 256 MB");
    }
    return state;
}

/// The library's words as the end of a sentence: the first format's reason where it tells what each
/// of several formats found wrong, otherwise the first line; without a full stop.
String shorten(const std::string& reason) {
    constexpr std::string_view kFormatReason = "' failed with: ";
    constexpr std::string_view kNextFormat = "    '";
    const std::size_t found = reason.find(kFormatReason);
    std::string part = reason.substr(0, reason.find('\n'));
    if (found != std::string::npos) {
        const std::size_t start = found + kFormatReason.size();
        part = reason.substr(start, reason.find(kNextFormat, start) - start);
    }
    if (part.starts_with("vector::") || part == "std::bad_alloc") {
        return "the sizes in it are impossible";
    }
    String text = Str::escapeControls(String::fromUtf8(part).trimmed()).replaced("  ", " ");
    while (text.endsWith(".")) {
        text = text.substring(0, text.size() - 1);
    }
    return text;
}

class Cache {
public:
    TransformResult get(const ColorTransformRequest& request) {
        const RequestInfo info = std::visit(RequestReader{}, request);
        const Result<FileState> state = examine(info.file);
        if (!state) {
            return Failure(info.name + " cannot be used: " + state.error() + ".");
        }
        // Held while a file is read: who asks for the same one meanwhile gets it afterwards.
        const std::lock_guard lock(mutex_);
        for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
            if (entry->request == request && entry->state == *state) {
                entries_.splice(entries_.begin(), entries_, entry);
                return entry->result;
            }
        }
        entries_.push_front({request, *state, create(request, info.name)});
        if (entries_.size() > kMostEntries) {
            entries_.pop_back();
        }
        return entries_.front().result;
    }

private:
    struct Entry {
        ColorTransformRequest request;
        FileState state;
        TransformResult result;
    };

    static TransformResult create(const ColorTransformRequest& request, const String& name) {
        try {
            static const platform::DynamicLibrary module(
                platform::findModule("tavrin-colorkit-opencolorio"));
            static const auto function = reinterpret_cast<CreateColorTransform>(
                module.getSymbol(kCreateColorTransformSymbol));
            std::string reason;
            SharedPtr<const IColorTransform> transform(function(request, reason));
            if (!transform) {
                return Failure(name + " cannot be used: " + shorten(reason) + ".");
            }
            return transform;
        } catch (const Exception& exception) {
            return Failure(exception.message());
        }
    }

    std::mutex mutex_;
    // Guarded by mutex_; the last used one first.
    std::list<Entry> entries_;
};

}  // namespace

TransformResult getColorTransform(const ColorTransformRequest& request) {
    static Cache cache;
    return cache.get(request);
}

}  // namespace tavrin::colorkit
