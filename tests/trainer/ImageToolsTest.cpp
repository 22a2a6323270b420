// The region, the image settings and corrected characters as the operator works them: with the mouse, keys
// and menus of the window, on images beside a barcode, tilted, or with nothing that is found.
#include "trainer/window/ImageTools.h"

#include "contract/DrawnText.h"
#include "trainer/support/TrainerFixture.h"

namespace dravik::test {

namespace {

using Name = ViewKey::Name;

class ImageToolsTest : public TrainerFixture {
  protected:
    ImageToolsTest() {
        view.setViewport(800, 600);
        view.popUp = [this](PopupMenu& menu, ViewPoint) {
            offered.clear();
            for (const auto& item : menu.items()) offered.push_back(item->caption);
            for (const auto& item : menu.items())
                if (item->name == picks) item->click();
        };
    }
    void selectFont() {
        workspace.learnDigits("F");
        choose("F");
        ASSERT_EQ(trainer->control().selectedFont(), "F");
    }
    void open(const std::string& name, const GreyImage& image) {
        writePgm(workspace.path(name), image);
        trainer->parts().open({workspace.path(name)});
        trainer->parts().setCurrent(trainer->parts().count() - 1);
    }
    void drag(RotatedBox::Point from, RotatedBox::Point to) {
        const ViewPoint start = view.toView(from), end = view.toView(to);
        view.press(start);
        view.moveTo({(start.x + end.x) / 2, (start.y + end.y) / 2});
        view.moveTo(end);
        view.release(end);
    }
    void press(Name name, bool shift = false, bool ctrl = false) {
        EXPECT_TRUE(view.key({name, 0, shift, ctrl}));
    }
    bool press(char letter) { return view.key({Name::Other, letter}); }
    std::size_t found() { return trainer->preview().size(); }

    // What the operator does in the form of the settings.
    void inSettings(const std::function<void(Form&)>& act) {
        platform.script("imageSettingsForm", act);
        actions.imageSettings.trigger();
    }
    static void typeRegion(Form& form, std::initializer_list<const char*> figures) {
        const char* const* figure = figures.begin();
        in<CheckBox>(form, "chkRegion").setChecked(true);
        for (const char* name : {"txtLeft", "txtTop", "txtWidth", "txtHeight", "txtAngle"})
            in<TextBox>(form, name).setText(*figure++);
    }

