#include "foundation/platform/File.h"

#include "foundation/Exception.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

namespace tavrin {
inline namespace foundation {
namespace platform {
namespace {

[[noreturn]] void fail(const Path& path, const char* what, const String& reason) {
    throw Exception("File \"" + path.native() + "\" " + what + ": " + reason + ".");
}

[[noreturn]] void failWithErrno(const Path& path, const char* what) {
    // std::error_code's text is safe with threads, unlike strerror.
    const std::error_code code(errno, std::generic_category());
    fail(path, what, String::fromUtf8(code.message()));
}

constexpr const char* kCannotOpen = "cannot be opened";
constexpr const char* kCannotRead = "cannot be read";
constexpr const char* kCannotWrite = "cannot be written";

/// Where a file is to appear; a link says itself where that is.
void checkFolder(const Path& target) {
    struct stat status {};
    const std::filesystem::path folder = target.std().parent_path();
    if (lstat(target.std().c_str(), &status) != 0 &&
        access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0) {
        failWithErrno(target, kCannotWrite);
    }
}

}  // namespace

File File::openForReading(const Path& path) {
    struct stat status {};
    if (stat(path.std().c_str(), &status) != 0) {
        failWithErrno(path, kCannotOpen);
    }
    if (S_ISDIR(status.st_mode)) {
        fail(path, kCannotOpen, "it is a folder");
    }
    if (!S_ISREG(status.st_mode)) {
        fail(path, kCannotOpen, "it is not a regular file");
    }
    std::FILE* handle = std::fopen(path.std().c_str(), "rbe");
    if (handle == nullptr) {
        failWithErrno(path, kCannotOpen);
    }
    return {path, handle, kCannotRead};
}

File File::create(const Path& path, const Path& shownPath) {
    std::FILE* handle = std::fopen(path.std().c_str(), "w+be");
    if (handle == nullptr) {
        failWithErrno(shownPath, kCannotWrite);
    }
    return {shownPath, handle, kCannotWrite};
}

File::File(File&& other) noexcept
    : path_(std::move(other.path_)),
      handle_(std::exchange(other.handle_, nullptr)),
      failure_(other.failure_) {}

File::~File() {
    if (handle_ != nullptr) {
        std::fclose(handle_);
    }
}

std::size_t File::read(void* buffer, std::size_t bytes) {
    const std::size_t count = std::fread(buffer, 1, bytes, handle_);
    if (count != bytes && std::ferror(handle_) != 0) {
        failWithErrno(path_, kCannotRead);
    }
    return count;
}

void File::write(const void* buffer, std::size_t bytes) {
    if (std::fwrite(buffer, 1, bytes, handle_) != bytes) {
        failWithErrno(path_, kCannotWrite);
    }
}

void File::seek(std::uint64_t position) {
    if (fseeko(handle_, static_cast<off_t>(position), SEEK_SET) != 0) {
        failWithErrno(path_, failure_);
    }
}

std::uint64_t File::getPosition() {
    const off_t position = ftello(handle_);
    if (position < 0) {
        failWithErrno(path_, failure_);
    }
    return static_cast<std::uint64_t>(position);
}

std::uint64_t File::getSize() const {
    struct stat status {};
    if (fstat(fileno(handle_), &status) != 0) {
        failWithErrno(path_, failure_);
    }
    return static_cast<std::uint64_t>(status.st_size);
}

void File::close() {
    if (std::fclose(std::exchange(handle_, nullptr)) != 0) {
        failWithErrno(path_, kCannotWrite);
    }
}

void checkWritable(const Path& target) {
    struct stat status {};
    if (stat(target.std().c_str(), &status) != 0) {
        if (errno != ENOENT) {
            failWithErrno(target, kCannotWrite);
        }
        checkFolder(target);
        return;
    }
    if (S_ISDIR(status.st_mode)) {
        fail(target, kCannotWrite, "it is a folder");
    }
    if (access(target.std().c_str(), W_OK) != 0) {
        failWithErrno(target, kCannotWrite);
    }
}

bool isDevice(const Path& path) {
    struct stat status {};
    return stat(path.std().c_str(), &status) == 0 && !S_ISREG(status.st_mode) &&
           !S_ISDIR(status.st_mode);
}

void reportFileSizeLimitAsError() {
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
