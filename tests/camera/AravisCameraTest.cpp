#include "camera/aravis/AravisCamera.h"

#include "camera/support/FakeCamera.h"

namespace dravik::test {
namespace {

using camera::AravisCamera;
using camera::CameraState;

TEST(AravisCamera, OneThatIsNotThereIsToldAndLetGoAtOnce) {
    AravisCamera camera;
    camera.open("Nobody-0000", {});
    ASSERT_TRUE(within(30s, [&] { return camera.state().problem != ""; }));
    EXPECT_EQ(camera.state().phase, CameraState::Phase::Connecting);
    camera.close();
    EXPECT_EQ(camera.state().phase, CameraState::Phase::Closed);
}

}  // namespace
}  // namespace dravik::test
