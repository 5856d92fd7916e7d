#include "foundation/platform/TemporaryFile.h"

#include "foundation/Exception.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <random>
#include <string>
#include <system_error>

namespace tavrin {
inline namespace foundation {
namespace platform {
namespace {

// As many links as the system itself follows.
constexpr int kMostLinks = 40;
constexpr int kMostNames = 100;

/// The file that a link stands for, which need not exist.
std::filesystem::path resolve(std::filesystem::path path) {
    std::error_code error;
    for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i) {
        const std::filesystem::path pointsTo = std::filesystem::read_symlink(path, error);
        path = path.parent_path() / pointsTo;
    }
    return path;
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

TemporaryFile::TemporaryFile(const Path& target)
    : shownTarget_(target), target_(resolve(target.std())) {
    unsigned mode = 0666;
    struct stat status {};
    isReplacing_ = stat(target_.std().c_str(), &status) == 0;
    if (isReplacing_) {
        // Not the bits that let a program run as its owner: the new file may have another one.
        mode = status.st_mode & 0777;
    }
    if (!createUnnamed(mode)) {
        createNamed(mode);
    }
    if (isReplacing_) {
        // The umask may have taken rights away that the existing file has. Keeping them is a
        // courtesy, not a condition.
        static_cast<void>(fchmod(descriptor_, mode));
    }
}

TemporaryFile::~TemporaryFile() {
    ::close(descriptor_);
    if (isNamed_) {
        static_cast<void>(unlink(path_.std().c_str()));
    }
}

void TemporaryFile::replaceTarget() {
    // The old contents are given up only when the new ones are sure to be there after a crash of
    // the machine. Nothing is given up where there is none, and saving need not wait for the disk.
    if (isReplacing_ && fdatasync(descriptor_) != 0 && errno != EINVAL && errno != EROFS) {
        fail();
    }
    if (!isNamed_) {
        giveName();
    }
    if (std::rename(path_.std().c_str(), target_.std().c_str()) != 0) {
        fail();
    }
    isNamed_ = false;
}

bool TemporaryFile::createUnnamed(unsigned mode) {
    const std::filesystem::path folder = target_.std().parent_path();
    descriptor_ = open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
    if (descriptor_ < 0) {
        return false;
    }
    path_ = std::filesystem::path("/proc/self/fd") / std::to_string(descriptor_);
    if (access(path_.std().c_str(), W_OK) == 0) {
        return true;
    }
    ::close(descriptor_);
    return false;
}

void TemporaryFile::createNamed(unsigned mode) {
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
        path_ = makeName();
        descriptor_ = open(path_.std().c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor_ >= 0) {
            isNamed_ = true;
            return;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    fail();
}

void TemporaryFile::giveName() {
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
        const Path name = makeName();
        if (linkat(AT_FDCWD, path_.std().c_str(), AT_FDCWD, name.std().c_str(),
                   AT_SYMLINK_FOLLOW) == 0) {
            path_ = name;
            isNamed_ = true;
            return;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    fail();
}

Path TemporaryFile::makeName() const {
    return target_.withFileName(".tavrin-" + String::fromUtf8(randomName()));
}

void TemporaryFile::fail() const {
    const std::error_code code(errno, std::generic_category());
    throw Exception("File \"" + shownTarget_.native() +
                    "\" cannot be written: " + String::fromUtf8(code.message()) + ".");
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
