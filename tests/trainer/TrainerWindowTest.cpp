

#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

class TrainerWindowTest : public TrainerFixture {
  protected:
    std::string enabled() const {
        std::string names;
        for (const auto& menu : window->actions.menus())
            for (const Action* action : menu.entries)
                if (action && action->enabled() && action->visible()) names += action->name() + ' ';
        return names;
    }
};

TEST_F(TrainerWindowTest, OnlyWhatCanBeDoneIsEnabled) {
    window->view.setViewport(500, 300);
    EXPECT_EQ(enabled(),
              "openImages openFolder watchFolder openLabels quit paste keepText readingOnImage imageSettings "
              "viewGraphical viewNumeric viewArray viewLog showGallery theme fontNew fontSelect fontRestore "
              "guide keys about ");
    EXPECT_THAT(window->view.message(), HasSubstr("Ctrl+O"));

    window->open(
        {workspace.draw("a.pgm", "12"), workspace.draw("b.pgm", "345"), workspace.write("c.pgm", "")});
    EXPECT_FALSE(window->actions.previous.enabled());
    EXPECT_TRUE(window->actions.fit.checked());
    window->actions.zoomIn.trigger();
    EXPECT_FALSE(window->actions.fit.checked());
    window->actions.next.trigger();
    EXPECT_EQ(window->partName(), "2 of 3   b.pgm");
    window->actions.next.trigger();
    EXPECT_FALSE(window->actions.next.enabled());
    EXPECT_FALSE(window->actions.zoomIn.enabled()) << "nothing to zoom in a file that is no image";
    EXPECT_THAT(window->viewDescription(), HasSubstr("c.pgm"));
    window->actions.closeAll.trigger();
    EXPECT_FALSE(window->actions.closeAll.enabled());
}

TEST_F(TrainerWindowTest, ImagesThatAreAddedAreCountedBroughtIntoViewAndOfferedAgain) {
    window->strip.setWidth(3 * PartStrip::kItemWidth);
    for (const char* name : {"parts", "more"}) workspace.makeFolder(name);
    std::vector<std::string> first;
    for (int i = 0; i < 8; ++i) first.push_back(workspace.draw("parts/" + std::to_string(i) + ".pgm", "1"));
    window->open(first);
    EXPECT_THAT(window->noticeText(), HasSubstr("Ctrl+N")) << "nothing can be included without a font";
    trainer->tool().CreateFont("f");
    trainer->control().showFont("f");
    EXPECT_EQ(window->noticeText(), "") << "what has come up is seen";
    window->open(
        {first[0], first[1], workspace.draw("more/a&b.pgm", "2"), workspace.draw("more/c.pgm", "3")});
    EXPECT_EQ(window->noticeText(), "2 images added, 2 were open already");
    EXPECT_LE(window->strip.itemPlace(8).right(), 3 * PartStrip::kItemWidth);
    EXPECT_EQ(trainer->parts().current(), 0) << "the image that is worked on stays";
    window->open({first[3]});
    EXPECT_EQ(trainer->parts().current(), 3);

    // Files of one folder are offered as that folder; what is gone is offered no more.
    EXPECT_EQ(toPath(system.kept("recent").substr(0, system.kept("recent").find('\n'))), toPath(first[3]));
    window->open({workspace.path("more/a&b.pgm")});
    window->actions.closeAll.trigger();
    EXPECT_THAT(window->actions.recent[0].text(), HasSubstr("a&&b.pgm"));
    EXPECT_FALSE(window->actions.recent[4].visible());
    TrainerWindow next{*trainer, platform, system};
    next.actions.recent[2].trigger();
    EXPECT_EQ(trainer->parts().count(), 8) << "the folder parts, of another run";
    std::filesystem::remove(toPath(workspace.path("more/a&b.pgm")));
    next.actions.find("recent2").trigger();
    ASSERT_EQ(next.problems().size(), 1u);
    EXPECT_THAT(system.kept("recent"), Not(HasSubstr("a&b")));

    // A picture of the clipboard becomes a file that stays.
    window->actions.paste.trigger();
    EXPECT_EQ(window->noticeText(), "There is no image on the clipboard");
    system.pasted = first[0];
    for (int i = 0; i < 2; ++i) window->actions.paste.trigger();
    EXPECT_EQ(trainer->parts().current(), 9);
    EXPECT_EQ(toPath(trainer->parts().path(9)).parent_path(),
              toPath(JobFolder(workspace.jobs()).imagesFolder()).parent_path());
}

