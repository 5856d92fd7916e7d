#include "foundation/BinaryFileInputStream.h"
#include "foundation/BinaryFileOutputStream.h"
#include "foundation/TextFile.h"
#include "tests/support/Message.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace tavrin {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using tests::messageOf;

class BinaryFileStream : public testing::Test {
protected:
    Path write(const char* name, std::string_view content) {
        BinaryFileOutputStream stream(folder_ / name);
        stream.write(content.data(), content.size());
        stream.commit();
        return folder_ / name;
    }

    tests::TemporaryFolder folder_;
};

TEST_F(BinaryFileStream, BytesAreReadBackFromAnyPosition) {
    BinaryFileInputStream stream(write("file", std::string_view("ab\0\r\nyz", 7)));
    EXPECT_EQ(stream.getSize(), 7u);
    std::array<char, 3> bytes{};
    stream.read(bytes.data(), 3);
    EXPECT_EQ(stream.getPosition(), 3u);
    stream.seek(4);
    EXPECT_FALSE(stream.isAtEnd());
    stream.read(bytes.data(), 3);
    EXPECT_EQ(bytes, (std::array{'\n', 'y', 'z'}));
    EXPECT_TRUE(stream.isAtEnd());
}

TEST_F(BinaryFileStream, ReadingPastTheEndNamesTheFile) {
    BinaryFileInputStream stream(write("short.exr", "abc"));
    std::array<char, 4> bytes{};
    EXPECT_THAT(messageOf([&] { stream.read(bytes.data(), 4); }),
                AllOf(HasSubstr("short.exr"), HasSubstr("ends before")));
    stream.seek(3);
    EXPECT_TRUE(stream.isAtEnd());
    for (const std::uint64_t position : {std::uint64_t{4}, ~std::uint64_t{0}}) {
        EXPECT_THAT(messageOf([&] { stream.seek(position); }), HasSubstr("short.exr"));
    }
}

TEST_F(BinaryFileStream, WhatIsNoFileIsNotOpened) {
    const struct {
        Path path;
        const char* reason;
    } cases[] = {
        {folder_ / "missing.exr", "No such file"},
        {folder_.path(), "it is a folder"},
        {Path(String("/dev/null")), "it is not a regular file"},
    };
    for (const auto& [path, reason] : cases) {
        EXPECT_THAT(messageOf([&path = path] { BinaryFileInputStream{path}; }),
                    AllOf(HasSubstr('"' + path.native().toUtf8() + '"'), HasSubstr(reason)));
    }
}

TEST_F(BinaryFileStream, OverwritingStartsAtThePosition) {
    BinaryFileOutputStream stream(folder_ / "file");
    stream.write("header", 6);
    stream.seek(0);
    stream.write("HE", 2);
    stream.commit();
    EXPECT_EQ(readTextFile(folder_ / "file", 100).value(), "HEader");
}

TEST_F(BinaryFileStream, FullDiskIsReported) {
    BinaryFileOutputStream stream(Path(String("/dev/full")));
    stream.write("x", 1);
    EXPECT_THAT(messageOf([&] { stream.commit(); }),
                AllOf(HasSubstr("/dev/full"), HasSubstr("No space left")));
}

}  // namespace
}  // namespace tavrin
