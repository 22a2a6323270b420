#include "trainer/NewestWork.h"

#include <future>

#include "support/Testing.h"

namespace dravik::test {

using namespace trainer;
namespace {

constexpr std::chrono::milliseconds kLong = std::chrono::minutes(1);

TEST(NewestWork, WhatWasStartedBeforeIsStoppedAndDropped) {
    std::string told;
    std::atomic<bool> isStopped = false;
    std::promise<void> began;
    NewestWork work;
    work.start([&](const std::stop_token& stop) -> NewestWork::Delivery {
        began.set_value();
        while (!stop.stop_requested()) std::this_thread::yield();
        isStopped = true;
        return [&] { told += "first "; };
    });
    began.get_future().wait();
    EXPECT_FALSE(work.deliver(std::chrono::milliseconds(1))) << "it goes on";
    work.start([&](const std::stop_token&) -> NewestWork::Delivery {
        return [&, from = std::this_thread::get_id()] {
            EXPECT_NE(from, std::this_thread::get_id());
            told += "second ";
        };
    });
    EXPECT_TRUE(work.deliver(kLong));
    EXPECT_TRUE(isStopped);
    EXPECT_EQ(told, "second ");
    EXPECT_FALSE(work.busy());
    EXPECT_FALSE(work.deliver(kLong)) << "once";

    work.start(
        [](const std::stop_token&) -> NewestWork::Delivery { throw Failure(RuntimeError::OutOfMemory); });
    EXPECT_THROW(work.deliver(kLong), Failure);
    EXPECT_FALSE(work.busy());
    // Its end waits for what goes on.
    work.start([](const std::stop_token& stop) -> NewestWork::Delivery {
        while (!stop.stop_requested()) std::this_thread::yield();
        return {};
    });
}

}  // namespace
}  // namespace dravik::test
