// The program's window as a whole: a font is made, taught, learnt, saved and reads, all through what the
// operator sees.
#include <shlobj.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "base/Paths.h"
#include "drivers/ScriptedSession.h"
#include "drivers/win32/DialogScript.h"
#include "drivers/win32/Win32WindowDriver.h"
#include "gtest/gtest.h"
#include "support/Accessible.h"
#include "support/TemporaryFolder.h"
#include "windows/app/Program.h"
#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace app;
using namespace com;
using namespace engine;
using namespace screen;
using namespace tool;
using namespace trainer;
using namespace ui;
using namespace win32;
namespace {

const std::string kParts = DRAVIK_SOURCE_DIR "/data/parts/";
constexpr wchar_t kTestKey[] = L"Software\\Dravik\\Trainer Test";

class TrainerWindowTest : public testing::Test {
  protected:
    TrainerWindowTest() {
        OleInitialize(nullptr);
        open();
    }
    ~TrainerWindowTest() override {
        close();
        OleUninitialize();
        RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
    }
    void open() {
        program.emplace(Settings(kTestKey), JobFolder(folder.path("Jobs")), false);
        window = &program->window();
        trainer = &program->trainer();
        window->show();
        settle();
    }
    void close() {
        if (window) window->close();
        settle();
        MSG message{};
        PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        window = nullptr;
        program.reset();
    }

    HWND view(const std::string& name) const {
        const HWND found = findWindowNamed(window->window(), name);
        if (!found) throw std::runtime_error("no view named " + name);
        return found;
    }
    std::string textOf(const std::string& name) const { return utf8(windowText(view(name))); }
    // A key for the program's loop; true when it was used there.
    bool key(UINT code, UINT message = WM_KEYDOWN) {
        MSG pressed{};
        pressed.hwnd = GetFocus();
        pressed.message = message;
        pressed.wParam = code;
        const bool used = window->translate(pressed);
        if (!used) SendMessageW(pressed.hwnd, message, code, 1);
        settle();
        return used;
    }
    void perform(const char* action) {
        const WORD command = window->commandOf(window->model().actions.find(action));
        SendMessageW(window->window(), WM_COMMAND, command, 0);
        settle();
    }
    int pixelsOf(HWND shown, COLORREF color) {
        settle();
        RECT client{};
        GetClientRect(shown, &client);
        Canvas canvas(client.right, client.bottom);
        SendMessageW(shown, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.dc()), PRF_CLIENT);
        int count = 0;
        for (const std::uint32_t pixel : canvas.pixels())
            count += RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF) == color;
        return count;
    }
    void type(const std::string& text) {
        SetFocus(view("txtSampleInput"));
        typeOver(view("txtSampleInput"), wide(text));
        settle();
    }

    TemporaryFolder folder;
    std::optional<Program> program;
    MainWindow* window = nullptr;
    Trainer* trainer = nullptr;
};

