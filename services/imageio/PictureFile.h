#pragma once

#include "foundation/BinaryFileOutputStream.h"
#include "foundation/Path.h"
#include "foundation/TaskProgress.h"
#include "services/imageio/SampleEncoder.h"
#include "services/imageio/openimageio/WritePicture.h"

#include <cstddef>
#include <cstdint>
#include <exception>

namespace tavrin::imageio {

/// The program's side of writing one picture: hands out rows of samples, takes the bytes of the
/// file and keeps the first failure, because no exception may pass through the picture library.
/// Without write() nothing of the file remains.
class PictureFile {
public:
    /// Throws an Exception that names the file when it cannot be created. The encoder and the
    /// progress outlive the object.
    PictureFile(const Path& path, const SampleEncoder& encoder, const TaskProgress& progress)
        : path_(path), stream_(path), encoder_(encoder), progress_(progress) {}

    /// Lets the writer do the work; afterwards the file is in its place. Throws an Exception that
    /// names the file.
    void write(WritePicture writer, WritePictureRequest request);

private:
    /// Takes a step unless an earlier one failed; false when this one or an earlier one failed.
    template <class Step>
    bool attempt(const Step& step) noexcept;
    void provideRows(int begin, int end, void* samples);
    void storeBytes(std::uint64_t position, const void* bytes, std::size_t count);
    [[noreturn]] void fail(const String& reason) const;

    Path path_;
    BinaryFileOutputStream stream_;
    const SampleEncoder& encoder_;
    const TaskProgress& progress_;
    std::uint64_t position_ = 0;
    std::exception_ptr failure_;
};

/// The sentence for a file that cannot be written.
String tellWriteFailure(const Path& path, const String& reason);

}  // namespace tavrin::imageio
