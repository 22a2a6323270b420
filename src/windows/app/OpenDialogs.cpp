#include "windows/app/OpenDialogs.h"

#include <shlobj.h>
#include <shobjidl.h>

#include "base/Failure.h"
#include "windows/win32/Module.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

std::wstring pathOf(IShellItem& item) {
    wchar_t* path = nullptr;
    if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &path))) return {};
    std::wstring result = path;
    CoTaskMemFree(path);
    return result;
}

class OpenDialog {
  public:
    OpenDialog(const wchar_t* title, FILEOPENDIALOGOPTIONS options, const std::wstring& folder) {
        if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog,
                                    reinterpret_cast<void**>(&dialog_))))
            throw Failure(RuntimeError::InternalError, "The dialog to open files cannot be made");
        FILEOPENDIALOGOPTIONS usual = 0;
        dialog_->GetOptions(&usual);
        dialog_->SetOptions(usual | options | FOS_FORCEFILESYSTEM);
        dialog_->SetTitle(title);
        IShellItem* start = nullptr;
        if (!folder.empty() && SUCCEEDED(SHCreateItemFromParsingName(folder.c_str(), nullptr, IID_IShellItem,
                                                                     reinterpret_cast<void**>(&start)))) {
            dialog_->SetFolder(start);
            start->Release();
        }
    }
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;
    ~OpenDialog() { dialog_->Release(); }

    IFileOpenDialog* operator->() const noexcept { return dialog_; }

    std::vector<std::wstring> run(HWND owner) {
        const win32::Styles styles;
        std::vector<std::wstring> paths;
        IShellItemArray* items = nullptr;
        if (dialog_->Show(owner) != S_OK || FAILED(dialog_->GetResults(&items))) return paths;
        DWORD count = 0;
        items->GetCount(&count);
        for (DWORD i = 0; i < count; ++i) {
            IShellItem* item = nullptr;
            if (FAILED(items->GetItemAt(i, &item))) continue;
            paths.push_back(pathOf(*item));
            item->Release();
        }
        items->Release();
        return paths;
    }

  private:
    IFileOpenDialog* dialog_ = nullptr;
};

}  // namespace

std::vector<std::string> chooseImages(HWND owner, std::wstring& folder) {
    OpenDialog dialog(L"Open Part Images", FOS_ALLOWMULTISELECT | FOS_FILEMUSTEXIST, folder);
    const COMDLG_FILTERSPEC filters[] = {
        {L"Images", L"*.png;*.bmp;*.jpg;*.jpeg;*.tif;*.tiff;*.gif;*.ico;*.jxr;*.wdp;*.webp"},
        {L"All files", L"*.*"}};
    dialog->SetFileTypes(2, filters);
    std::vector<std::string> result;
    for (const std::wstring& path : dialog.run(owner)) {
        folder = path.substr(0, path.find_last_of(L"\\/"));
        result.push_back(win32::utf8(path));
    }
    return result;
}

std::string chooseFolder(HWND owner, std::wstring& folder) {
    OpenDialog dialog(L"Open Folder of Part Images", FOS_PICKFOLDERS | FOS_PATHMUSTEXIST, folder);
    const std::vector<std::wstring> paths = dialog.run(owner);
    if (paths.empty()) return {};
    folder = paths.front();
    return win32::utf8(folder);
}

}  // namespace dravik::app
