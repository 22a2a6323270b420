#include "camera/aravis/AravisCamera.h"

#include <unistd.h>

#include "camera/support/FakeCamera.h"

namespace dravik::test {
namespace {

using camera::AravisCamera;
using camera::CameraState;

std::string identifierOf(AravisCamera& camera, const std::string& serial) {
    std::string identifier;
    within(20s, [&] {
        if (camera.state().searching) return false;
        for (const auto& one : camera.found())
            if (one.serial == serial) identifier = one.identifier;
        if (identifier.empty()) camera.search();
        return !identifier.empty();
    });
    return identifier;
}

TEST(AravisCamera, IsFoundLiveAdjustedTriggeredAndClosed) {
    const std::string serial = "DRAVIK" + std::to_string(getpid());
    FakeCamera fake(serial);
    AravisCamera camera;
    const std::string identifier = identifierOf(camera, serial);
    ASSERT_NE(identifier, "") << "the camera does not answer on the loopback interface";

    camera.open(identifier, {.exposure = 5000.0});
    std::shared_ptr<const engine::GreyImage> image;
    ASSERT_TRUE(within(20s, [&] { return (image = camera.takeImage()) != nullptr; }))
        << camera.state().problem;
    EXPECT_GT(image->width() * image->height(), 10000);
    const auto row = image->row(image->height() / 2);
    EXPECT_NE(*std::min_element(row.begin(), row.end()), *std::max_element(row.begin(), row.end()));
    CameraState state = camera.state();
    EXPECT_EQ(state.phase, CameraState::Phase::Live);
    ASSERT_TRUE(state.exposure);
    EXPECT_NEAR(state.exposure->value, 5000, 1);

    camera.apply({.exposure = 1e12, .gain = -1e12});
    ASSERT_TRUE(within(10s, [&] {
        state = camera.state();
        return state.exposure->value == state.exposure->most;
    }));
    EXPECT_EQ(state.gain->value, state.gain->least);

    // One image for each software trigger, none without.
    camera.apply({.exposure = 5000.0, .trigger = camera::Trigger::Software});
    ASSERT_TRUE(within(10s, [&] {
        camera.takeImage();
        std::this_thread::sleep_for(500ms);
        return !camera.takeImage();
    }));
    const auto before = camera.state().images;
    camera.trigger();
    ASSERT_TRUE(within(10s, [&] { return camera.takeImage() != nullptr; })) << camera.state().problem;
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(camera.state().images, before + 1);
    camera.apply({.exposure = 5000.0});
    EXPECT_TRUE(within(10s, [&] { return camera.takeImage() != nullptr; })) << "without a trigger again";

    camera.close();
    EXPECT_EQ(camera.state().phase, CameraState::Phase::Closed);
    std::this_thread::sleep_for(200ms);
    EXPECT_FALSE(camera.takeImage());
}

TEST(AravisCamera, OneThatIsNotThereIsToldAndLetGoAtOnce) {
    AravisCamera camera;
    camera.open("Nobody-0000", {});
    ASSERT_TRUE(within(30s, [&] { return camera.state().problem != ""; }));
    EXPECT_EQ(camera.state().phase, CameraState::Phase::Connecting);
    camera.close();
}

}  // namespace
}  // namespace dravik::test
