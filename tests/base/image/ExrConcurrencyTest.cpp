#include "base/image/Exr.h"
#include "foundation/Scheduler.h"
#include "tests/support/TemporaryFolder.h"

#include "TestExr.h"
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace tavrin::image {
namespace {

TEST(ExrConcurrency, ThreadsLoadAndSaveFilesOfTheirOwn) {
    const tests::TemporaryFolder folder;
    TestExr{.tiles = {16, 16}}.write(folder / "shared.exr");
    Scheduler::setThreadCount(2);
    std::vector<std::string> problems(4);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < problems.size(); ++i) {
        threads.emplace_back([&folder, &problem = problems[i], i] {
            const Path path = folder / (std::to_string(i) + ".txr");
            const int size = 20 + 30 * int(i);
            const ChannelImage image =
                makeImage({0, 0, size, size}, {0, 0, size, size}, {"R", "G", "B"});
            const Planes planes = getPlanes(image);
            for (int round = 0; round < 5; ++round) {
                const auto saved = ExrSaver().save(image, path);
                const ChannelImage loaded = loadExr(path);
                const ChannelImage shared = loadExr(folder / "shared.exr");
                if (!saved || getPlanes(loaded) != planes || shared.isEmpty()) {
                    problem = "a file is not what has been saved";
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    Scheduler::setThreadCount(0);
    EXPECT_EQ(problems, std::vector<std::string>(problems.size()));
}

}  // namespace
}  // namespace tavrin::image