    // Two lines, the first of which is to be read.
    const GreyImage lines = drawn({"1234", "567"}, {.scale = 5, .dot = 5});
    PartViewModel& view = window->view;
    WindowActions& actions = window->actions;
    ImageTools& tools = window->tools;
    std::string picks;
    std::vector<std::string> offered;
};

TEST_F(ImageToolsTest, ARegionIsDrawnForAllImagesOrForOneAndUndone) {
    selectFont();
    open("a.pgm", lines);
    open("b.pgm", lines);
    ASSERT_EQ(found(), 7u);
    actions.region.trigger();
    EXPECT_EQ(view.mode(), ViewMode::Region);
    drag({10, 10}, {180, 76});
    EXPECT_EQ(found(), 4u);
    EXPECT_TRUE(trainer->title().starts_with("F*"));
    EXPECT_EQ(trainer->acts().undoText(), "Undo change of the region");
    // By keys over the second line, and turned on its head and back.
    for (int i = 0; i < 60; ++i) press(Name::Down);
    EXPECT_EQ(found(), 3u);
    for (int i = 0; i < 2; ++i) press(Name::Down, false, true);
    EXPECT_FLOAT_EQ(std::abs(view.region().region()->angle), 180);
    for (int i = 0; i < 2; ++i) press(Name::Up, false, true);
    // The other image has it too, until it has one of its own.
    trainer->parts().setCurrent(0);
    EXPECT_EQ(found(), 3u);
    actions.regionForImage.trigger();
    actions.clearRegion.trigger();
    EXPECT_EQ(found(), 7u);
    trainer->parts().setCurrent(1);
    EXPECT_EQ(found(), 3u);
    press(Name::Escape);
    EXPECT_EQ(view.mode(), ViewMode::Look);
    while (trainer->acts().undoText() == "Undo change of the region") trainer->acts().undo();
    EXPECT_EQ(found(), 7u) << "characters are looked for anew when the settings go back";
    EXPECT_FALSE(view.region().region().has_value());
    trainer->acts().redo();
    EXPECT_EQ(found(), 4u);
    // A click that draws nothing leaves it.
    actions.region.trigger();
    const std::string said = message();
    drag({300, 300}, {302, 301});
    EXPECT_EQ(message(), said);
    EXPECT_EQ(found(), 4u);
    press(Name::Delete);
    EXPECT_EQ(found(), 7u);
}

TEST_F(ImageToolsTest, CharactersAreCorrectedByKeysAndRememberedUntilTheImageIsLookedAtOtherwise) {
    selectFont();
    open("a.pgm", lines);
    open("b.pgm", drawn({"89"}));
    trainer->parts().setCurrent(0);
    box().edit("");
    box().edit("1234567");  // typed, no longer proposed
    const int before = committed();
    actions.correctCharacters.trigger();
    press(Name::Tab);
    EXPECT_TRUE(press('J'));
    EXPECT_EQ(found(), 6u);
    EXPECT_EQ(labels(), "134567") << "the labels go along";
    EXPECT_TRUE(tools.selectionText().starts_with("character 1 of 6, labelled 1, read as "));
    tools.undo();
    EXPECT_EQ(labels(), "1234567") << "and back";
    press(Name::Home);
    for (const char key : {'J', 'J', 'S'}) EXPECT_TRUE(press(key));
    const float cut = trainer->preview()[0].box.width;
    EXPECT_TRUE(cut <= 25 || cut >= 50) << "through the second of three characters: " << cut;
    for (int step = 0; step < 3; ++step) tools.undo();
    press(Name::Home);
    for (int step = 0; step < 3; ++step) press(Name::Right);
    EXPECT_FALSE(press('J')) << "the next one stands in the line below";
    box().edit("1234567");
    press(Name::End);
    press(Name::Delete);
    EXPECT_EQ(labels(), "123456");
    EXPECT_EQ(tools.note(), "corrected by hand");
    // Leafing away and back.
    trainer->parts().setCurrent(1);
    EXPECT_EQ(found(), 2u);
    EXPECT_EQ(tools.note(), "");
    trainer->parts().setCurrent(0);
    EXPECT_EQ(found(), 6u);
    box().edit("123456");
    enter();
    EXPECT_EQ(committed(), before + 6);
    trainer->parts().setCurrent(0);
    // Other settings that find the same leave it, others do not.
    trainer->adjustments().set({.print = {.polarity = Polarity::DarkOnLight}}, false);
    EXPECT_EQ(found(), 6u);
    trainer->adjustments().setRegion(RotatedBox{95, 43, 170, 66, 0}, false);
    EXPECT_EQ(found(), 4u);
}

TEST_F(ImageToolsTest, NoImageIsLostToTheSegmentation) {
    selectFont();
    open("a.pgm", drawn({"12"}, {.scale = 6, .dot = 6}));
    ASSERT_EQ(found(), 2u);
    const RotatedBox first = trainer->preview()[0].box, second = trainer->preview()[1].box;
    trainer->adjustments().set({.print = {.polarity = Polarity::LightOnDark, .smallestHeight = 300}}, false);
    ASSERT_EQ(found(), 0u);
    box().edit("12");
    actions.correctCharacters.trigger();
    for (const RotatedBox& box : {second, first}) {
        const auto corners = box.corners();
        drag(corners[0], corners[2]);
    }
    EXPECT_EQ(labels(), "12") << "in reading order, whichever came first";
    EXPECT_NEAR(trainer->preview()[0].box.centreX, first.centreX, 1);
    // One is moved, made too wide by its right side, and set right; a third comes and goes.
    const float right = second.centreX + second.width / 2;
    drag({second.centreX, second.centreY}, {second.centreX + 6, second.centreY});
    drag({right + 6, second.centreY}, {right + 12, second.centreY});
    EXPECT_NEAR(trainer->preview()[1].box.width, second.width + 6, 0.1);
    drag({right + 12, second.centreY}, {right + 6, second.centreY});
    drag({second.centreX + 6, second.centreY}, {second.centreX, second.centreY});
    press(Name::Home);
    EXPECT_TRUE(press('A'));
    ASSERT_EQ(found(), 3u);
    press(Name::Delete);
    EXPECT_EQ(labels(), "12");
    const int before = committed();
    enter();
    EXPECT_EQ(committed(), before + 2);
}

TEST_F(ImageToolsTest, TheMenuOfACharacterOffersWhatElseItMayBe) {
    selectFont();
    open("a.pgm", drawn({"1234"}, {.scale = 6, .dot = 6}));
    box().edit("1734");
    const RotatedBox& second = trainer->preview()[1].box;
    const ViewPoint place = view.toView({second.centreX, second.centreY});
    EXPECT_TRUE(view.tipAt(place).starts_with("reads 2 "));
    const auto marks = [&] { return std::ranges::count(view.tags(), "\u22602", &ViewTag::text); };
    EXPECT_EQ(marks(), 1) << "the reading differs from the label";
    picks = "take2";
    view.press(place);
    view.release(place);
    ASSERT_FALSE(offered.empty());
    EXPECT_TRUE(offered.front().starts_with("2    ")) << offered.front();
    EXPECT_EQ(text(), "1234");
    EXPECT_EQ(marks(), 0);
    box().edit("");
    view.pickAt(place);
    EXPECT_EQ(text(), "1234") << "what is not typed is what is read";
    picks = actions.removeCharacter.name();
    view.pickAt(place);
    EXPECT_EQ(labels(), "134");
    EXPECT_EQ(view.mode(), ViewMode::Boxes);
}

TEST_F(ImageToolsTest, TheSettingsFormTakesChoicesAndFigures) {
    open("a.pgm", lines);
    ASSERT_EQ(found(), 7u);
    inSettings([](Form& form) {
        Button& ok = in<Button>(form, "OKButton");
        in<ComboBox>(form, "cboPolarity").setListIndex(1);
        in<CheckBox>(form, "chkRegion").setChecked(true);
        EXPECT_FALSE(ok.enabled()) << "a region without figures";
        typeRegion(form, {"10", "10", "170", "66", "0"});
        in<TextBox>(form, "txtSmallest").setText("12");
        ok.press();
    });
    EXPECT_EQ(found(), 4u) << "without a font, too";
    const SegmentationSettings settings = trainer->adjustments().settings();
    EXPECT_EQ(settings.print, (PrintSettings{Polarity::DarkOnLight, PrintKind::Automatic, 12}));
    EXPECT_EQ(settings.region, (RotatedBox{95, 43, 170, 66, 0}));
    const RotatedBox uneven{95.123f, 43.456f, 170.789f, 66, 0.321f};
    trainer->adjustments().setRegion(uneven, false);
    inSettings([](Form& form) { in<Button>(form, "OKButton").press(); });
    EXPECT_EQ(trainer->adjustments().settings().region, uneven) << "not rounded by looking at it";
    selectFont();
    EXPECT_EQ(found(), 7u) << "by the settings of the font, which has samples";
    inSettings([](Form& form) {
        in<ComboBox>(form, "cboPolarity").setListIndex(1);
        typeRegion(form, {"90", "90", "90", "90", "90"});
        in<Button>(form, "OKButton").press();
    });
    EXPECT_TRUE(trainer->adjustments().settings().region);
    trainer->acts().undo();
    EXPECT_EQ(trainer->adjustments().settings(), SegmentationSettings{}) << "all at once";
}

}  // namespace
}  // namespace dravik::test