TEST_F(TrainerWindowTest, TeachesLearnsSavesAndReads) {
    std::ostringstream told;
    const auto session = [&](const std::vector<std::string>& paths) {
        Win32WindowDriver driver(*window);
        ScriptedSession(driver, *trainer, folder.path(), told).run(paths);
    };
    ASSERT_NO_THROW(
        session({kParts + "rendered_charset/hack_000.png", kParts + "rendered_charset/hack_001.png",
                 kParts + "rendered_charset/hack_002.png", kParts + "rendered_lines/hack_000.png"}))
        << told.str();
    EXPECT_EQ(textOf("reading"), "EXP2026/07/26");
    EXPECT_EQ(utf8(windowText(window->window())), "demo - Dravik Trainer");
    EXPECT_TRUE(std::filesystem::exists(toPath(folder.path("Jobs/Fonts/demo.nnd"))));
    EXPECT_GT(std::filesystem::file_size(toPath(folder.path("10-included.png"))), 10'000u);

    // A changed font: the title says so, and closing asks. Cancel stays; what is discarded leaves the file as
    // it was.
    type("EXP2026/07/26");
    EXPECT_TRUE(key(VK_RETURN));
    EXPECT_EQ(utf8(windowText(window->window())), "demo* - Dravik Trainer");
    DialogScript script;
    const auto press = [](const char* button) {
        return [button](HWND form) { SendMessageW(findWindowNamed(form, button), BM_CLICK, 0, 0); };
    };
    script.expect("closingForm", press("CancelButton"));
    SendMessageW(window->window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(window->isOpen());
    SetFocus(view("partView"));
    perform("undo");
    EXPECT_EQ(utf8(windowText(window->window())), "demo - Dravik Trainer");
    EXPECT_EQ(textOf("notice"), "Undone: include of 13 samples");
    perform("redo");
    script.expect("closingForm", press("cmdDiscard"));
    SendMessageW(window->window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(script.finished());
    EXPECT_FALSE(window->isOpen());
    EXPECT_EQ(trainer->tool().summary("demo").samples, 3 * 74);
}

TEST_F(TrainerWindowTest, ImagesAreDroppedLeafedThroughAndClosed) {
    const std::wstring path = toPath(kParts + "rendered_lines").make_preferred().wstring();
    const std::size_t bytes = sizeof(DROPFILES) + (path.size() + 2) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GHND, bytes);
    auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    path.copy(reinterpret_cast<wchar_t*>(drop + 1), path.size());
    GlobalUnlock(memory);
    SendMessageW(window->window(), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    settle();
    const OpenedParts& parts = trainer->parts();
    ASSERT_EQ(parts.count(), 48);
    EXPECT_TRUE(textOf("partName").starts_with("1 of 48"));
    perform("previous");
    EXPECT_EQ(parts.current(), 0);
    perform("next");
    SetFocus(view("partView"));
    EXPECT_TRUE(key(VK_NEXT));
    EXPECT_EQ(parts.current(), 2);
    SendMessageW(view("thumbnails"), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(116 + 58, 30));  // the second one
    settle();
    EXPECT_EQ(parts.current(), 1);
    EXPECT_EQ(GetFocus(), view("txtSampleInput")) << "the next key belongs to the text";
    SetFocus(view("thumbnails"));
    key(VK_RIGHT);
    EXPECT_EQ(parts.current(), 2);
    EXPECT_EQ(GetFocus(), view("thumbnails")) << "the next arrow belongs to the strip";
    SetFocus(view("txtSampleInput"));
    EXPECT_TRUE(key(VK_PRIOR));
    EXPECT_EQ(parts.current(), 1);
    perform("closeImage");
    EXPECT_EQ(parts.count(), 47);
    perform("closeAll");
    EXPECT_EQ(parts.count(), 0);
    EXPECT_EQ(textOf("partName"), "");
    perform("zoomIn");  // nothing to zoom
}

TEST_F(TrainerWindowTest, WhatCannotBeOpenedIsSaid) {
    std::ofstream(toPath(folder.path("broken.png"))) << "no image";
    window->open({folder.path("absent.png"), folder.path("broken.png")});
    settle();
    EXPECT_TRUE(IsWindowVisible(view("problemText(0)")));
    EXPECT_NE(textOf("problemText(0)").find("absent.png"), std::string::npos);
    EXPECT_NE(textOf("previewText").find("broken.png"), std::string::npos) << textOf("previewText");
    window->open({kParts + "rendered_lines/hack_000.png"});
    settle();
    EXPECT_FALSE(IsWindowVisible(view("problemText(0)")));
}

TEST_F(TrainerWindowTest, AMismatchIsVisibleBeforeInclude) {
    window->open({kParts + "rendered_lines/hack_000.png"});
    constexpr COLORREF kWarning = RGB(0xD8, 0x43, 0x15);
    const auto warnings = [&] { return pixelsOf(view("partView"), kWarning); };
    Screen& controls = trainer->control().screen();
    EXPECT_TRUE(textOf("previewText").starts_with("13 characters found, text proposed"))
        << textOf("previewText");
    EXPECT_EQ(warnings(), 0);
    controls.sample.txtSampleInput.setText("EXP2026/07/2");
    EXPECT_NE(textOf("previewText").find("13 characters found, 12 typed"), std::string::npos);
    EXPECT_GT(warnings(), 20);
    controls.sample.txtSampleInput.setText("EXP2026/07/26");
    EXPECT_EQ(warnings(), 0);
    controls.sample.txtSampleInput.setText("EXP2026/07/266");
    EXPECT_GT(warnings(), 20);
}

// Windows draws none of its controls in dark colours by itself.
TEST_F(TrainerWindowTest, EveryControlIsDarkWhenTheDesktopOrTheOperatorWantsIt) {
    const auto desktopUses = [&](DWORD light) {
        RegSetKeyValueW(HKEY_CURRENT_USER,
                        L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                        L"AppsUseLightTheme", REG_DWORD, &light, sizeof light);
        SendMessageW(window->window(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
    };
    constexpr COLORREF kGround = RGB(0x38, 0x3A, 0x3F), kField = RGB(0x25, 0x27, 0x2A),
                       kFace = RGB(0x4B, 0x4E, 0x54);
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
    perform("themeLight");
    expectDark(false);
    desktopUses(1);
    perform("themeDark");
    expectDark(true);
    perform("themeSystem");
    expectDark(false);
}

TEST_F(TrainerWindowTest, ZoomStaysInItsRangeAndComesBackToTheFit) {
    window->open({kParts + "rendered_lines/hack_000.png"});
    settle();
    const PartViewModel& part = window->model().view;
    EXPECT_TRUE(part.fits());
    const double fitting = part.scale();
    perform("zoomIn");
    EXPECT_GT(part.scale(), fitting);
    EXPECT_FALSE(part.fits());
    for (int i = 0; i < 60; ++i) perform("zoomIn");
    EXPECT_LE(part.scale(), 32);
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
    perform("actualSize");
    EXPECT_DOUBLE_EQ(part.scale(), 1);
    perform("fit");
    EXPECT_DOUBLE_EQ(part.scale(), fitting);
}

TEST_F(TrainerWindowTest, ScreenReadersFindTheImageTheReadingAndTheOpenedImages) {
    window->open({kParts + "rendered_lines/hack_000.png", kParts + "rendered_lines/hack_001.png"});
    settle();
    EXPECT_EQ(AccessibleWindow(view("partView")).name(), L"Part image");
    EXPECT_EQ(AccessibleWindow(view("reading")).name(), L"Text read in the image: No font is selected");
    const AccessibleWindow strip(view("thumbnails"));
    EXPECT_EQ(strip.name(), L"Opened images");
    ASSERT_EQ(strip.parts(), 2);
    EXPECT_EQ(strip.name(2), L"hack_001.png");
    EXPECT_TRUE(strip.state(1) & STATE_SYSTEM_SELECTED);
    RECT whole{};
    GetWindowRect(view("thumbnails"), &whole);
    EXPECT_EQ(strip.at(whole.left + 116 + 58, whole.top + 30), 2);
}

TEST_F(TrainerWindowTest, TabGoesThroughBothSidesAndRound) {
    window->open({kParts + "rendered_lines/hack_000.png"});
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

TEST_F(TrainerWindowTest, ItsPlaceIsRememberedAndASmallWindowShowsEverythingThatMatters) {
    MoveWindow(window->window(), 40, 30, 1024, 720, TRUE);
    settle();
    RECT all{};
    GetWindowRect(window->window(), &all);
    for (const char* name : {"cmdSelectFont", "cmdInclude", "cmdRevert", "lblChar(73)", "sbr", "partView",
                             "reading", "thumbnails"}) {
        RECT place{};
        RECT inside{};
        GetWindowRect(view(name), &place);
        EXPECT_TRUE(IntersectRect(&inside, &place, &all) && EqualRect(&inside, &place)) << name;
    }
    close();
    open();
    RECT again{};
    GetWindowRect(window->window(), &again);
    EXPECT_TRUE(EqualRect(&again, &all));
}

}  // namespace
}  // namespace dravik::test
