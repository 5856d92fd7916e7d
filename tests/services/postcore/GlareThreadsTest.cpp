#include "foundation/Scheduler.h"
#include "services/postcore/bloomglare/GlarePsf.h"

#include <gtest/gtest.h>

#include <thread>

namespace tavrin::postcore {
namespace {

TEST(GlareThreadsTest, GlareIsTheSameOnAnyNumberOfThreadsAndFromSeveral) {
    ApertureParams aperture;
    aperture.isCustom = true;
    aperture.grating.isEnabled = true;
    aperture.scratches.isEnabled = true;
    aperture.dust.isEnabled = true;
    Scheduler::setThreadCount(1);
    const PointSpreadFunction expected = makeGlarePsf({}, aperture, 40);
    Scheduler::setThreadCount(4);
    std::vector<PointSpreadFunction> results(2);
    std::vector<std::thread> threads;
    for (PointSpreadFunction& result : results) {
        threads.emplace_back([&] { result = makeGlarePsf({}, aperture, 40); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    Scheduler::setThreadCount(0);
    for (const PointSpreadFunction& result : results) {
        EXPECT_EQ(result.planes, expected.planes);
    }
}

}  // namespace
}  // namespace tavrin::postcore
