// The sample lists against plain vectors, whatever the order in which samples go.
#include "engine/font/SampleStore.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

std::vector<std::uint64_t> serialsOf(const SampleColumns& columns) {
    std::vector<std::uint64_t> serials;
    for (const Sample* sample : columns.samples) serials.push_back(sample->serial);
    return serials;
}

SampleStore storeOf(int committed, int uncommitted) {
    SampleStore store;
    const auto samples = [](int count) {
        std::vector<Sample> result(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) result[static_cast<std::size_t>(i)].code = 'A' + i % 5;
        return result;
    };
    store.include(samples(committed));
    store.commit();
    store.include(samples(uncommitted));
    return store;
}

// Removals upwards, downwards, at one place and anywhere, in both lists, with and without a look in between.
TEST(SampleStore, RemovesTheSampleAtEachPlaceAndNoOther) {
    std::mt19937 random(17);
    SampleStore store = storeOf(400, 60);
    const auto shown = store.columns(SampleKind::Committed);
    const auto atFirst = serialsOf(*shown);
    auto committed = atFirst;
    auto uncommitted = serialsOf(*store.columns(SampleKind::Uncommitted));
    std::size_t place = 0;
    for (int step = 0; step < 350; ++step) {
        const int way = step / 50 % 4;
        if (way == 0) place += 2;
        if (way == 1) place -= std::min<std::size_t>(place, 3);
        if (way == 3) place = random() % 420;
        const bool fromCommitted = random() % 8 != 0;
        auto& expected = fromCommitted ? committed : uncommitted;
        store.remove(fromCommitted ? SampleKind::Committed : SampleKind::Uncommitted, place);
        if (place < expected.size()) expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(place));
        if (random() % 10 != 0) continue;
        ASSERT_EQ(serialsOf(*store.columns(SampleKind::Committed)), committed) << "step " << step;
        ASSERT_EQ(serialsOf(*store.columns(SampleKind::Uncommitted)), uncommitted) << "step " << step;
    }
    const auto left = store.columns(SampleKind::Committed);
    EXPECT_EQ(serialsOf(*left), committed);
    ASSERT_LT(committed.size(), 250U);

    std::size_t counted = 0;
    for (const auto& one : store.statistics().classes()) counted += static_cast<std::size_t>(one.count);
    EXPECT_EQ(counted, committed.size());
    for (std::size_t i = 0; i < left->size(); ++i) EXPECT_EQ(left->codes[i], left->samples[i]->code);

    EXPECT_EQ(serialsOf(*shown), atFirst) << "a table that was queried before must not change";
}

TEST(SampleStore, WhatFollowsARemovalSeesTheListWithoutIt) {
    SampleStore store = storeOf(10, 3);
    store.remove(SampleKind::Uncommitted, 1);
    store.commit();
    EXPECT_EQ(store.columns(SampleKind::Committed)->size(), 12U);

    store.remove(SampleKind::Committed, 4);
    EXPECT_EQ(store.columns(SampleKind::Committed)->samples[4]->serial, 6U);
    store.setDistances(std::vector<std::uint64_t>{6}, std::vector<double>{0.75});
    EXPECT_EQ(store.columns(SampleKind::Committed)->distances[4], 0.75);

    store.include(std::vector<Sample>(1));
    store.remove(SampleKind::Uncommitted, 0);
    store.include(std::vector<Sample>(2));
    EXPECT_EQ(store.columns(SampleKind::Uncommitted)->size(), 2U);
}

Sample sampleAt(std::int32_t code, float level) {
    Sample sample;
    sample.code = code;
    sample.inputs.fill(level);
    return sample;
}

// A sample is judged by all that are there now, not by those that were there when it came; but the largest
// fonts are not measured anew for a change.
TEST(SampleStore, DistancesFollowWhatComesAndGoes) {
    SampleStore store;
    store.include(std::vector<Sample>{sampleAt('A', 0.2f), sampleAt('A', 0.25f), sampleAt('A', 0.4f)});
    store.commit();
    const auto first = store.columns(SampleKind::Committed);
    const std::vector<double> early = first->distances;
    EXPECT_LT(early[2], 0.6);
    for (int i = 0; i < 4; ++i) {
        store.include({sampleAt('B', 0.38f + 0.01f * static_cast<float>(i))});
        store.commit();
    }
    EXPECT_EQ(first->distances, early) << "a table that was queried before must not change";
    EXPECT_GT(store.columns(SampleKind::Committed)->distances[2], 0.9);
    for (int i = 0; i < 4; ++i) store.remove(SampleKind::Committed, 3);
    EXPECT_EQ(store.columns(SampleKind::Committed)->distances, early);

    store.include(std::vector<Sample>(20'000, sampleAt('C', 0.5f)));
    store.commit();
    EXPECT_EQ(store.columns(SampleKind::Committed)->distances[2], early[2]);
    EXPECT_LT(store.columns(SampleKind::Committed)->distances[20'002], 0.1);
}

TEST(DistanceMeasure, OneWrongLabelAmongFourDoesNotSpoilTheOtherThree) {
    SampleStore store;
    store.include({sampleAt('W', 0.2f), sampleAt('W', 0.22f), sampleAt('W', 0.24f), sampleAt('W', 0.8f),
                   sampleAt('M', 0.8f), sampleAt('M', 0.82f), sampleAt('M', 0.84f), sampleAt('M', 0.86f)});
    store.commit();
    const std::vector<double> distances = store.columns(SampleKind::Committed)->distances;
    for (const std::size_t right : {0, 1, 2}) EXPECT_LT(distances[right], 0.1) << right;
    for (const std::size_t right : {4, 5, 6, 7}) EXPECT_LT(distances[right], 0.4) << right;
    EXPECT_GT(distances[3], 0.75);
}

TEST(DistanceMeasure, IsDefinedForSingleSamplesAndASingleCharacter) {
    SampleStore store;
    store.include({sampleAt('A', 0.3f)});
    EXPECT_TRUE(std::isfinite(store.columns(SampleKind::Uncommitted)->distances[0]));
    store.commit();
    EXPECT_LT(store.columns(SampleKind::Committed)->distances[0], 0.5);
    store.include({sampleAt('A', 0.3f), sampleAt('A', 0.31f), sampleAt('B', 0.9f), sampleAt('C', 0.9f)});
    store.commit();
    for (const double distance : store.columns(SampleKind::Committed)->distances)
        EXPECT_TRUE(distance >= 0 && distance <= 1) << distance;
}

}  // namespace
}  // namespace dravik
