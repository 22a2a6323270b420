#include "drivers/win32/ImageFile.h"

#include "windows/com/Boundary.h"
#include "windows/com/ComText.h"

namespace dravik::test {

using namespace com;

void writeImage(const std::string& path, const GUID& container, const WICPixelFormatGUID& format, UINT width,
                UINT height, UINT stride, std::vector<BYTE> bytes) {
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           __uuidof(IWICImagingFactory), factory.putVoid()));
    check(factory->CreateStream(stream.put()));
    check(stream->InitializeFromFilename(wide(path).c_str(), GENERIC_WRITE));
    check(factory->CreateEncoder(container, nullptr, encoder.put()));
    check(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache));
    check(encoder->CreateNewFrame(frame.put(), nullptr));
    check(frame->Initialize(nullptr));
    check(frame->SetSize(width, height));
    WICPixelFormatGUID taken = format;
    check(frame->SetPixelFormat(&taken));
    if (!(taken == format)) throw Failure(RuntimeError::TypeMismatch, path + " is not written as meant");
    check(frame->WritePixels(height, stride, static_cast<UINT>(bytes.size()), bytes.data()));
    check(frame->Commit());
    check(encoder->Commit());
}

void writeImage(const std::string& path, const GreyImage& image, const GUID& container) {
    const auto width = static_cast<UINT>(image.width());
    const auto height = static_cast<UINT>(image.height());
    std::vector<BYTE> bytes;
    for (int y = 0; y < image.height(); ++y)
        for (const std::uint8_t level : image.row(y)) bytes.insert(bytes.end(), 3, level);
    writeImage(path, container, GUID_WICPixelFormat24bppBGR, width, height, width * 3, std::move(bytes));
}

Variant bytesOf(const GreyImage& image) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(image.width() * image.height()));
    for (LONG i = 0; i < image.width() * image.height(); ++i) {
        BYTE level = image(i % image.width(), i / image.width());
        check(SafeArrayPutElement(array, &i, &level));
    }
    return Variant::ofArray(VT_UI1, array);
}

void writeImage(const std::string& path, win32::Canvas& picture) {
    const auto width = static_cast<UINT>(picture.width());
    std::vector<BYTE> bytes;
    for (const std::uint32_t pixel : picture.pixels())
        for (const int shift : {0, 8, 16}) bytes.push_back(static_cast<BYTE>(pixel >> shift & 0xFF));
    writeImage(path, GUID_ContainerFormatPng, GUID_WICPixelFormat24bppBGR, width,
               static_cast<UINT>(picture.height()), width * 3, std::move(bytes));
}

}  // namespace dravik::test
