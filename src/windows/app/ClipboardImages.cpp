#include "windows/app/ClipboardImages.h"

#include <shellapi.h>
#include <wincodec.h>

#include "base/Failure.h"
#include "windows/com/Boundary.h"
#include "windows/com/ComText.h"

namespace dravik::app {
namespace {

class OpenClipboardOf {
  public:
    explicit OpenClipboardOf(HWND owner) : open_(OpenClipboard(owner) != FALSE) {}
    OpenClipboardOf(const OpenClipboardOf&) = delete;
    OpenClipboardOf& operator=(const OpenClipboardOf&) = delete;
    ~OpenClipboardOf() {
        if (open_) CloseClipboard();
    }
    explicit operator bool() const noexcept { return open_; }

  private:
    const bool open_;
};

void writePng(HBITMAP picture, const std::string& file) {
    using com::check;
    com::ComPtr<IWICImagingFactory> factory;
    check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           __uuidof(IWICImagingFactory), factory.putVoid()));
    com::ComPtr<IWICBitmap> pixels;
    check(factory->CreateBitmapFromHBITMAP(picture, nullptr, WICBitmapIgnoreAlpha, pixels.put()));
    com::ComPtr<IWICStream> stream;
    check(factory->CreateStream(stream.put()));
    check(stream->InitializeFromFilename(wide(file).c_str(), GENERIC_WRITE));
    com::ComPtr<IWICBitmapEncoder> encoder;
    check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.put()));
    check(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache));
    com::ComPtr<IWICBitmapFrameEncode> frame;
    com::ComPtr<IPropertyBag2> options;
    check(encoder->CreateNewFrame(frame.put(), options.put()));
    check(frame->Initialize(options.get()));
    check(frame->WriteSource(pixels.get(), nullptr));
    check(frame->Commit());
    check(encoder->Commit());
}

}  // namespace

std::vector<std::string> pathsOf(HDROP files) {
    std::vector<std::string> paths;
    const UINT count = DragQueryFileW(files, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(files, i, nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(files, i, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(utf8(path));
    }
    return paths;
}

std::vector<std::string> clipboardImages(HWND owner, const std::string& newFile) {
    const OpenClipboardOf clipboard(owner);
    if (!clipboard) throw Failure(RuntimeError::PermissionDenied, "The clipboard is in use");
    if (const HANDLE files = GetClipboardData(CF_HDROP)) return pathsOf(static_cast<HDROP>(files));
    const auto picture = static_cast<HBITMAP>(GetClipboardData(CF_BITMAP));
    if (!picture) return {};
    try {
        writePng(picture, newFile);
    } catch (const Failure& failure) {
        throw Failure(RuntimeError::DeviceIoError, newFile + ": " + failure.description());
    }
    return {newFile};
}

bool clipboardHasImages() {
    return IsClipboardFormatAvailable(CF_HDROP) ||
           (IsClipboardFormatAvailable(CF_BITMAP) && !IsClipboardFormatAvailable(CF_UNICODETEXT));
}

}  // namespace dravik::app
