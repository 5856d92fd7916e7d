#include "base/image/Attribute.h"
#include "base/image/Channel.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <vector>

namespace tavrin::image {
namespace {

TEST(Channel, StorageFollowsItsRules) {
    const struct {
        Pixel size;
        std::uint32_t count, capacity;
    } steps[] = {
        {{100, 100}, 10000, 10000},
        {{95, 100}, 9500, 10000},    // 95 %: kept
        {{90, 95}, 8550, 10000},     // exactly 90 %: kept
        {{76, 100}, 7600, 7600},     // below: exactly as much as needed
        {{76, 101}, 7676, 11400},    // grows by half
        {{200, 100}, 20000, 20000},  // or to what is needed
        {{-1, 5}, 0, 0},
        {{4, 1}, 4, 4},
        {{5, 1}, 5, 6},
    };
    Channel<float> channel("Z");
    for (const auto& [size, count, capacity] : steps) {
        const std::uint32_t kept = std::min(channel.getSize(), count);
        std::iota(channel.getData(), channel.getData() + channel.getSize(), 0.0f);
        channel.resize(size);
        EXPECT_EQ(channel.getSize(), count);
        EXPECT_EQ(channel.getCapacity(), capacity) << count;
        for (std::uint32_t i = 0; i < kept; ++i) {
            ASSERT_EQ(channel.getData()[i], static_cast<float>(i));
        }
    }
    EXPECT_THROW(channel.resize(65536u, 65536u), std::bad_alloc);
    EXPECT_EQ(channel.getSize(), 5u);
}

TEST(Channel, ClonesCopyAndMoveClonesTake) {
    Channel<std::uint32_t> channel("Id");
    channel.resize(2, 3);
    std::iota(channel.getValues().begin(), channel.getValues().end(), 7u);
    const std::unique_ptr<IChannel> copy = channel.clone();
    const std::unique_ptr<IChannel> taken = channel.moveClone();
    for (const IChannel* item : {copy.get(), taken.get()}) {
        const auto& clone = dynamic_cast<const Channel<std::uint32_t>&>(*item);
        EXPECT_EQ(clone.getName(), "Id");
        EXPECT_EQ(clone.getWidth(), 2u);
        EXPECT_TRUE(std::ranges::equal(clone.getValues(), std::vector{7, 8, 9, 10, 11, 12}));
    }
    EXPECT_EQ(channel.getWidth() + channel.getSize() + channel.getCapacity(), 0u);
}

TEST(Attribute, EqualsOnlyTheSameTypeNameAndValue) {
    std::vector<std::unique_ptr<IAttribute>> different;
    const auto add = [&different]<class... T>(const char* name, T... values) {
        (different.push_back(std::make_unique<Attribute<T>>(name, values)), ...);
    };
    add("a", 1, 2, 1.0f, 1.0, true, false, String("1"), String(u"\xDC00"), Rgb{1, 2, 3, 4},
        Rgb{1, 2, 4}, Pixel{1, 2}, Pixel{2, 1}, Bucket{1, 2, 3, 4}, Bucket{1, 2, 3, 5});
    add("b", 1);
    for (const auto& left : different) {
        for (const auto& right : different) {
            EXPECT_EQ(left->equals(*right), left == right);
        }
        EXPECT_TRUE(left->clone()->equals(*left));
        EXPECT_TRUE(left->moveClone()->equals(*left));
    }
    EXPECT_TRUE(Attribute<Rgb>("a", {1, 2, 3, 0}).equals(Attribute<Rgb>("a", {1, 2, 3, 9})));
    const Attribute<float> notANumber("a", std::numeric_limits<float>::quiet_NaN());
    EXPECT_FALSE(notANumber.equals(notANumber));
}

}  // namespace
}  // namespace tavrin::image
