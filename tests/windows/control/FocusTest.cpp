// Where the keyboard focus is when it comes back into the control, and who is told of it.
#include "windows/control/support/Bench.h"

namespace dravik::test {
namespace {

class FocusOfContainer : public testing::Test {
  protected:
    HRESULT verb(LONG verb, MSG* message = nullptr) { return bench.strict().verb(verb, message); }

    Bench bench{"strict", "HELLO"};
    HWND own = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, bench.host->frame(),
                               nullptr, nullptr, nullptr);
    HWND first = bench.button(L"Select Font");
};

TEST_F(FocusOfContainer, GoesBackToWhereItWas) {
    const auto comesBack = [&](const char* way, auto&& back) {
        SetFocus(bench.input());
        SetFocus(own);
        back();
        bench.host->pump();
        EXPECT_EQ(GetFocus(), bench.input()) << way;
    };
    comesBack("to the control's window", [&] { SetFocus(bench.page()); });
    comesBack("UIACTIVATE", [&] { verb(OLEIVERB_UIACTIVATE); });
    comesBack("HIDE and SHOW", [&] {
        verb(OLEIVERB_HIDE);
        verb(OLEIVERB_SHOW);
    });
    comesBack("another page by Ctrl+Tab", [&] {
        const HeldKeys held{VK_CONTROL, VK_TAB};
        SetFocus(bench.page());
    });

    const HWND other = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100,
                                     nullptr, nullptr, nullptr, nullptr);
    for (const HWND focused : {bench.input(), own}) {
        SetFocus(focused);
        SetActiveWindow(other);
        bench.as<IOleInPlaceActiveObject>()->OnFrameWindowActivate(TRUE);
        SetActiveWindow(bench.host->frame());  // it takes the focus, as a window does unless told otherwise
        EXPECT_EQ(GetFocus(), bench.host->frame());
        bench.host->pump();
        EXPECT_EQ(GetFocus(), focused == own ? bench.host->frame() : focused)
            << "its own focus is the host's";
    }
    DestroyWindow(other);
}

TEST_F(FocusOfContainer, EntersByTabFromTheSideThatItComesFrom) {
    const auto enters = [&](std::initializer_list<int> keys, auto&& enter) {
        SetFocus(bench.input());
        SetFocus(own);
        const HeldKeys held(keys);
        enter();
        return GetFocus();
    };
    MSG tab{own, WM_KEYDOWN, VK_TAB, 1, 0, {}};
    EXPECT_EQ(enters({VK_TAB}, [&] { SetFocus(bench.page()); }), first);
    EXPECT_EQ(enters({}, [&] { verb(OLEIVERB_UIACTIVATE, &tab); }), first);
    const HWND last = enters({VK_SHIFT, VK_TAB}, [&] { SetFocus(bench.page()); });
    EXPECT_TRUE(IsChild(bench.page(), last));
    EXPECT_NE(last, first);
    EXPECT_EQ(enters({VK_SHIFT}, [&] { verb(OLEIVERB_UIACTIVATE, &tab); }), last);
    // On through the controls between, and out at the first one.
    int stops = 0;
    while (bench.site().keys.empty() && stops < 60) {
        bench.host->key(VK_TAB, ui::kShiftMask);
        ++stops;
    }
    EXPECT_GE(stops, 8);
    EXPECT_EQ(GetFocus(), first);
}

TEST_F(FocusOfContainer, IsLeftWithTheUserInterface) {
    SetFocus(bench.input());
    ASSERT_EQ(bench.as<IOleInPlaceObject>()->UIDeactivate(), S_OK);
    EXPECT_EQ(GetFocus(), bench.host->frame());
    EXPECT_EQ(bench.site().focus, 0);
    SetFocus(bench.input());
    EXPECT_EQ(bench.site().focus, 1);
    ASSERT_EQ(verb(OLEIVERB_HIDE), S_OK);
    EXPECT_EQ(GetFocus(), bench.host->frame()) << "keys would work on what is not seen";
    EXPECT_EQ(bench.site().focus, 0);
    ASSERT_EQ(verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(bench.site().focus, 1);
    bench.host->close();
    EXPECT_THAT(bench.site().faults, IsEmpty());
}

TEST_F(FocusOfContainer, TheHostIsToldWhenTheAccessKeysChange) {
    const auto keys = [&] { return bench.strict().controlInfo().cAccel; };
    const auto tellsOf = [&](auto&& change) {
        bench.host->pump();
        const int before = bench.site().count("OnControlInfoChanged");
        change();
        bench.host->pump();
        return bench.site().count("OnControlInfoChanged") - before;
    };
    const auto all = keys();
    EXPECT_EQ(tellsOf([&] { bench.type(L"HELLO"); }), 0) << "no key changed";
    bench.include("HELLO");
    bench.include("OLEH");
    EXPECT_EQ(tellsOf([&] { bench.learn(); }), 1);
    EXPECT_EQ(keys(), 0) << "nothing can be included before the run is saved or reverted";
    EXPECT_EQ(tellsOf([&] { bench.press(L"Revert"); }), 1);
    EXPECT_EQ(keys(), all);
    bench.closeUnsaved();
}

}  // namespace
}  // namespace dravik::test
