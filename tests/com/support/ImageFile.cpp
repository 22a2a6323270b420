#include "com/support/ImageFile.h"

#include "activex/com/Boundary.h"
#include "activex/com/ComText.h"

namespace dravik::test {

void writeImage(const std::string& path, const GreyImage& image, const GUID& container) {
    ComPtr<IWICImagingFactory> factory;
    check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           __uuidof(IWICImagingFactory), factory.putVoid()));
    ComPtr<IWICStream> stream;
    check(factory->CreateStream(stream.put()));
    check(stream->InitializeFromFilename(toWide(path).c_str(), GENERIC_WRITE));
    ComPtr<IWICBitmapEncoder> encoder;
    check(factory->CreateEncoder(container, nullptr, encoder.put()));
    check(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache));
    ComPtr<IWICBitmapFrameEncode> frame;
    ComPtr<IPropertyBag2> options;
    check(encoder->CreateNewFrame(frame.put(), options.put()));
    check(frame->Initialize(nullptr));
    check(frame->SetSize(static_cast<UINT>(image.width()), static_cast<UINT>(image.height())));
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    check(frame->SetPixelFormat(&format));
    std::vector<BYTE> row(static_cast<std::size_t>(image.width()) * 3);
    for (int y = 0; y < image.height(); ++y) {
        for (std::size_t i = 0; i < row.size(); ++i) row[i] = image.row(y)[i / 3];
        check(
            frame->WritePixels(1, static_cast<UINT>(row.size()), static_cast<UINT>(row.size()), row.data()));
    }
    check(frame->Commit());
    check(encoder->Commit());
}

}  // namespace dravik::test
