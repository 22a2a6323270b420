#include "support/Testing.h"
#include "ui/Signal.h"

namespace dravik {

using namespace ui;
namespace {

TEST(Signal, SurvivesLeavingAndDestructionWhileItCalls) {
    auto signal = std::make_unique<Signal<>>();
    int calls = 0;
    std::optional<Connection> second;
    signal->subscribe([&] {
        ++calls;
        second.reset();
    });
    second = signal->connect([&] { calls += 100; });
    signal->subscribe([&] {
        ++calls;
        signal.reset();
    });
    signal->subscribe([&] { calls += 1000; });
    (*signal)();
    EXPECT_EQ(calls, 2);
}

TEST(Signal, ASlotThatThrowsLeavesTheSignalUsable) {
    Signal<> signal;
    int calls = 0;
    signal.subscribe([&] {
        if (calls++ == 0) throw 1;
    });
    EXPECT_THROW(signal(), int);
    signal();
    EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace dravik
