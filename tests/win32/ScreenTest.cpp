// The whole training screen in native controls, bound to a recording tool and driven as an operator does.
#include <windows.h>

#include <commctrl.h>

#include "activex/win32/FormWindow.h"
#include "activex/win32/Look.h"
#include "activex/win32/Peer.h"
#include "activex/win32/WinText.h"
#include "screen/support/RecordingTool.h"
#include "screen/support/TracedJobs.h"
#include "shell/DravikDlg.h"
#include "win32/support/BlackScheme.h"
#include "win32/support/ShownPage.h"

namespace dravik::test {
namespace {

class WholeScreen : public testing::Test {
  protected:
    explicit WholeScreen(int dpi = 96) : scale(dpi), host(scaled(640, dpi), scaled(760, dpi)) {
        tool->fonts = {"ocrb"};
        tool->characterSet = {"A", "B", "C"};
        tool->trained = {{"A", 3, {}}, {"B", 1, {}}, {"C", 0, {}}};
        platform.owner = [this] { return host.window(); };
        page = std::make_unique<FormPage>(control.form(), host.window(), platform);
        page->setBounds({0, 0, scaled(640, dpi), scaled(760, dpi)});
        page->setVisible(true);
        control.setStep(tool);
        settle();
    }
    void TearDown() override {
        if (!control.m_FontChanged()) return;
        later(100, [] { answerBox(IDNO); });
        control.UserControl_Terminate();
    }
    static void answerBox(int id) {
        const HWND box = GetActiveWindow();
        SendMessageW(box, WM_COMMAND, static_cast<WPARAM>(id), 0);
    }
    Screen& screen() { return control.screen(); }
    HWND view(const Widget& widget) { return platform.peerOf(widget)->window(); }
    std::string message() { return screen().sbr.panel("Message").text(); }
    void clickTool(Toolbar& bar, const char* key) {
        for (std::size_t i = 0; i < bar.buttons().size(); ++i) {
            if (bar.buttons()[i]->key != key) continue;
            RECT place{};
            SendMessageW(view(bar), TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&place));
            click(view(bar), (place.left + place.right) / 2, (place.top + place.bottom) / 2);
        }
    }

    const DpiOverride scale;
    TracedJobs jobs;
    HostWindow host;
    Win32Platform platform;
    std::shared_ptr<RecordingTool> tool = std::make_shared<RecordingTool>();
    DravikDlg control{platform, jobs.folder()};
    std::unique_ptr<FormPage> page;
};

class WholeScreenAt144 : public WholeScreen {
  protected:
    WholeScreenAt144() : WholeScreen(144) {}
};

TEST_F(WholeScreen, TextIsTypedIncludedLearntAndSaved) {
    SetFocus(view(screen().sample.txtSampleInput));
    typeText(L"ABC");
    pressKey(VK_RETURN);
    EXPECT_EQ(message(), "3 samples included.");
    keepPicture(page->window(), "included-96");
    tool->trainingDone = false;
    click(view(screen().train.cmdTrain), 10, 10);
    EXPECT_TRUE(IsWindowEnabled(view(screen().train.cmdStop)));
    EXPECT_FALSE(IsWindowEnabled(view(screen().train.cmdTrain)));
    EXPECT_EQ(GetFocus(), view(screen().train.cmdStop)) << "the next one that can be pressed";
    EXPECT_TRUE(waitFor([&] { return !screen().train.lblStatus.caption().empty(); })) << "its timer ticks";
    tool->trainingDone = true;
    EXPECT_TRUE(waitFor([&] { return screen().train.cmdSaveFont.enabled(); }));
    click(view(screen().train.cmdSaveFont), 10, 10);
    EXPECT_EQ(message(), "Saved font");
}

TEST_F(WholeScreen, ChildFormsAndMenusComeUp) {
    SetFocus(view(screen().sample.txtSampleInput));
    typeText(L"ABCABA");
    pressKey(VK_RETURN);
    clickTool(screen().overview.tlbChars, "Numeric");
    EXPECT_TRUE(IsWindowVisible(view(screen().numeric.grid)));
    EXPECT_FALSE(IsWindowVisible(view(screen().overview.fraChar)));
    EXPECT_EQ(screen().numeric.grid.rows(), 7);
    keepPicture(page->window(), "table-96");
    clickTool(screen().overview.tlbChars, "Graphical");
    EXPECT_FALSE(IsWindowVisible(view(screen().numeric.grid)));
    clickTool(screen().overview.tlbChars, "Array");
    const HWND array = GetActiveWindow();
    EXPECT_NE(array, host.window());
    EXPECT_EQ(GetWindow(array, GW_OWNER), host.window());
    keepPicture(array, "array-96");
    SendMessageW(array, WM_CLOSE, 0, 0);
    settle();

    // The menu of a cell by key, its first letter, and the form that it opens.
    SetFocus(view(*screen().overview.lblChar[0]));
    later(100, [] {
        if (const HWND menu = FindWindowW(L"#32768", nullptr)) PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 1);
        later(100, [] { EndMenu(); });
    });
    pressKey(VK_APPS);
    EXPECT_EQ(GetFocus(), view(*screen().overview.lblChar[0]));
}

TEST_F(WholeScreenAt144, NothingIsCutOff) {
    keepPicture(page->window(), "screen-144");
    EXPECT_LE(page->minimumSize().cx, scaled(640, 144));
    EXPECT_LE(page->minimumSize().cy, scaled(760, 144));
    RECT bounds{};
    GetWindowRect(page->window(), &bounds);
    for (const Widget* widget : std::initializer_list<const Widget*>{
             &screen().font.cmdSelectFont, &screen().sample.cmdInclude, &screen().train.cmdRevert,
             screen().overview.lblChar.back().get(), &screen().sbr}) {
        RECT place{};
        RECT inside{};
        GetWindowRect(view(*widget), &place);
        EXPECT_TRUE(IntersectRect(&inside, &place, &bounds) && EqualRect(&inside, &place)) << widget->name();
    }
    const std::wstring caption = windowText(view(screen().train.cmdSaveFont));
    RECT client{};
    GetClientRect(view(screen().train.cmdSaveFont), &client);
    Look look(144, {});
    EXPECT_LT(look.textSize(look.font(), caption).cx, client.right);
}

TEST_F(WholeScreen, FollowsTheSystemsColoursWhileItIsShown) {
    const auto white = [&] { return countOf(*picture(page->window()), RGB(255, 255, 255)); };
    {
        const BlackScheme scheme;
        SendMessageW(page->window(), WM_SYSCOLORCHANGE, 0, 0);
        auto image = picture(page->window());
        EXPECT_EQ(colorAt(*image, 1, 1), RGB(0, 0, 0));
        auto label = picture(view(screen().font.lblFontName));
        EXPECT_EQ(colorAt(*label, label->width() - 1, 0), RGB(0, 0, 0));
        EXPECT_GT(countOf(*label, RGB(255, 255, 255)), 20);
        keepPicture(page->window(), "screen-high-contrast");
        clickTool(screen().overview.tlbChars, "Numeric");
        keepPicture(page->window(), "screen-high-contrast-grid");
        clickTool(screen().overview.tlbChars, "Graphical");
    }
    const int before = white();
    SendMessageW(page->window(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_NE(colorAt(*picture(page->window()), 1, 1), RGB(0, 0, 0));
    EXPECT_NE(white(), before);
}

}  // namespace
}  // namespace dravik::test
