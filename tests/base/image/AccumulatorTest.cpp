#include "base/image/Accumulator.h"
#include "foundation/Scheduler.h"

#include "TestExr.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace tavrin::image {
namespace {

using testing::ElementsAre;
using testing::NanSensitiveFloatEq;
using testing::Pointwise;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr int kMaxInt = std::numeric_limits<int>::max();
const String kSums = "TAVRIN_FB_WEIGHTS";
const std::string kPropertiesDiffer =
    "One or more postprocessing properties differed among the merged images. Using properties from "
    "the first image.";
const std::string kElementsDiffer =
    "Element metadata differed among the merged images. Using element metadata from the first "
    "image.";
const std::string kNotTxr =
    "One or more of the merged images have not been recognized as TXR images. The resulting "
    "postprocessing properties and/or render statistics of the merged image may be incorrect.";

struct Part {
    Weight weight;
    ChannelImage image;
};

struct Merged {
    ChannelImage image;
    std::vector<std::string> warnings;
};

Merged merge(const std::vector<Part>& parts) {
    std::vector<std::string> warnings;
    Accumulator accumulator(kSums,
                            [&warnings](const String& text) { warnings.push_back(text.toUtf8()); });
    for (const Part& part : parts) {
        accumulator.add(part.weight, part.image);
    }
    accumulator.finish();
    return {accumulator.takeImage(), warnings};
}

void setValues(ChannelImage& image, const String& channel, const std::vector<float>& values) {
    if (!values.empty()) {
        image.addChannel(channel);
        image.fitChannelsToDataWindow();
        std::ranges::copy(values, image.getChannel<float>(channel).getData());
    }
}

std::vector<float> getValues(const ChannelImage& image, const String& channel) {
    const auto values = image.getChannel<float>(channel).getValues();
    return {values.begin(), values.end()};
}

TEST(Accumulator, GivesTheMeansThatAreWorkedOutByHand) {
    struct Input {
        Bucket window;  // within 0 to 3, the first row
        Weight weight;
        std::vector<float> values, weights;
    };
    const String w = "W";
    const Bucket all{0, 0, 3, 1};
    const struct {
        const char* what;
        std::vector<Input> inputs;
        std::vector<float> means, sums;
    } cases[] = {
        {"a constant weight counts where the image has no pixels",
         {{all, 1.0f, {2, 2, 2}, {}}, {{1, 0, 2, 1}, 3.0f, {6}, {}}},
         {0.5f, 5, 0.5f},
         {4, 4, 4}},
        {"black without weight",
         {{all, w, {2, kNan, 4}, {0, 1, -0.0f}}, {all, w, {3, 7, 5}, {0, 1, 0}}},
         {0, kNan, 0},
         {0, 2, 0}},
        {"no weight at all", {{all, 0.0f, {2, 3, 4}, {}}}, {0, 0, 0}, {0, 0, 0}},
        {"weights that cancel out",
         {{all, 1.0f, {2, 3, 4}, {}}, {all, -1.0f, {1, 1, 1}, {}}},
         {0, 0, 0},
         {0, 0, 0}},
        {"a weight that is not a number",
         {{all, w, {2, 3, 4}, {1, kNan, 2}}, {{0, 0, 2, 1}, w, {4, 4}, {1, 1}}},
         {3, kNan, 4},
         {2, kNan, 2}},
    };
    for (const auto& [what, inputs, means, sums] : cases) {
        std::vector<Part> parts;
        for (const auto& [window, weight, values, weights] : inputs) {
            parts.push_back({weight, ChannelImage(all, window, 1.0f)});
            setValues(parts.back().image, "Mask", values);
            setValues(parts.back().image, w, weights);
        }
        const Merged merged = merge(parts);
        EXPECT_THAT(getValues(merged.image, "Mask"), Pointwise(NanSensitiveFloatEq(), means))
            << what;
        EXPECT_THAT(getValues(merged.image, kSums), Pointwise(NanSensitiveFloatEq(), sums)) << what;
        EXPECT_FALSE(merged.image.hasChannel<float>(w)) << what;
        EXPECT_THAT(merged.warnings, ElementsAre()) << what;
    }
}

TEST(Accumulator, FirstImageShapesTheResult) {
    const struct {
        Bucket display, data, expected;
    } cases[] = {{{-1, 0, 4, 4}, {1, 2, 3, 4}, {-1, 0, 4, 4}},
                 {{1, 2, 3, 4}, {-1, 0, 4, 4}, {-1, 0, 4, 4}},
                 {{0, 0, 2, 2}, {1, -1, 3, 1}, {0, -1, 3, 2}},
                 {{2, 2, 2, 9}, {1, -1, 3, 1}, {1, -1, 3, 1}},
                 {{0, 0, 2, 2}, {0, 1, 2, 1}, {0, 0, 2, 2}}};
    for (const auto& [display, data, expected] : cases) {
        std::vector<Part> parts;
        parts.push_back({"Samples", makeImage(display, data, {"R", kSums, "Samples"})});
        addIntegers(parts[0].image);
        parts[0].image.fitChannelsToDataWindow();
        parts[0].image.setAttribute("tavrin.elements", String("Key"));
        parts.push_back({1.0f, makeImage(display, data, {"R", "Later", "Samples", "Id"})});
        const ChannelImage image = merge(parts).image;
        std::vector<std::string> names;
        for (const auto& [name, channel] : image.getChannels()) {
            EXPECT_TRUE(image.hasChannel<float>(name));
            names.push_back(name.toUtf8());
        }
        EXPECT_THAT(names, ElementsAre("R", kSums.toUtf8()));
        EXPECT_EQ(image.getDisplayWindow(), expected);
        EXPECT_EQ(image.getDataWindow(), expected);
        EXPECT_EQ(image.getAttribute<float>("gamma"), 2.2f);
        EXPECT_EQ(image.getAttributes().size(), 3u);
        EXPECT_TRUE(image.isValid());
    }
}

/// A channel of positive numbers, some zero, that differ between images and channels.
void fillChannel(ChannelImage& image, const String& name, std::size_t seed) {
    image.addChannel(name);
    image.fitChannelsToDataWindow();
    std::size_t index = 0;
    for (float& value : image.getChannel<float>(name).getValues()) {
        value = index % 7 == 3 ? 0.0f : std::abs(TestExr::noise(seed, index));
        ++index;
    }
}

/// Sums in double precision over the pixels of a canvas.
struct Reference {
    std::vector<double> sums, weights;
};

/// An absent channel counts as black.
Reference sumUp(const std::vector<Part>& parts, const Bucket& canvas, const String& channel) {
    Reference reference;
    for (int y = canvas.y0; y < canvas.y1; ++y) {
        for (int x = canvas.x0; x < canvas.x1; ++x) {
            double sum = 0;
            double weightSum = 0;
            for (const Part& part : parts) {
                const ChannelImage& image = part.image;
                const Bucket& window = image.getDataWindow();
                const auto get = [&](const String& name) {
                    const int index = (y - window.y0) * window.width() + (x - window.x0);
                    return window.contains({x, y, x + 1, y + 1}) && image.hasChannel<float>(name)
                               ? double{image.getChannel<float>(name).getData()[index]}
                               : 0.0;
                };
                const auto* name = std::get_if<String>(&part.weight);
                const double factor = name ? get(*name) : double{std::get<float>(part.weight)};
                // The channel of the weights is not merged.
                sum += name && *name == channel ? 0.0 : factor * get(channel);
                weightSum += factor;
            }
            reference.sums.push_back(sum);
            reference.weights.push_back(weightSum);
        }
    }
    return reference;
}

bool isClose(double value, double expected) {
    return std::abs(value - expected) <= 1e-6 * std::abs(expected);
}

Bucket anyBucketIn(const Bucket& outer) {
    const int x0 = *rc::gen::inRange(outer.x0, outer.x1);
    const int y0 = *rc::gen::inRange(outer.y0, outer.y1);
    return {x0, y0, *rc::gen::inRange(x0, outer.x1) + 1, *rc::gen::inRange(y0, outer.y1) + 1};
}

RC_GTEST_PROP(Accumulator, GivesTheWeightedMeanOfAnyParts, ()) {
    const int x0 = *rc::gen::inRange(-50, 50);
    const int y0 = *rc::gen::inRange(-50, 50);
    const Bucket canvas{x0, y0, x0 + *rc::gen::inRange(1, 60), y0 + *rc::gen::inRange(1, 60)};
    std::vector<Part> parts;
    const std::size_t count = *rc::gen::inRange<std::size_t>(1, 6);
    for (std::size_t i = 0; i < count; ++i) {
        parts.push_back({float(*rc::gen::inRange(0, 100)) * 0.3f,
                         ChannelImage(canvas, anyBucketIn(canvas), 1.0f)});
        std::size_t seed = i * 10;
        for (const char* name : {"R", "G", "Key.B", "W"}) {
            if (*rc::gen::inRange(0, 4) != 0) {
                fillChannel(parts.back().image, name, seed++);
            }
        }
        // Under a constant weight W is a channel as any other.
        if (parts.back().image.hasChannel<float>("W") && *rc::gen::arbitrary<bool>()) {
            parts.back().weight = String("W");
        }
    }
    const ChannelImage image = merge(parts).image;
    for (const char* name : {"R", "G", "Key.B", "W"}) {
        const bool isMerged =
            parts[0].image.hasChannel<float>(name) && parts[0].weight != Weight(String(name));
        RC_ASSERT(image.hasChannel<float>(name) == isMerged);
        const Reference expected = sumUp(parts, canvas, name);
        const auto weights = getValues(image, kSums);
        const auto values = isMerged ? getValues(image, name) : std::vector<float>();
        for (std::size_t i = 0; i < expected.weights.size(); ++i) {
            RC_ASSERT(isClose(weights.at(i), expected.weights[i]));
            if (isMerged) {
                const double weight = expected.weights[i];
                RC_ASSERT(isClose(values.at(i), weight == 0 ? 0 : expected.sums[i] / weight));
            }
        }
    }
}

TEST(Accumulator, GivesTheSameWithAnyNumberOfThreads) {
    const Bucket canvas{0, 0, 401, 307};
    std::vector<Part> parts;
    for (const Bucket& window : {canvas, Bucket{3, 5, 400, 300}, Bucket{100, 0, 401, 290}}) {
        parts.push_back({String("W"), makeImage(canvas, window, {"W", "R", "G", "B"})});
    }
    parts[1].weight = 0.7f;
    Scheduler::setThreadCount(1);
    const Planes expected = getPlanes(merge(parts).image);
    for (const int threads : {2, 4}) {
        Scheduler::setThreadCount(threads);
        EXPECT_TRUE(getPlanes(merge(parts).image) == expected) << threads;
    }
    Scheduler::setThreadCount(0);
}

struct Statistics {
    int passes, time, raysPerSecond;
    float raysPerSample;

