#include "windows/app/WindowMenus.h"

#include <string>

namespace dravik::app {
namespace {

void add(HMENU menu, Command command, const wchar_t* text) {
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(command), text);
}

void addLine(HMENU menu) {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
}

void addMenu(HMENU bar, HMENU menu, const wchar_t* text) {
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), text);
}

}  // namespace

// Access keys of the menus keep clear of those on the page.
HMENU makeMenuBar() {
    const HMENU file = CreatePopupMenu();
    add(file, Command::OpenImages, L"&Open Images...\tCtrl+O");
    add(file, Command::OpenFolder, L"Open &Folder...\tCtrl+Shift+O");
    addLine(file);
    add(file, Command::CloseImage, L"&Close Image\tCtrl+W");
    add(file, Command::CloseAll, L"Close &All");
    addLine(file);
    add(file, Command::Quit, L"&Quit\tCtrl+Q");
    const HMENU image = CreatePopupMenu();
    add(image, Command::Previous, L"&Previous\tAlt+Left");
    add(image, Command::Next, L"&Next\tAlt+Right");
    addLine(image);
    add(image, Command::ZoomIn, L"Zoom &In\tCtrl++");
    add(image, Command::ZoomOut, L"Zoom &Out\tCtrl+-");
    add(image, Command::Fit, L"&Fit\tCtrl+0");
    add(image, Command::ActualSize, L"&Actual Size\tCtrl+1");
    const HMENU help = CreatePopupMenu();
    add(help, Command::Keys, L"&Keys\tF1");
    add(help, Command::About, L"&About Dravik Trainer");

    const HMENU bar = CreateMenu();
    addMenu(bar, file, L"&File");
    addMenu(bar, image, L"I&mage");
    const HMENU font = CreatePopupMenu();
    add(font, Command::FontSelect, L"Select &Font...\tCtrl+F");
    add(font, Command::FontInclude, L"&Include");
    add(font, Command::FontLearn, L"&Learn\tCtrl+L");
    add(font, Command::FontStop, L"S&top\tCtrl+.");
    add(font, Command::FontSave, L"&Save\tCtrl+S");
    add(font, Command::FontRevert, L"&Revert");
    addMenu(bar, font, L"F&ont");
    addMenu(bar, help, L"&Help");
    return bar;
}

std::string fontButton(Command command) {
    switch (command) {
        case Command::FontSelect:
            return "cmdSelectFont";
        case Command::FontInclude:
            return "cmdInclude";
        case Command::FontLearn:
            return "cmdTrain";
        case Command::FontStop:
            return "cmdStop";
        case Command::FontSave:
            return "cmdSaveFont";
        case Command::FontRevert:
            return "cmdRevert";
        default:
            return {};
    }
}

AcceleratorTable::AcceleratorTable() {
    const auto key = [](BYTE keys, WORD code, Command command) {
        return ACCEL{static_cast<BYTE>(keys | FVIRTKEY), code, static_cast<WORD>(command)};
    };
    ACCEL table[] = {
        key(FCONTROL, 'O', Command::OpenImages),
        key(FCONTROL | FSHIFT, 'O', Command::OpenFolder),
        key(FCONTROL, 'W', Command::CloseImage),
        key(FCONTROL, VK_F4, Command::CloseImage),
        key(FCONTROL, 'Q', Command::Quit),
        key(FALT, VK_LEFT, Command::Previous),
        key(FALT, VK_RIGHT, Command::Next),
        key(FCONTROL, VK_OEM_PLUS, Command::ZoomIn),
        key(FCONTROL | FSHIFT, VK_OEM_PLUS, Command::ZoomIn),
        key(FCONTROL, VK_ADD, Command::ZoomIn),
        key(FCONTROL, VK_OEM_MINUS, Command::ZoomOut),
        key(FCONTROL, VK_SUBTRACT, Command::ZoomOut),
        key(FCONTROL, '0', Command::Fit),
        key(FCONTROL, VK_NUMPAD0, Command::Fit),
        key(FCONTROL, '1', Command::ActualSize),
        key(FCONTROL, VK_NUMPAD1, Command::ActualSize),
        key(FCONTROL, 'F', Command::FontSelect),
        key(FCONTROL, 'L', Command::FontLearn),
        key(FCONTROL, VK_OEM_PERIOD, Command::FontStop),
        key(FCONTROL, 'S', Command::FontSave),
        key(0, VK_F1, Command::Keys),
    };
    handle_ = CreateAcceleratorTableW(table, static_cast<int>(std::size(table)));
}

}  // namespace dravik::app
