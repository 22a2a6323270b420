#include "drivers/win32/PngFile.h"

#include "windows/com/WindowsSdk.h"
// Behind the Windows headers
#include <wincodec.h>

#include <vector>

#include "base/Failure.h"
#include "windows/com/ComPtr.h"
#include "windows/win32/WinText.h"

namespace dravik::test {
namespace {

void check(HRESULT result, const std::string& path) {
    if (FAILED(result))
        throw Failure(
            RuntimeError::PathFileAccessError,
            path + ": the picture cannot be written: " + win32::lastErrorText(static_cast<DWORD>(result)));
}

}  // namespace

void writePng(const std::string& path, win32::Canvas& picture) {
    for (std::uint32_t& pixel : picture.pixels()) pixel |= 0xFF000000u;
    com::ComPtr<IWICImagingFactory> factory;
    com::ComPtr<IWICStream> stream;
    com::ComPtr<IWICBitmapEncoder> encoder;
    com::ComPtr<IWICBitmapFrameEncode> frame;
    check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                           factory.putVoid()),
          path);
    check(factory->CreateStream(stream.put()), path);
    check(stream->InitializeFromFilename(win32::wide(path).c_str(), GENERIC_WRITE), path);
    check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.put()), path);
    check(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache), path);
    check(encoder->CreateNewFrame(frame.put(), nullptr), path);
    check(frame->Initialize(nullptr), path);
    check(frame->SetSize(static_cast<UINT>(picture.width()), static_cast<UINT>(picture.height())), path);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    check(frame->SetPixelFormat(&format), path);
    std::vector<BYTE> bytes;
    const auto stride = static_cast<std::size_t>(picture.width()) * 3;
    bytes.reserve(stride * static_cast<std::size_t>(picture.height()));
    for (const std::uint32_t pixel : picture.pixels())
        for (const int shift : {0, 8, 16}) bytes.push_back(static_cast<BYTE>(pixel >> shift & 0xFF));
    check(frame->WritePixels(static_cast<UINT>(picture.height()), static_cast<UINT>(stride),
                             static_cast<UINT>(bytes.size()), bytes.data()),
          path);
    check(frame->Commit(), path);
    check(encoder->Commit(), path);
}

}  // namespace dravik::test
