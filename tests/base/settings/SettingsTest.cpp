#include "base/settings/Settings.h"
#include "services/postcore/PropertyDescriptor.h"
#include "tests/support/Message.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>

namespace tavrin::settings {
namespace {

using postcore::Property;
using postcore::PropertyDescriptor;
using testing::ElementsAre;
using tests::messageOf;

constexpr int kAmount = 993;
constexpr int kBloom = 353;
constexpr int kGlare = 354;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

bool all(int) {
    return true;
}

/// Counts the calls of an observer and keeps the last value.
struct Calls {
    int count = 0;
    Property last;

    CallbackLifetime observe(Settings& settings, int id) {
        return settings.addObserver(id, [this](int, const Property& value) {
            ++count;
            last = value;
        });
    }
};

TEST(Settings, ReadingStoresTheDefault) {
    Settings settings;
    EXPECT_TRUE(settings.get(kBloom) == PropertyDescriptor::get(kBloom)->defaultValue);
    EXPECT_TRUE(settings.get(kBloom) == PropertyDescriptor::get(kBloom)->defaultValue);
    Settings copy;
    copy.set(kBloom, 7.0f);
    copy.copyFrom(settings, all);
    EXPECT_TRUE(copy.get(kBloom) == PropertyDescriptor::get(kBloom)->defaultValue);
    EXPECT_EQ(messageOf([&] { settings.get(10); }), "Requested property id is not defined.");
}

TEST(Settings, OnlyChangesAreTold) {
    const struct {
        const char* name;
        Property before;
        Property after;
        int calls;
    } cases[] = {
        {"same", 1.0f, 1.0f, 0},
        {"other value", 1.0f, 2.0f, 1},
        {"other type", 1.0f, 1, 1},
        {"not a number again", kNan, -kNan, 0},
        {"undefined again", Property(), Property(), 0},
        {"array", std::vector<int>{1, 2}, std::vector<int>{1, 3}, 1},
    };
    for (const auto& [name, before, after, expected] : cases) {
        Settings settings;
        settings.set(kBloom, before);
        Calls calls;
        const auto lifetime = calls.observe(settings, kBloom);
        settings.set(kBloom, after);
        EXPECT_EQ(calls.count, expected) << name;
        EXPECT_TRUE(settings.get(kBloom) == after) << name;
    }
}

TEST(Settings, FirstWriteIsTold) {
    Settings settings;
    Calls calls;
    auto lifetime = calls.observe(settings, kBloom);
    settings.set(kBloom, PropertyDescriptor::get(kBloom)->defaultValue);
    settings.set(kGlare, 3.0f);
    EXPECT_EQ(calls.count, 1);
    lifetime = {};
    settings.set(kBloom, 3.0f);
    EXPECT_EQ(calls.count, 1);
}

TEST(Settings, ObserversMayReadAndWriteOthers) {
    Settings settings;
    std::string order;
    const auto first = settings.addObserver(kBloom, [&](int id, const Property& value) {
        order += "a";
        EXPECT_TRUE(settings.get(id) == value);
        settings.set(kGlare, value);
        order += "b";
        throw std::runtime_error("first");
    });
    const auto second = settings.addObserver(kBloom, [&](int, const Property&) {
        order += "c";
        throw std::runtime_error("second");
    });
    const auto glare = settings.addObserver(kGlare, [&](int, const Property&) { order += "g"; });
    EXPECT_THROW(settings.set(kBloom, 2.0f), std::runtime_error);
    EXPECT_EQ(order, "agbc");
    EXPECT_TRUE(settings.get(kBloom) == Property(2.0f));
    EXPECT_TRUE(settings.get(kGlare) == Property(2.0f));
}

TEST(Settings, ObserversGetTheValueThatWasWritten) {
    Settings settings;
    Property written = 1.0f;
    const auto first =
        settings.addObserver(kBloom, [&](int, const Property&) { written = Property(5); });
    Calls calls;
    const auto second = calls.observe(settings, kBloom);
    settings.set(kBloom, written);
    EXPECT_TRUE(calls.last == Property(1.0f));
}

TEST(Settings, CopiesWhatTheFilterAcceptsInOrder) {
    Settings source;
    Settings destination;
    source.set(kAmount, 0.5f);
    source.set(kGlare, 2.0f);
    source.set(kBloom, 1.0f);
    std::vector<int> written;
    const auto note = [&](int id, const Property&) { written.push_back(id); };
    const auto bloom = destination.addObserver(kBloom, note);
    const auto glare = destination.addObserver(kGlare, note);
    const auto amount = destination.addObserver(kAmount, note);
    destination.copyFrom(source, [](int id) { return id != kGlare; });
    EXPECT_THAT(written, ElementsAre(kBloom, kAmount));
}

TEST(Settings, CopiesBeforeItValidates) {
    Settings source;
    source.set(kAmount, 1.5f);
    source.set(997, 1.0f);
    Settings destination;
    EXPECT_EQ(messageOf([&] { destination.copyFrom(source, all); }),
              "Property denoiseAmount is invalid. Value is expected to be between 0 and 1.");
    EXPECT_TRUE(destination.get(kAmount) == Property(1.5f));
    EXPECT_TRUE(destination.get(997) == Property(1.0f));
}

TEST(Settings, ValidationTellsOfTheFirst) {
    Settings settings;
    settings.set(20, 1);
    settings.set(10, 1);
    EXPECT_EQ(messageOf([&] { settings.validateAll(); }),
              "Property 10 is invalid. Value is unrecognized.");
    Settings wrong;
    wrong.set(kBloom, 1);
    wrong.set(kAmount, 2.0f);
    EXPECT_EQ(messageOf([&] { wrong.validateAll(); }),
              "Property bloomIntensity is invalid. Value has wrong type.");
}

TEST(Settings, ValidatesOneValue) {
    const struct {
        int id;
        Property value;
        const char* failure;
    } cases[] = {
        {kAmount, 0.5f, ""},
        {kAmount, kNan, ""},
        {kAmount, 1.5f, "Value is expected to be between 0 and 1."},
        {kAmount, true, "Value has wrong type."},
        {403, 16, ""},
        {403, 17, "Value is expected to be between 3 and 16."},
        {381, std::vector<bool>{true}, ""},
        {10, 1, "Value is unrecognized."},
    };
    for (const auto& [id, value, expected] : cases) {
        String failure;
        EXPECT_EQ(Settings::validateValue(id, value, &failure), *expected == '\0') << expected;
        EXPECT_EQ(failure.toUtf8(), expected);
        EXPECT_EQ(Settings::validateValue(id, value), *expected == '\0') << expected;
    }
}

TEST(Settings, KnowsItsOwner) {
    const auto settings = std::make_shared<Settings>();
    EXPECT_EQ(settings->shared_from_this(), settings);
    EXPECT_FALSE(settings->isReadOnly());
}

}  // namespace
}  // namespace tavrin::settings
