#include "foundation/platform/File.h"

#include "foundation/Exception.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <random>
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

/// The way to a file that a link stands for, so that replacing it keeps the link.
Path resolved(const Path& target) {
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::canonical(target.std(), error);
    return error ? target : Path(canonical);
}

std::string randomName() {
    static constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    static std::atomic<unsigned> counter{0};
    std::mt19937 generator(std::random_device{}() ^ (counter.fetch_add(1) * 0x9E3779B9u));
    std::uniform_int_distribution<std::size_t> letter(0, sizeof(kLetters) - 2);
    std::string name;
    for (int i = 0; i < 10; ++i) {
        name += kLetters[letter(generator)];
    }
    return name;
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

Path createTemporaryBeside(const Path& target) {
    const Path real = resolved(target);
    mode_t mode = 0666;
    struct stat status {};
    const bool exists = stat(real.std().c_str(), &status) == 0;
    if (exists) {
        // Not the bits that let a program run as its owner: the new file may have another one.
        mode = status.st_mode & 0777;
    }
    const String extension = real.extension();
    for (int attempt = 0; attempt < 100; ++attempt) {
        Path candidate = real.withFileName(".tavrin-" + String::fromUtf8(randomName()) +
                                           (extension.isEmpty() ? String() : "." + extension));
        const int descriptor =
            open(candidate.std().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0) {
            if (exists) {
                // The umask may have taken rights away that the existing file has. Keeping them
                // is a courtesy, not a condition.
                static_cast<void>(fchmod(descriptor, mode));
            }
            ::close(descriptor);
            return candidate;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    failWithErrno(target, kCannotWrite);
}

void replaceFile(const Path& from, const Path& to) {
    if (std::rename(from.std().c_str(), resolved(to).std().c_str()) != 0) {
        failWithErrno(to, kCannotWrite);
    }
}

void removeFile(const Path& path) noexcept {
    static_cast<void>(unlink(path.std().c_str()));
}

void checkWritable(const Path& target) {
    struct stat status {};
    if (stat(target.std().c_str(), &status) != 0) {
        if (errno != ENOENT) {
            failWithErrno(target, kCannotWrite);
        }
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

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
