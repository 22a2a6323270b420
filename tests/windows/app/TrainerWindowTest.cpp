// What the program's window does on Windows beyond what it does in every window system.
#include "OpenedProgram.h"
#include "support/Accessible.h"

namespace dravik::test {
namespace {

using TrainerWindowTest = OpenedProgram;

const std::string kParts = DRAVIK_SOURCE_DIR "/data/parts/";

// Windows draws none of its controls in dark colours by itself.
TEST_F(TrainerWindowTest, EveryControlIsDarkWhenTheDesktopOrTheOperatorWantsIt) {
    const auto desktopUses = [&](DWORD light) {
        RegSetKeyValueW(HKEY_CURRENT_USER,
                        L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                        L"AppsUseLightTheme", REG_DWORD, &light, sizeof light);
        SendMessageW(window.window(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
    };
    constexpr ui::Color kGround = rgb(0x38, 0x3A, 0x3F), kField = rgb(0x25, 0x27, 0x2A),
                        kFace = rgb(0x4B, 0x4E, 0x54);
    const auto expectDark = [&](bool dark) {
        for (const auto& [name, color] :
             {std::pair{"cmdSelectFont", kFace}, std::pair{"cmdTrain", kGround}, std::pair{"chkCase", kField},
              std::pair{"cboTimeout", kField}, std::pair{"prgTrain", kField}, std::pair{"sbr", kGround},
              std::pair{"txtCharSet", kField}, std::pair{"lblFontName", kGround},
              std::pair{"tlbChars", kGround}, std::pair{"reading", kField}, std::pair{"thumbnails", kField}})
            EXPECT_EQ(pixelsOf(view(name), color) > 60, dark) << name;
    };
    expectDark(false);
    desktopUses(0);
    expectDark(true);
    EXPECT_EQ(SendMessageW(window.window(), WM_MENUCHAR, MAKEWPARAM('v', 0),
                           reinterpret_cast<LPARAM>(GetMenu(window.window()))),
              MAKELRESULT(3, MNC_EXECUTE));
    driver.expectForm("dlgFontNew", [&] {
        const HWND form = GetActiveWindow();
        EXPECT_GT(pixelsOf(findWindowNamed(form, "OKButton"), kFace), 60);
        EXPECT_GT(pixelsOf(findWindowNamed(form, "txtFontName"), kField), 60);
        driver.click("CancelButton");
    });
    choose("fontNew");
    EXPECT_TRUE(driver.problems().empty());
    choose("themeLight");
    expectDark(false);
    desktopUses(1);
    choose("themeDark");
    expectDark(true);
    choose("themeSystem");
    expectDark(false);
}

TEST_F(TrainerWindowTest, WhatIsEnlargedIsScrolledDraggedAndComesBackToTheFit) {
    open({kParts + "rendered_lines/hack_000.png"});
    const trainer::PartViewModel& part = window.model().view;
    const double fitting = part.scale();
    for (int i = 0; i < 60; ++i) choose("zoomIn");
    const HWND shown = view("partView");
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_ALL;
    GetScrollInfo(shown, SB_HORZ, &bar);
    EXPECT_GT(bar.nPos, 1000) << "what was in the middle stays there";
    SendMessageW(shown, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 100));
    SendMessageW(shown, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(60, 100));
    SendMessageW(shown, WM_LBUTTONUP, 0, MAKELPARAM(60, 100));
    const int before = bar.nPos;
    GetScrollInfo(shown, SB_HORZ, &bar);
    EXPECT_EQ(bar.nPos, before + 40);
    choose("fit");
    EXPECT_DOUBLE_EQ(part.scale(), fitting);
}

TEST_F(TrainerWindowTest, ScreenReadersFindTheImageTheReadingAndTheOpenedImages) {
    open({kParts + "rendered_lines/hack_000.png", kParts + "rendered_lines/hack_001.png"});
    settle();
    EXPECT_EQ(AccessibleWindow(view("partView")).name(), L"Part image");
    EXPECT_EQ(AccessibleWindow(view("reading")).name(), L"Text read in the image: No font is selected");
    const AccessibleWindow strip(view("thumbnails"));
    EXPECT_EQ(strip.name(), L"Opened images");
    ASSERT_EQ(strip.parts(), 2);
    EXPECT_EQ(strip.name(2), L"hack_001.png");
    EXPECT_TRUE(strip.state(1) & STATE_SYSTEM_SELECTED);
    const RECT whole = placeOf(view("thumbnails"));
    EXPECT_EQ(strip.at(whole.left + 116 + 58, whole.top + 30), 2);
}

TEST_F(TrainerWindowTest, TabGoesThroughBothSidesAndRound) {
    open({kParts + "rendered_lines/hack_000.png"});
    settle();
    SetFocus(view("cmdSelectFont"));
    bool onTheRight = false;
    bool back = false;
    for (int i = 0; i < 40 && !back; ++i) {
        EXPECT_TRUE(key(VK_TAB));
        onTheRight |= GetFocus() == view("thumbnails");
        back = GetFocus() == view("cmdSelectFont");
    }
    EXPECT_TRUE(onTheRight);
    EXPECT_TRUE(back);
    EXPECT_TRUE(key('r', WM_SYSCHAR));
    EXPECT_EQ(GetFocus(), view("reading"));
}

TEST_F(TrainerWindowTest, TheNextArrowBelongsToTheStripAndTheNextKeyToTheText) {
    open({kParts + "rendered_lines"});
    clickThumbnail(1);
    EXPECT_EQ(GetFocus(), view("txtSampleInput"));
    focus("thumbnails");
    key(VK_RIGHT);
    EXPECT_EQ(trainer().parts().current(), 2);
    EXPECT_EQ(GetFocus(), view("thumbnails"));
}

TEST_F(TrainerWindowTest, ItsPlaceIsRemembered) {
    resize(1024, 720);
    const RECT before = placeOf(window.window());
    endProgram();
    startProgram();
    const RECT after = placeOf(program->window().window());
    EXPECT_TRUE(EqualRect(&after, &before));
}

}  // namespace
}  // namespace dravik::test
