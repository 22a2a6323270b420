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
    explicit OpenDialog(const trainer::FileQuestion& question) {
        if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog,
                                    reinterpret_cast<void**>(&dialog_))))
            throw Failure(RuntimeError::InternalError, "The dialog to open files cannot be made");
        FILEOPENDIALOGOPTIONS usual = 0;
        dialog_->GetOptions(&usual);
        dialog_->SetOptions(
            usual | FOS_FORCEFILESYSTEM |
            (question.asksForFolder
                 ? static_cast<DWORD>(FOS_PICKFOLDERS) | static_cast<DWORD>(FOS_PATHMUSTEXIST)
                 : static_cast<DWORD>(FOS_ALLOWMULTISELECT) | static_cast<DWORD>(FOS_FILEMUSTEXIST)));
        dialog_->SetTitle(win32::wide(question.title).c_str());
        setFilters(question.filters);
        IShellItem* start = nullptr;
        if (!question.folder.empty() &&
            SUCCEEDED(SHCreateItemFromParsingName(win32::wide(question.folder).c_str(), nullptr,
                                                  IID_IShellItem, reinterpret_cast<void**>(&start)))) {
            dialog_->SetFolder(start);
            start->Release();
        }
    }
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;
    ~OpenDialog() { dialog_->Release(); }

    std::vector<std::string> run(HWND owner) {
        const win32::Styles styles;
        std::vector<std::string> paths;
        IShellItemArray* items = nullptr;
        if (dialog_->Show(owner) != S_OK || FAILED(dialog_->GetResults(&items))) return paths;
        DWORD count = 0;
        items->GetCount(&count);
        for (DWORD i = 0; i < count; ++i) {
            IShellItem* item = nullptr;
            if (FAILED(items->GetItemAt(i, &item))) continue;
            paths.push_back(win32::utf8(pathOf(*item)));
            item->Release();
        }
        items->Release();
        return paths;
    }

  private:
    void setFilters(const std::vector<trainer::FileFilter>& filters) {
        std::vector<std::pair<std::wstring, std::wstring>> texts;
        for (const trainer::FileFilter& filter : filters) {
            std::string patterns;
            for (const std::string& pattern : filter.patterns)
                patterns += (patterns.empty() ? "" : ";") + pattern;
            texts.emplace_back(win32::wide(filter.name), win32::wide(patterns));
        }
        std::vector<COMDLG_FILTERSPEC> types;
        for (const auto& [name, patterns] : texts) types.push_back({name.c_str(), patterns.c_str()});
        if (!types.empty()) dialog_->SetFileTypes(static_cast<UINT>(types.size()), types.data());
    }

    IFileOpenDialog* dialog_ = nullptr;
};

}  // namespace

std::vector<std::string> choosePaths(HWND owner, const trainer::FileQuestion& question) {
    return OpenDialog(question).run(owner);
}

}  // namespace dravik::app
