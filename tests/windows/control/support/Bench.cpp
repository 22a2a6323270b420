#include "windows/control/support/Bench.h"

#include "contract/DrawnText.h"
#include "drivers/win32/ImageFile.h"
#include "windows/com/Boundary.h"
#include "windows/com/ToolValues.h"

namespace dravik::test {

const ControlFile& controlFile() {
    static const ControlFile file(L"DravikDlg.ocx");  // beside the program
    return file;
}

ComPtr<IUnknown> newControl() {
    return controlFile().make(CLSID_DravikDlg);
}

int withRegisteredControl(const std::function<int()>& work) {
    OleInitialize(nullptr);
    int result = 1;
    try {
        check(controlFile()("DllRegisterServer"));
        result = work();
        controlFile()("DllUnregisterServer");
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
    }
    OleUninitialize();
    return result;
}

Bench::Bench(const std::string& hostName, const char* shown) {
    script.answerOthers(IDOK);
    if (hostName == "strict")
        host = std::make_unique<StrictHost>(newControl());
    else
        host = makeSystemHost(hostName);
    if (!host->control()) throw std::runtime_error("no control in the host");
    host->pump();
    if (shown) bind(shown);
}

void Bench::bind(const std::string& shown, ComPtr<IEmbeddedStep> embedded) {
    step = embedded ? std::move(embedded) : controlFile().make(CLSID_EmbeddedStep).as<IEmbeddedStep>();
    const auto tool = step.as<IFontTool>();
    const std::vector<std::string> set = {"H", "E", "L", "O"};
    check(tool->CreateFont(Bstr(std::string_view("bench")).get()));
    check(tool->SetCharacterSet(listValue(set, Elements::Typed).get()));
    LONG status = 0;
    check(tool->SaveFont(Bstr(std::string_view("bench")).get(), &status));
    show(shown);
    const auto editor = as<::StepEditor>();
    check(editor->putref_RootStep(step.as<IDispatch>().get()));
    check(editor->putref_Step(step.as<IDispatch>().get()));
    host->pump();
}

void Bench::show(const std::string& text) {
    const GreyImage image = drawn({text});
    check(step->SetImage(image.width(), image.height(), bytesOf(image).get()));
}

HWND Bench::input() const {
    const auto edits = children(page(), L"Edit");
    return edits.size() > 1 ? edits[1] : nullptr;
}

HWND Bench::button(const wchar_t* caption) const {
    return child(page(), L"Button", caption);
}

Bench::Cell Bench::cell(wchar_t character) const {
    for (const HWND window : children(page(), L"DravikCells")) {
        const test::AccessibleWindow board(window);
        for (LONG number = 1; number <= board.parts(); ++number) {
            if (!board.name(number).starts_with(character)) continue;
            const RECT place = board.place(number);
            POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
            ScreenToClient(window, &middle);
            return {window, number, middle};
        }
    }
    return {};
}

std::wstring Bench::status() const {
    const auto bars = children(page(), STATUSCLASSNAMEW);
    return bars.empty() ? L"(no status bar)" : statusText(bars.front());
}

void Bench::type(const wchar_t* text) {
    SetFocus(input());
    SendMessageW(input(), EM_SETSEL, 0, -1);
    SendMessageW(input(), WM_CLEAR, 0, 0);
    for (const wchar_t* at = text; *at; ++at) PostMessageW(input(), WM_CHAR, static_cast<WPARAM>(*at), 0);
    host->pump();
}

void Bench::press(const wchar_t* caption) {
    HWND pressed = button(caption);
    ASSERT_TRUE(pressed) << "no such button";
    ASSERT_TRUE(IsWindowEnabled(pressed)) << "the button is disabled";
    PostMessageW(pressed, BM_CLICK, 0, 0);
    host->pump();
}

void Bench::rightClick(const Cell& cell) {
    const LPARAM place = MAKELPARAM(cell.middle.x, cell.middle.y);
    PostMessageW(cell.window, WM_RBUTTONDOWN, MK_RBUTTON, place);
    PostMessageW(cell.window, WM_RBUTTONUP, 0, place);
    host->pump();
}

bool Bench::waitForStatus(const std::wstring& text) {
    return host->pumpUntil([&] { return status().find(text) != std::wstring::npos; });
}

void Bench::include(const std::string& text) {
    show(text);
    type(wide(text).c_str());
    press(L"&Include");
    EXPECT_TRUE(waitForStatus(std::to_wstring(text.size()) + L" samples included."))
        << "status: " << utf8(status());
}

void Bench::learn() {
    press(L"Learn");
    EXPECT_TRUE(waitForStatus(L"Save Font or Revert")) << "status: " << utf8(status());
}

void Bench::closeUnsaved() {
    script.expectBox(L"Font Changed", IDNO);
    host->close();
}

void Bench::pressTool(int place) const {
    const HWND toolbar = children(page(), TOOLBARCLASSNAMEW).front();
    TBBUTTON button{};
    ASSERT_TRUE(
        SendMessageW(toolbar, TB_GETBUTTON, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&button)));
    PostMessageW(GetParent(toolbar), WM_COMMAND, static_cast<WPARAM>(button.idCommand),
                 reinterpret_cast<LPARAM>(toolbar));
    host->pump();
}

}  // namespace dravik::test
