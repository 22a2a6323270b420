#include "windows/com/WicImage.h"

#include <propidl.h>
#include <wincodec.h>

#include <algorithm>

#include "base/FileSystem.h"
#include "windows/com/Boundary.h"
#include "windows/com/ComText.h"

namespace dravik::com {
namespace {

constexpr UINT kStripBytes = 16u << 20;
constexpr int kOpaque = 255;

class FileProblem {
  public:
    explicit FileProblem(const std::string& path) : name_(nameOf(path)) {}
    Failure operator()(RuntimeError error, const std::string& what) const {
        return Failure(error, name_ + ": " + what);
    }

  private:
    std::string name_;
};

ComPtr<IWICBitmapDecoder> openedDecoder(IWICImagingFactory& factory, const std::string& path,
                                        const FileProblem& problem) {
    const EntryKind kind = entryKind(path);
    if (kind == EntryKind::None) throw problem(RuntimeError::FileNotFound, "file not found");
    if (kind == EntryKind::Folder) throw problem(RuntimeError::PathFileAccessError, "is a folder");
    ComPtr<IWICBitmapDecoder> decoder;
    const HRESULT opened = factory.CreateDecoderFromFilename(wide(path).c_str(), nullptr, GENERIC_READ,
                                                             WICDecodeMetadataCacheOnDemand, decoder.put());
    if (opened == HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED) ||
        opened == HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION))
        throw problem(RuntimeError::PermissionDenied, "may not be read");
    if (FAILED(opened)) throw problem(RuntimeError::InvalidProcedureCall, "not an image that can be read");
    return decoder;
}

// The orientation by which a camera says how it was held: 1 upright, to 8.
int orientationOf(IWICBitmapFrameDecode& frame) {
    ComPtr<IWICMetadataQueryReader> metadata;
    if (FAILED(frame.GetMetadataQueryReader(metadata.put()))) return 1;
    for (const wchar_t* place : {L"/app1/ifd/{ushort=274}", L"/ifd/{ushort=274}"}) {
        PROPVARIANT value;
        PropVariantInit(&value);
        const bool found = SUCCEEDED(metadata->GetMetadataByName(place, &value)) && value.vt == VT_UI2;
        const int orientation = found ? value.uiVal : 1;
        PropVariantClear(&value);
        if (found && orientation >= 1 && orientation <= 8) return orientation;
    }
    return 1;
}

engine::GreyImage turned(engine::GreyImage image, int orientation) {
    if (orientation == 1) return image;
    const bool sideways = orientation >= 5;
    const int width = image.width(), height = image.height();
    engine::GreyImage result(sideways ? height : width, sideways ? width : height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool mirrored =
                orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
            const bool upside = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
            const int column = mirrored ? width - 1 - x : x;
            const int row = upside ? height - 1 - y : y;
            (sideways ? result(row, column) : result(column, row)) = image(x, y);
        }
    return result;
}

std::uint8_t greyOf(const std::uint8_t* bgra) {
    const int alpha = bgra[3];
    const auto onWhite = [alpha](int colour) {
        return (colour * alpha + kOpaque * (kOpaque - alpha) + kOpaque / 2) / kOpaque;
    };
    return static_cast<std::uint8_t>((onWhite(bgra[2]) * 11 + onWhite(bgra[1]) * 16 + onWhite(bgra[0]) * 5) /
                                     32);
}

engine::GreyImage greyPixels(IWICBitmapSource& source, UINT width, UINT height) {
    engine::GreyImage image(static_cast<int>(width), static_cast<int>(height));
    const UINT stride = width * 4;
    const UINT rows = std::clamp(kStripBytes / stride, 1u, height);
    std::vector<std::uint8_t> strip(std::size_t{stride} * rows);
    for (UINT top = 0; top < height; top += rows) {
        const UINT count = std::min(rows, height - top);
        const WICRect place{0, static_cast<INT>(top), static_cast<INT>(width), static_cast<INT>(count)};
        check(source.CopyPixels(&place, stride, stride * count, strip.data()));
        for (UINT row = 0; row < count; ++row) {
            const auto out = image.row(static_cast<int>(top + row));
            const std::uint8_t* in = strip.data() + std::size_t{row} * stride;
            for (std::size_t x = 0; x < out.size(); ++x) out[x] = greyOf(in + x * 4);
        }
    }
    return image;
}

// COM for as long as this object lives, also on a thread that was started without it.
class ThreadApartment {
  public:
    ThreadApartment() : initialized_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
    ThreadApartment(const ThreadApartment&) = delete;
    ThreadApartment& operator=(const ThreadApartment&) = delete;
    ~ThreadApartment() {
        if (initialized_) CoUninitialize();
    }

  private:
    const bool initialized_;
};

}  // namespace

engine::GreyImage decodeImageFileByWic(const std::string& path) {
    const ThreadApartment apartment;
    ComPtr<IWICImagingFactory> factory;
    check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           __uuidof(IWICImagingFactory), factory.putVoid()));
    const FileProblem problem(path);
    const auto decoder = openedDecoder(*factory, path, problem);
    UINT width = 0, height = 0;
    try {
        ComPtr<IWICBitmapFrameDecode> frame;
        check(decoder->GetFrame(0, frame.put()));
        check(frame->GetSize(&width, &height));
        if (static_cast<std::int64_t>(width) * height <= engine::kMostPixels && width > 0 && height > 0) {
            ComPtr<IWICFormatConverter> converter;
            check(factory->CreateFormatConverter(converter.put()));
            check(converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone,
                                        nullptr, 0, WICBitmapPaletteTypeCustom));
            return turned(greyPixels(*converter, width, height), orientationOf(*frame));
        }
    } catch (const Failure& failure) {
        throw problem(RuntimeError::DeviceIoError, "damaged (" + failure.description() + ")");
    }
    if (width == 0 || height == 0) throw problem(RuntimeError::DeviceIoError, "damaged (no pixels)");
    throw problem(RuntimeError::OutOfMemory, "the image of " + std::to_string(width) + " x " +
                                                 std::to_string(height) +
                                                 " pixels is larger than 64 megapixels");
}

}  // namespace dravik::com
