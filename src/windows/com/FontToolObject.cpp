#include "windows/com/FontToolObject.h"

#include <utility>

#include "windows/com/Boundary.h"
#include "windows/com/ToolValues.h"

namespace dravik::com {
namespace {

constexpr wchar_t kSource[] = L"Dravik.EmbeddedStep";

void give(BSTR* out, const std::string& text) {
    required(out) = Bstr(text).detach();
}

void give(VARIANT* out, Variant value) {
    required(out) = value.detach();
}

}  // namespace

FontToolObject::FontToolObject(tool::StepPtr step) : step_(std::move(step)), dispatch_(faces()) {}

FontToolObject::FontToolObject(Dispatch::Face own)
    : dispatch_([&] {
          auto all = faces();
          all.insert(all.begin(), own);
          return all;
      }()) {}

std::vector<Dispatch::Face> FontToolObject::faces() {
    return {{__uuidof(IFontTool), static_cast<IFontTool*>(this)},
            {__uuidof(IStep), static_cast<IStep*>(this)}};
}

HRESULT FontToolObject::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(IFontTool))
        return handOut(static_cast<IFontTool*>(this), out);
    if (iid == __uuidof(IStep)) return handOut(static_cast<IStep*>(this), out);
    if (iid == IID_ISupportErrorInfo) return handOut(static_cast<ISupportErrorInfo*>(this), out);
    if (iid == __uuidof(INativeStep)) return handOut(static_cast<INativeStep*>(this), out);
    return E_NOINTERFACE;
}

ULONG FontToolObject::AddRef() {
    return ++references_;
}

ULONG FontToolObject::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT FontToolObject::GetTypeInfoCount(UINT* count) {
    return dispatch_.typeInfoCount(count);
}

HRESULT FontToolObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    return dispatch_.typeInfo(index, info);
}

HRESULT FontToolObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return dispatch_.idsOfNames(names, count, ids);
}

HRESULT FontToolObject::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) {
    return dispatch_.invoke(id, locale, flags, parameters, result, exception, wrongArgument);
}

template <typename Body>
HRESULT FontToolObject::tool(Body body) noexcept {
    return comCall(__uuidof(IFontTool), kSource, [&] { body(step()->fontTool()); });
}

HRESULT FontToolObject::LoadFont(BSTR FontName) {
    return tool([&](tool::FontTool& font) { font.LoadFont(toUtf8(FontName)); });
}

HRESULT FontToolObject::CreateFont(BSTR FontName) {
    return tool([&](tool::FontTool& font) { font.CreateFont(toUtf8(FontName)); });
}

HRESULT FontToolObject::DeleteFont(BSTR FontName) {
    return tool([&](tool::FontTool& font) { font.DeleteFont(toUtf8(FontName)); });
}

HRESULT FontToolObject::RenameFont(BSTR NewName, BSTR ExistingName) {
    return tool([&](tool::FontTool& font) { font.RenameFont(toUtf8(NewName), toUtf8(ExistingName)); });
}

HRESULT FontToolObject::DuplicateFont(BSTR NewName, BSTR ExistingName) {
    return tool([&](tool::FontTool& font) { font.DuplicateFont(toUtf8(NewName), toUtf8(ExistingName)); });
}

HRESULT FontToolObject::SetCharacterSet(VARIANT CharacterSet) {
    return tool([&](tool::FontTool& font) { font.SetCharacterSet(textsOf(CharacterSet)); });
}

HRESULT FontToolObject::IncludeSamples(BSTR ExpectedText) {
    return tool([&](tool::FontTool& font) { font.IncludeSamples(toUtf8(ExpectedText)); });
}

HRESULT FontToolObject::CommitNewSamples() {
    return tool([](tool::FontTool& font) { font.CommitNewSamples(); });
}

HRESULT FontToolObject::SetTrainTimeout(LONG Seconds) {
    return tool([&](tool::FontTool& font) { font.SetTrainTimeout(Seconds); });
}