TEST_F(TrainerWindowTest, ImagesThatArriveComeUpUnlessTheOperatorIsBusyElsewhere) {
    for (const char* name : {"parts", "inbox"}) workspace.makeFolder(name);
    window->open({workspace.draw("parts/a.pgm", "1"), workspace.draw("parts/b.pgm", "2")});
    system.chosen = {workspace.path("inbox")};
    window->actions.watchFolder.trigger();
    EXPECT_THAT(window->actions.watchFolder.text(), HasSubstr("inbox"));
    const auto watchUntil = [&](const std::function<bool()>& done) {
        for (int i = 0; i < 300 && !done(); ++i) {
            for (Timer* timer : window->timers())
                if (timer->name() == "tmrWatchedFolder" && timer->enabled()) timer->tick();
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    };
    const auto arrives = [&](const std::string& name) {
        const int before = trainer->parts().count();
        workspace.draw("inbox/" + name, "3");
        watchUntil([&] { return trainer->parts().count() > before; });
        return trainer->parts().current();
    };
    EXPECT_EQ(arrives("one.pgm"), 0) << "an earlier image is worked on";
    EXPECT_EQ(window->noticeText(), "1 image arrived");
    trainer->parts().setCurrent(2);
    EXPECT_EQ(arrives("two.pgm"), 3);
    box().keyDown('3', 0);
    EXPECT_EQ(arrives("three.pgm"), 3) << "a text is being typed for this one";
    const auto inbox = toPath(workspace.path("inbox")), away = toPath(workspace.path("away"));
    std::filesystem::rename(inbox, away);
    watchUntil([&] { return !window->problems().empty(); });
    EXPECT_THAT(window->problems(), ElementsAre(HasSubstr("is not there")));
    std::filesystem::rename(away, inbox);
    watchUntil([&] { return window->problems().empty(); });
    EXPECT_THAT(window->problems(), IsEmpty());
    EXPECT_EQ(window->noticeText(), "The watched folder is there again");
    trainer->parts().setCurrent(0);
    EXPECT_EQ(arrives("four.pgm"), 0);
}

// The screen's own buttons are not reached by the keyboard in every container; the menus press them.
TEST_F(TrainerWindowTest, ViewsAndThemesAreChosenInTheMenuAndWhatIsChosenIsKept) {
    window->actions.viewNumeric.trigger();
    EXPECT_TRUE(screen().numeric.grid.visible());
    EXPECT_FALSE(window->actions.viewGraphical.checked());
    window->actions.viewLog.trigger();
    EXPECT_TRUE(screen().overview.tlbChars.button("Log").pressed());
    EXPECT_TRUE(window->actions.viewLog.checked());
    window->actions.viewLog.trigger();
    EXPECT_FALSE(window->actions.viewLog.checked());

    window->arrangeFor(TrainerWindow::kFirstHeight - 1);
    EXPECT_FALSE(window->gallery.isShown()) << "the screen needs the room";
    window->arrangeFor(TrainerWindow::kFirstHeight);
    EXPECT_TRUE(window->gallery.isShown() && window->actions.showGallery.checked());
    window->actions.showGallery.trigger();
    EXPECT_EQ(system.theme, Theme::System);
    window->actions.themeDark.trigger();
    EXPECT_EQ(system.theme, Theme::Dark);
    window->showTheme(Theme::Light);
    TrainerWindow next{*trainer, platform, system};
    EXPECT_EQ(system.theme, Theme::Dark) << "what the command line wants is for one run";
    EXPECT_TRUE(next.actions.themeDark.checked());
    next.arrangeFor(TrainerWindow::kFirstHeight);
    EXPECT_FALSE(next.gallery.isShown() || next.actions.showGallery.checked());
}

TEST_F(TrainerWindowTest, HelpSaysWhereFontsAreAndThatThereIsNoGuide) {
    window->actions.about.trigger();
    ASSERT_EQ(platform.boxes.size(), 1u);
    EXPECT_THAT(platform.boxes[0].text, HasSubstr(JobFolder(workspace.jobs()).fontsFolder()));
    window->actions.guide.trigger();
    ASSERT_EQ(platform.boxes.size(), 1u) << "a guide that is shown needs no words";
    system.hasGuide = false;
    window->actions.guide.trigger();
    ASSERT_EQ(platform.boxes.size(), 2u);
    EXPECT_THAT(platform.boxes[1].text, HasSubstr("not installed"));
}

// A key that two actions have does nothing in one of the window systems.
TEST_F(TrainerWindowTest, NoTwoActionsHaveTheSameKeyOrAccessKey) {
    const auto allDiffer = [](const auto& some) {
        return std::set(some.begin(), some.end()).size() == some.size();
    };
    std::vector<std::string> keys;
    for (const auto& menu : window->actions.menus()) {
        std::string accessKeys;
        for (const Action* action : menu.entries) {
            if (!action) continue;
            const auto& face = action->face();
            keys.insert(keys.end(), face.keys.begin(), face.keys.end());
            accessKeys += face.text.at(face.text.find('&') + 1);
        }
        EXPECT_TRUE(allDiffer(accessKeys)) << menu.caption;
    }
    EXPECT_TRUE(allDiffer(keys));
}

}  // namespace
}  // namespace dravik::test
