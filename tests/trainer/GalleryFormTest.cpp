// The gallery as the operator meets it: on the trainer and its embedded tool, without a window system.
#include "trainer/window/GalleryForm.h"

#include "trainer/support/TrainerFixture.h"

namespace dravik::test {

namespace {

class GalleryFormTest : public TrainerFixture {
  protected:
    GalleryFormTest() {
        EmbeddedTool& tool = trainer->tool();
        tool.CreateFont("f");
        tool.SetCharacterSet({"1", "2", "4", "7"});
        trainer->parts().open({workspace.draw("a.pgm", "1247"), workspace.draw("b.pgm", "1247")});
        include("1247");
        trainer->parts().next();
        include("1244");  // the last one is a 7
        tool.SaveFont("f");
        trainer->control().showFont("f");
        gallery.pictures.setView(400, 300, 1);
        gallery.setShown(true);
    }
    void include(const std::string& text) {
        trainer->tool().IncludeSamples(text);
        trainer->tool().CommitNewSamples();
        trainer->tool().endAct("", "");
    }
    std::string captions() const {
        std::string text;
        for (int i = 0; i < gallery.pictures.count(); ++i) text += gallery.pictures.item(i).caption;
        return text;
    }

    GalleryForm& gallery = window->gallery;
};

TEST_F(GalleryFormTest, TheWrongOneIsFirstAndIsMendedByTyping) {
    EXPECT_EQ(gallery.pictures.count(), 8);
    EXPECT_EQ(captions().substr(0, 1), "4");
    const PictureItem worst = gallery.pictures.item(0);
    EXPECT_TRUE(worst.warns);
    EXPECT_THAT(worst.tip, AllOf(HasSubstr("b.pgm"), HasSubstr("sample 7")));

    gallery.pictures.choose(0, 0);
    gallery.pictures.typed("7");
    EXPECT_EQ(labelsOfFont(), "12471247");
    EXPECT_FALSE(gallery.pictures.item(0).warns);
    EXPECT_THAT(trainer->acts().notice(), HasSubstr("Labelled 1 sample as 7"));
    EXPECT_EQ(trainer->acts().undoText(), "Undo relabelling of 1 sample as 7");
    trainer->acts().undo();
    EXPECT_EQ(labelsOfFont(), "12471244");
    EXPECT_TRUE(gallery.pictures.item(0).warns);
    EXPECT_FALSE(trainer->acts().isUnsaved()) << "as it was saved";

    gallery.pictures.typed("78");  // nothing that a sample can be
    EXPECT_EQ(labelsOfFont(), "12471244");
    EXPECT_THAT(message(), HasSubstr("one character"));
}

TEST_F(GalleryFormTest, ManyAreDeletedAtOnceAndWhatIsLeftStaysSelected) {
    gallery.show({ShownSamples::Kind::Character, '4'});
    EXPECT_EQ(captions(), "444");
    gallery.pictures.choose(0, 0);
    gallery.pictures.move(KeyMove::Right, kShiftMask);
    gallery.pictures.keyDown(kKeyDelete, 0);
    EXPECT_EQ(labelsOfFont().size(), 6U);
    EXPECT_EQ(captions(), "4");
    EXPECT_THAT(gallery.pictures.selected(), ElementsAre(0));
    trainer->acts().undo();
    EXPECT_EQ(labelsOfFont(), "12471244");
    gallery.cboShown.setListIndex(0);
    EXPECT_EQ(gallery.pictures.count(), 8);

    // What nobody has chosen is not selected, lest it be deleted.
    gallery.pictures.choose(0, 0);
    gallery.show({ShownSamples::Kind::Character, '1'});
    EXPECT_FALSE(gallery.cmdDelete.enabled()) << "other samples are shown";
    gallery.pictures.choose(0, 0);
    trainer->tool().CreateFont("g");
    trainer->tool().SetCharacterSet({"1", "2", "4", "7"});
    include("1247");
    trainer->control().showFont("g");
    EXPECT_EQ(gallery.pictures.count(), 4);
    EXPECT_FALSE(gallery.cmdDelete.enabled()) << "samples of another font have the same numbers";
}

TEST_F(GalleryFormTest, ShowsWhereASampleIsFrom) {
    const std::string image = trainer->parts().path(1);
    const std::size_t marks = window->view.frames().size();
    trainer->parts().setCurrent(0);
    EXPECT_FALSE(gallery.cmdDelete.enabled()) << "nothing is selected";
    gallery.pictures.opened();
    EXPECT_EQ(trainer->parts().current(), 1);
    ASSERT_EQ(window->view.frames().size(), marks + 1);
    EXPECT_TRUE(window->view.frames().back().heavy);
    trainer->parts().setCurrent(0);
    std::filesystem::remove(toPath(image));
    gallery.cmdSource.press();
    EXPECT_EQ(trainer->parts().current(), 0);
    EXPECT_THAT(trainer->acts().notice(), HasSubstr(image + ", which is not there any more"));
}

TEST_F(GalleryFormTest, FollowsTheGridTheHistogramAndTheOverview) {
    screen().overview.tlbChars.buttonClick(screen().overview.tlbChars.button("Numeric"));
    screen().numeric.grid.select(3, 0, 4, 0);
    EXPECT_EQ(gallery.pictures.count(), 2);
    EXPECT_EQ(labelsOfFont().substr(2, 2), "47");
    gallery.show({});
    gallery.pictures.choose(0, 0);
    EXPECT_EQ(screen().numeric.grid.row(), 8) << "the worst one is the last sample";
    EXPECT_EQ(gallery.pictures.count(), 8) << "what the gallery says is not said back to it";

    trainer->control().barPointed()({"4", false, 0.5, 1});
    EXPECT_EQ(captions(), "4");
    trainer->control().barPointed()({"2", true});
    EXPECT_EQ(captions(), "22");
    for (const auto& cell : screen().overview.lblChar) {
        if (cell->caption() != "7") continue;
        platform.menuPicks.push_back("");
        cell->mouseDown({kRightButton, 0, 10, 10});
    }
    EXPECT_EQ(captions(), "7");
}

}  // namespace
}  // namespace dravik::test