HRESULT FontToolObject::StartTraining() {
    return tool([](tool::FontTool& font) { font.StartTraining(); });
}

HRESULT FontToolObject::SaveFont(BSTR FontName, LONG* Status) {
    return tool([&](tool::FontTool& font) {
        required(Status) = 0;
        font.SaveFont(toUtf8(FontName));
    });
}

HRESULT FontToolObject::RevertFont(BSTR FontName, LONG* Status) {
    return tool([&](tool::FontTool& font) {
        required(Status) = 0;
        font.RevertFont(toUtf8(FontName));
    });
}

HRESULT FontToolObject::GetFontList(VARIANT* Names) {
    return tool(
        [&](tool::FontTool& font) { give(Names, listValue(font.GetFontList(), Elements::Variants)); });
}

HRESULT FontToolObject::GetCharacterSet(VARIANT* CharacterSet) {
    return tool([&](tool::FontTool& font) {
        give(CharacterSet, listValue(font.GetCharacterSet(), Elements::Variants));
    });
}

HRESULT FontToolObject::GetTrainTimeout(LONG* Seconds) {
    return tool([&](tool::FontTool& font) { required(Seconds) = font.GetTrainTimeout(); });
}

HRESULT FontToolObject::IsTrainingDone(VARIANT_BOOL* Done) {
    return tool(
        [&](tool::FontTool& font) { required(Done) = font.IsTrainingDone() ? VARIANT_TRUE : VARIANT_FALSE; });
}

HRESULT FontToolObject::GetRmsError(FLOAT* RmsError) {
    return tool([&](tool::FontTool& font) { required(RmsError) = font.GetRmsError(); });
}

HRESULT FontToolObject::IsTrainingAborted(VARIANT_BOOL* Aborted) {
    return tool([&](tool::FontTool& font) {
        required(Aborted) = font.IsTrainingAborted() ? VARIANT_TRUE : VARIANT_FALSE;
    });
}

HRESULT FontToolObject::GetTrainCycles(LONG* Cycles) {
    return tool([&](tool::FontTool& font) { required(Cycles) = font.GetTrainCycles(); });
}

HRESULT FontToolObject::StopTraining() {
    return tool([](tool::FontTool& font) { font.StopTraining(); });
}

HRESULT FontToolObject::GetUncommittedSamples(VARIANT* Characters) {
    return tool([&](tool::FontTool& font) { give(Characters, columnValue(font.GetUncommittedSamples())); });
}

HRESULT FontToolObject::DeleteSample(LONG Identifier) {
    return tool([&](tool::FontTool& font) { font.DeleteSample(Identifier); });
}

HRESULT FontToolObject::GetSampleData(VARIANT Selectors, VARIANT FieldCodes, VARIANT* Records) {
    return tool([&](tool::FontTool& font) {
        give(Records, tableValue(font.GetSampleData(int32sOf(Selectors), int16sOf(FieldCodes)).get()));
    });
}

HRESULT FontToolObject::get_ProgId(BSTR* Value) {
    return comCall(__uuidof(IStep), kSource, [&] { give(Value, step()->programIdentifier()); });
}

HRESULT FontToolObject::get_Datum(BSTR Name, VARIANT* Value) {
    return comCall(__uuidof(IStep), kSource, [&] { give(Value, Variant(step()->datum(toUtf8(Name)))); });
}

HRESULT FontToolObject::InterfaceSupportsErrorInfo(REFIID iid) {
    return iid == __uuidof(IFontTool) || iid == __uuidof(IStep) || iid == IID_IDispatch ? S_OK : S_FALSE;
}

bool FontToolObject::nativeStep(HMODULE module, tool::StepPtr& native) noexcept {
    if (module != thisModule()) return false;
    try {
        native = step();
        return true;
    } catch (...) {
        return false;
    }
}

ComPtr<IUnknown> newFontToolObject(tool::StepPtr step) {
    return ComPtr<IUnknown>::attach(static_cast<IFontTool*>(new FontToolObject(std::move(step))));
}

}  // namespace dravik::com