    friend bool operator==(const Statistics&, const Statistics&) = default;
};

ChannelImage makePlain() {
    return makeImage({0, 0, 1, 1}, {0, 0, 1, 1}, {"R"});
}

ChannelImage makeTxr(const Statistics& statistics = {1, 1, 1, 1.0f}) {
    ChannelImage image = makePlain();
    image.setAttribute("tavrin.istavrinexr", 1);
    image.setAttribute("tavrin.stats.passes", statistics.passes);
    image.setAttribute("tavrin.stats.time", statistics.time);
    image.setAttribute("tavrin.stats.rayspersecond", statistics.raysPerSecond);
    image.setAttribute("tavrin.stats.rayspersample", statistics.raysPerSample);
    return image;
}

template <class T>
ChannelImage makeTxrWith(const char* name, T value) {
    ChannelImage image = makeTxr();
    image.setAttribute(name, value);
    return image;
}

template <class... Images>
Merged mergeEqually(Images... images) {
    std::vector<Part> parts;
    (parts.push_back({1.0f, std::move(images)}), ...);
    return merge(parts);
}

Statistics getStatistics(const ChannelImage& image) {
    EXPECT_TRUE(image.isTxrImage());
    return {image.getAttribute<int>("tavrin.stats.passes"),
            image.getAttribute<int>("tavrin.stats.time"),
            image.getAttribute<int>("tavrin.stats.rayspersecond"),
            image.getAttribute<float>("tavrin.stats.rayspersample")};
}

TEST(Accumulator, SumsStatisticsAndAveragesRaysPerSample) {
    const auto sum = [](const auto&... statistics) {
        return getStatistics(mergeEqually(makeTxr(statistics)...).image);
    };
    using S = Statistics;
    EXPECT_EQ(sum(S{100, 60, 7, 4.0f}, S{150, 90, 8, 6.0f}), (S{250, 150, 15, 5.0f}));
    EXPECT_EQ(sum(S{3, 2, 1, 0.5f}), (S{3, 2, 1, 0.5f}));
    EXPECT_EQ(sum(S{kMaxInt, -kMaxInt, 1, 1}, S{1, -kMaxInt, kMaxInt, 2}, S{-1, 0, 0, 3}),
              (S{kMaxInt - 1, -kMaxInt - 1, kMaxInt, 2}));
    // The count is that of all images.
    EXPECT_EQ(getStatistics(mergeEqually(makeTxr({3, 2, 1, 4.0f}), makePlain()).image),
              (S{3, 2, 1, 2.0f}));
}

TEST(Accumulator, WarnsOnceOfEachDisagreement) {
    const char* bloom = "tavrin.post.bloomIntensity";
    const char* glare = "tavrin.post.glareStreakCount";
    const char* elements = "tavrin.elements";
    const char* older = "tavrin.lightmix.elements";
    const auto merged = [](auto... images) { return mergeEqually(std::move(images)...).warnings; };

    EXPECT_THAT(merged(makePlain(), makeTxrWith(bloom, 1.0f)), ElementsAre());
    EXPECT_THAT(merged(makeTxr(), makePlain(), makePlain()), ElementsAre(kNotTxr));
    EXPECT_THAT(merged(makeTxrWith(bloom, 1.0f), makeTxrWith(bloom, 1.0f), makeTxr()),
                ElementsAre());
    EXPECT_THAT(
        merged(makeTxrWith(bloom, 1.0f), makeTxrWith(bloom, 2.0f), makeTxrWith(bloom, 3.0f)),
        ElementsAre(kPropertiesDiffer));
    EXPECT_THAT(merged(makeTxrWith(glare, 1), makeTxrWith(glare, 1.0f)),
                ElementsAre(kPropertiesDiffer));
    EXPECT_THAT(merged(makeTxrWith(elements, 1), makeTxrWith(elements, 2)),
                ElementsAre(kElementsDiffer));
    EXPECT_THAT(merged(makeTxrWith(older, 1), makePlain(), makeTxrWith(older, 2), makePlain()),
                ElementsAre(kNotTxr, kElementsDiffer));
    EXPECT_THAT(merged(makeTxrWith("tavrin.other", 1), makeTxrWith("tavrin.other", 2)),
                ElementsAre());
}

TEST(Accumulator, KeepsTheFirstValueAndAdoptsWhatItLacks) {
    ChannelImage first = makeTxrWith("tavrin.post.bloomIntensity", 1.0f);
    ChannelImage second = makeTxrWith("tavrin.post.bloomIntensity", 2.0f);
    second.setAttribute("tavrin.post.glareStreakCount", 5);
    second.setAttribute("tavrin.elements", String("Key"));
    second.setAttribute("tavrin.other", 1);
    ChannelImage third = makeTxrWith("tavrin.post.glareStreakCount", 6);
    third.setAttribute("tavrin.lightmix.elements", String("Fill"));
    const Merged merged = mergeEqually(std::move(first), std::move(second), std::move(third));
    const ChannelImage& image = merged.image;
    EXPECT_EQ(image.getAttribute<float>("tavrin.post.bloomIntensity"), 1.0f);
    EXPECT_EQ(image.getAttribute<int>("tavrin.post.glareStreakCount"), 5);
    EXPECT_EQ(image.getAttribute<String>("tavrin.elements"), "Key");
    EXPECT_EQ(image.getAttribute<String>("tavrin.lightmix.elements"), "Fill");
    EXPECT_FALSE(image.getAttributes().contains("tavrin.other"));
    EXPECT_THAT(merged.warnings, ElementsAre(kPropertiesDiffer));
}

}  // namespace
}  // namespace tavrin::image
