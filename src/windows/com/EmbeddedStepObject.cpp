#include "windows/com/EmbeddedStepObject.h"

#include <cstring>
#include <utility>

#include "windows/com/ArrayView.h"
#include "windows/com/Boundary.h"
#include "windows/com/ToolValues.h"
#include "windows/com/WicImage.h"

namespace dravik::com {
namespace {

constexpr wchar_t kSource[] = L"Dravik.EmbeddedStep";
constexpr std::int32_t kWhite = 255;

std::size_t pixelCount(const engine::GreyImage& image) {
    return static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
}

bool isBytes(const VARIANT& pixels) {
    return (innermost(pixels).vt & ~VT_BYREF) == (VT_ARRAY | VT_UI1);
}

engine::GreyImage imageOf(LONG width, LONG height, const VARIANT& pixels) {
    engine::GreyImage image(width, height);
    if (image.empty()) return image;
    if (isBytes(pixels)) {
        const ArrayView array(pixels, 1);
        if (array.rows() != pixelCount(image)) throw Failure(RuntimeError::SubscriptOutOfRange);
        std::memcpy(image.row(0).data(), array.elementsOf(VT_UI1), pixelCount(image));
        return image;
    }
    const std::vector<std::int32_t> numbers = int32sOf(pixels);
    if (numbers.size() != pixelCount(image)) throw Failure(RuntimeError::SubscriptOutOfRange);
    std::uint8_t* at = image.row(0).data();
    for (const std::int32_t number : numbers) {
        if (number < 0 || number > kWhite) throw Failure(RuntimeError::Overflow);
        *at++ = static_cast<std::uint8_t>(number);
    }
    return image;
}

std::string textOf(const std::vector<engine::ReadCharacter>& characters) {
    std::string text;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (i > 0 && characters[i].place.line != characters[i - 1].place.line) text += "\r\n";
        text += characters[i].character;
    }
    return text;
}

}  // namespace

EmbeddedStepObject::EmbeddedStepObject()
    : FontToolObject({__uuidof(IEmbeddedStep), static_cast<IEmbeddedStep*>(this)}) {}

HRESULT EmbeddedStepObject::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    if (iid == IID_IDispatch || iid == __uuidof(IEmbeddedStep))
        return handOut(static_cast<IEmbeddedStep*>(this), out);
    return FontToolObject::QueryInterface(iid, out);
}

engine::EmbeddedTool& EmbeddedStepObject::embedded() {
    if (!tool_) tool_ = std::make_shared<engine::EmbeddedTool>(folder_, true);
    return *tool_;
}

tool::StepPtr EmbeddedStepObject::step() {
    embedded();
    return tool_;
}

template <typename Body>
HRESULT EmbeddedStepObject::own(Body body) noexcept {
    return comCall(__uuidof(IEmbeddedStep), kSource, std::move(body));
}

HRESULT EmbeddedStepObject::get_JobsFolder(BSTR* Path) {
    return own([&] { required(Path) = Bstr(folder_.folder()).detach(); });
}

HRESULT EmbeddedStepObject::put_JobsFolder(BSTR Path) {
    return own([&] {
        if (tool_)
            throw Failure(RuntimeError::InvalidProcedureCall,
                          "The jobs folder can be set before the step is first used only");
        std::string path = toUtf8(Path);
        if (path.empty()) throw Failure(RuntimeError::PathNotFound);
        folder_ = JobFolder(std::move(path));
    });
}

HRESULT EmbeddedStepObject::OpenImage(BSTR Path) {
    return own([&] { embedded().setImage(decodeImageFileByWic(toUtf8(Path))); });
}

HRESULT EmbeddedStepObject::SetImage(LONG Width, LONG Height, VARIANT Pixels) {
    return own([&] { embedded().setImage(imageOf(Width, Height, Pixels)); });
}

HRESULT EmbeddedStepObject::ReadImage(BSTR* Text) {
    return own([&] { required(Text) = Bstr(textOf(embedded().read())).detach(); });
}

HRESULT EmbeddedStepObject::InterfaceSupportsErrorInfo(REFIID iid) {
    return iid == __uuidof(IEmbeddedStep) ? S_OK : FontToolObject::InterfaceSupportsErrorInfo(iid);
}

}  // namespace dravik::com
