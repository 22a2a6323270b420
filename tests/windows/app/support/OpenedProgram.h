// The program's window on Windows, for the cases of every window system and for its own.
#pragma once

#include <shlobj.h>

#include "drivers/win32/Win32WindowDriver.h"
#include "program/Press.h"
#include "support/Testing.h"
#include "windows/app/Program.h"
#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace app;
using namespace com;
using namespace engine;
using namespace screen;
using namespace tool;
using namespace ui;
using namespace win32;

class OpenedProgram : public testing::Test {
  protected:
    static constexpr char kProblemText[] = "problemText(0)";

    OpenedProgram() { OleInitialize(nullptr); }
    ~OpenedProgram() override {
        endProgram();
        OleUninitialize();
        RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
    }
    void startProgram() {
        program.emplace(Settings(kTestKey), JobFolder(path("Jobs")), false);
        program->window().show();
        settle();
    }
    void endProgram() {
        if (program) program->window().close();
        settle();
        MSG message{};
        PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        program.reset();
    }

    trainer::Trainer& trainer() { return program->trainer(); }
    std::string path(const char* name) const { return folder.path(name); }
    HWND view(const std::string& name) const {
        const HWND found = findWindowNamed(window.window(), name);
        if (!found) throw std::runtime_error("no view named " + name);
        return found;
    }
    std::string title() const { return utf8(windowText(window.window())); }
    std::string text(const std::string& name) const { return utf8(windowText(view(name))); }
    bool isShown(const char* name) const { return IsWindowVisible(view(name)) != FALSE; }
    bool isWhollySeen(const char* name) const {
        const RECT place = placeOf(view(name)), whole = placeOf(window.window());
        RECT common{};
        return IntersectRect(&common, &place, &whole) && EqualRect(&common, &place);
    }
    int pixelsOf(HWND shown, ui::Color color) {
        settle();
        const RECT inside = insideOf(shown);
        Canvas canvas(inside.right, inside.bottom);
        SendMessageW(shown, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.dc()), PRF_CLIENT);
        return countOf(canvas, color);
    }
    int pixelsOfPart(int red, int green, int blue) {
        return pixelsOf(view("partView"), rgb(red, green, blue));
    }

    void open(const std::vector<std::string>& images) {
        window.open(images);
        settle();
    }
    bool canChoose(const char* name) { return window.model().actions.find(name).enabled(); }
    void choose(const char* name) {
        const WORD command = window.commandOf(window.model().actions.find(name));
        SendMessageW(window.window(), WM_COMMAND, command, 0);
        settle();
    }
    void focus(const char* name) { SetFocus(view(name)); }
    // A key for the program's loop; true when it was used there.
    bool key(UINT code, UINT message = WM_KEYDOWN, bool control = false) {
        const HeldKeys held{control ? VK_CONTROL : 0};
        MSG pressed{GetFocus(), message, code, 0, 0, {}};
        const bool used = window.translate(pressed);
        if (!used) SendMessageW(pressed.hwnd, message, code, 1);
        settle();
        return used;
    }
    void press(Press press) {
        constexpr UINT kKeys[] = {VK_RETURN, VK_PRIOR, VK_NEXT, 'Z'};
        key(kKeys[static_cast<int>(press)], WM_KEYDOWN, press == Press::Undo);
    }
    void drop(const std::string& name) {
        const std::wstring path = toPath(name).make_preferred().wstring();
        const std::size_t bytes = sizeof(DROPFILES) + (path.size() + 2) * sizeof(wchar_t);
        const HGLOBAL memory = GlobalAlloc(GHND, bytes);
        auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
        drop->pFiles = sizeof(DROPFILES);
        drop->fWide = TRUE;
        path.copy(reinterpret_cast<wchar_t*>(drop + 1), path.size());
        GlobalUnlock(memory);
        SendMessageW(window.window(), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
        settle();
    }
    void clickThumbnail(int index) {
        constexpr int kWidth = 116, kMiddle = 58;
        SendMessageW(view("thumbnails"), WM_LBUTTONDOWN, MK_LBUTTON,
                     MAKELPARAM(index * kWidth + kMiddle, 30));
        settle();
    }
    void resize(int width, int height) {
        MoveWindow(window.window(), 40, 30, width, height, TRUE);
        settle();
    }
    // Closes the window, where a form asks that is answered by this button; whether it is gone then.
    bool closes(const char* button) {
        driver.expectForm("closingForm", [&] { driver.click(button); });
        SendMessageW(window.window(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(driver.problems().empty());
        return !window.isOpen();
    }

    static constexpr wchar_t kTestKey[] = L"Software\\Dravik\\Trainer Test";
    TemporaryFolder folder;
    std::optional<Program> program;
    MainWindow& window = (startProgram(), program->window());
    Win32WindowDriver driver{window};
};

}  // namespace dravik::test
