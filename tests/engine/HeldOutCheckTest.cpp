#include "engine/embedded/HeldOutCheck.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

Sample sampleOf(char label, int shape, int number) {
    Sample sample;
    sample.code = label;
    for (int k = 0; k < static_cast<int>(kInputCount); ++k)
        sample.inputs[static_cast<std::size_t>(k)] =
            static_cast<float>((k * (shape + 2) + shape * 5) % 7) / 7 +
            0.01f * static_cast<float>((number + k) % 3);
    return sample;
}

const auto kGoOn = [] { return true; };

// Characters that look alike are told from those that do not, by name and number, the same each time.
TEST(HeldOutCheck, CountsWhatIsReadAsWhat) {
    SampleStore store;
    std::vector<Sample> samples{sampleOf('Z', 6, 0)};
    for (int i = 0; i < 10; ++i) {
        samples.push_back(sampleOf('A', 1, i));
        samples.push_back(sampleOf('B', 2, i));
        // Of all that look like O the label 0 is the rarer.
        samples.push_back(sampleOf(i < 3 ? '0' : 'O', 3, 0));
    }
    store.include(samples);
    store.commit();
    const auto columns = store.columns(SampleKind::Committed);
    const auto result = checkHeldOut(*columns, 1, kGoOn);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->folds, 5);
    EXPECT_EQ(result->checked, 30);
    EXPECT_THAT(result->unchecked, testing::ElementsAre('Z'));
    ASSERT_EQ(result->misread.size(), 3u);
    EXPECT_EQ(result->misread[0].readAs, 'O');
    EXPECT_EQ(result->misread[0].serial, 4u);
    EXPECT_EQ(result->wrong, 3);
    ASSERT_EQ(result->confusions.size(), 1u);
    EXPECT_EQ(heldOutText(*result),
              "Held-out check (5-fold): 90.0 % right, 3 of 30 wrong: 0 read as O 3 times; "
              "a single sample of Z");
    EXPECT_EQ(heldOutText(*checkHeldOut(*columns, 1, kGoOn)), heldOutText(*result));
}

// Each sample is like one of the other character that is learnt when it is asked for.
TEST(HeldOutCheck, AsksNothingThatWasLearnt) {
    SampleStore store;
    store.include({sampleOf('A', 3, 0), sampleOf('A', 1, 0), sampleOf('B', 1, 1), sampleOf('B', 3, 1)});
    store.commit();
    const auto result = checkHeldOut(*store.columns(SampleKind::Committed), 1, kGoOn);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->checked, 4);
    EXPECT_EQ(result->wrong, 4);
}

TEST(HeldOutCheck, NamesTheThreeMostFrequentAndNeverRoundsUpToAll) {
    EXPECT_EQ(heldOutText({5, 10'000, 1, {}, {{'l', '1', 1}}, {}}),
              "Held-out check (5-fold): 99.9 % right, 1 of 10000 wrong: l read as 1 once");
    EXPECT_EQ(
        heldOutText(
            {2, 8, 8, {'Q', '7', 0xE9}, {{'a', 'b', 3}, {'b', 'c', 2}, {0xE9, 'e', 2}, {'x', 'y', 1}}, {}}),
        "Held-out check (2-fold): 0.0 % right, 8 of 8 wrong: a read as b 3 times, b read as c twice, "
        "\xC3\xA9 read as e twice; a single sample each of Q, 7, \xC3\xA9");
}

TEST(HeldOutCheck, NeedsTwoCharactersAndEndsWhenToldSo) {
    SampleStore store;
    store.include({sampleOf('A', 1, 0), sampleOf('A', 1, 1), sampleOf('B', 2, 0)});
    store.commit();
    EXPECT_FALSE(checkHeldOut(*store.columns(SampleKind::Committed), 1, kGoOn));
    store.include({sampleOf('B', 2, 1)});
    store.commit();
    const auto columns = store.columns(SampleKind::Committed);
    EXPECT_TRUE(checkHeldOut(*columns, 1, kGoOn));
    int asked = 0;
    EXPECT_FALSE(checkHeldOut(*columns, 1, [&asked] { return ++asked < 3; }));
    EXPECT_LT(asked, 6);

    // One that is stopped has no result; one that is destroyed while it goes on ends its thread.
    HeldOutWorker worker;
    worker.start(columns, 1);
    worker.stop();
    EXPECT_FALSE(worker.running());
    EXPECT_EQ(worker.result(), nullptr);
    worker.start(columns, 1);
    while (worker.running()) std::this_thread::yield();
    EXPECT_NE(worker.result(), nullptr);
    worker.start(columns, 1);
}

}  // namespace
}  // namespace dravik
