// A camera as the operator has it in the window: found, live, adjusted, frozen, lost and back.

#include "camera/Cameras.h"
#include "camera/support/FakeCamera.h"
#include "screen/support/ScriptedPlatform.h"
#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

using namespace trainer;

struct CameraSystem : FileChooser {
    bool hasCameras() const override { return camera::hasCameras(); }
    std::unique_ptr<camera::Camera> makeCamera() override { return camera::makeCamera(); }
    void writeImage(const engine::GreyImage& image, const std::string& file) override {
        if (full) throw Failure(RuntimeError::DiskFull);
        writePgm(file, image);
    }

    bool full = false;
};

class CameraWindow : public testing::Test {
  protected:
    template <class Control>
    Control& in(const char* name) {
        return dynamic_cast<Control&>(*form().find(name));
    }
    CameraForm& form() { return dynamic_cast<CameraForm&>(platform.opened("cameraForm")); }
    std::string state() { return in<Label>("lblState").caption(); }
    // As the form's timer does it.
    template <class Condition>
    bool comes(Condition condition) {
        return within(30s, [&] {
            form().timer.tick();
            return condition();
        });
    }
    // Another image of the camera than that which is shown now.
    bool nextImageComes() {
        const engine::GreyImage* const before = window.view.image();
        return comes([&] { return window.view.image() && window.view.image() != before; });
    }

    const std::string serial = "WINDOW" + std::to_string(getpid());
    FakeCamera fake{serial};
    TemporaryFolder folder;
    ScriptedPlatform platform;
    CameraSystem system;
    Trainer trainer{platform, JobFolder(folder.path("Jobs")), readPgm, false};
    TrainerWindow window{trainer, platform, system};
};

TEST_F(CameraWindow, IsLiveFrozenLostAndBack) {
    ASSERT_TRUE(window.actions.camera.visible());
    window.view.setViewport(400, 300);
    window.actions.camera.trigger();
    auto& list = in<ListBox>("lbCameras");
    ASSERT_TRUE(comes([&] {
        for (const std::string& one : list.items())
            if (one.find(serial) != std::string::npos) {
                list.setText(one);
                return true;
            }
        form().cmdRefresh.press();
        return false;
    }));
    form().cmdConnect.press();
    ASSERT_TRUE(nextImageComes()) << state();
    EXPECT_THAT(state(), StartsWith("Live: "));
    EXPECT_TRUE(nextImageComes());

    // Settings go to the camera, whose own numbers are shown.
    ASSERT_TRUE(in<TextBox>("txtExposure").enabled());
    in<TextBox>("txtExposure").setText("2500");
    form().cmdApply.press();
    std::this_thread::sleep_for(300ms);
    ASSERT_TRUE(comes([&] { return in<TextBox>("txtExposure").text() == "2500"; }));
    EXPECT_THAT(in<Label>("lblExposureRange").caption(), HasSubstr(" to "));

    // A picture that cannot be kept is told and stays live.
    system.full = true;
    window.actions.freeze.trigger();
    ASSERT_EQ(window.problems().size(), 1u);
    EXPECT_THAT(window.problems()[0], HasSubstr("Disk full"));
    EXPECT_TRUE(nextImageComes());

    // Frozen it is an opened image like every other, in a file that stays.
    system.full = false;
    window.actions.freeze.trigger();
    ASSERT_EQ(trainer.parts().count(), 1);
    EXPECT_EQ(window.view.image(), &trainer.parts().image());
    EXPECT_TRUE(std::filesystem::exists(toPath(trainer.parts().path(0))));
    EXPECT_THAT(trainer.parts().path(0), StartsWith(JobFolder(folder.path("Jobs")).imagesFolder()));
    form().timer.tick();
    EXPECT_EQ(window.view.image(), &trainer.parts().image()) << "it stays until live is wanted again";
    window.actions.freeze.trigger();
    EXPECT_TRUE(nextImageComes());
    window.actions.freeze.trigger();
    EXPECT_EQ(trainer.parts().count(), 2);
    window.actions.freeze.trigger();
    EXPECT_TRUE(nextImageComes());
    window.strip.choose(0);
    EXPECT_EQ(window.view.image(), &trainer.parts().image()) << "what is chosen is seen";

    // One image for each press of Trigger.
    in<ComboBox>("cboTrigger").setText("Trigger");
    ASSERT_TRUE(comes([&] { return form().cmdTrigger.enabled(); }));
    std::this_thread::sleep_for(500ms);
    form().timer.tick();
    form().cmdTrigger.press();
    EXPECT_TRUE(nextImageComes()) << state();
    in<ComboBox>("cboTrigger").setListIndex(0);

    fake.stop();
    ASSERT_TRUE(comes([&] { return state().starts_with("The camera is lost"); })) << state();
    fake.start();
    ASSERT_TRUE(comes([&] { return state().starts_with("Live"); })) << state();
    form().chkLive.setChecked(true);
    EXPECT_TRUE(nextImageComes()) << state();

    form().cancelButton->press();
    EXPECT_EQ(window.view.image(), &trainer.parts().image());
    EXPECT_TRUE(platform.open.empty());
}

}  // namespace
}  // namespace dravik::test
