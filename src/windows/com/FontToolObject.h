// A step and its font tool as a COM object: IStep, IFontTool, both also by names, and the texts of their
// failures.
#pragma once

#include <DravikLib.h>

#include <atomic>

#include "windows/com/ComStep.h"
#include "windows/com/Dispatch.h"
#include "windows/com/Module.h"

namespace dravik::com {

class FontToolObject : public IFontTool, public IStep, public ISupportErrorInfo, public INativeStep {
  public:
    // Starts with one reference, which is the caller's.
    explicit FontToolObject(tool::StepPtr step);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;

    HRESULT STDMETHODCALLTYPE LoadFont(BSTR FontName) override;
    HRESULT STDMETHODCALLTYPE CreateFont(BSTR FontName) override;
    HRESULT STDMETHODCALLTYPE DeleteFont(BSTR FontName) override;
    HRESULT STDMETHODCALLTYPE RenameFont(BSTR NewName, BSTR ExistingName) override;
    HRESULT STDMETHODCALLTYPE DuplicateFont(BSTR NewName, BSTR ExistingName) override;
    HRESULT STDMETHODCALLTYPE SetCharacterSet(VARIANT CharacterSet) override;
    HRESULT STDMETHODCALLTYPE IncludeSamples(BSTR ExpectedText) override;
    HRESULT STDMETHODCALLTYPE CommitNewSamples() override;
    HRESULT STDMETHODCALLTYPE SetTrainTimeout(LONG Seconds) override;
    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE StartTraining() override;
    HRESULT STDMETHODCALLTYPE SaveFont(BSTR FontName, LONG* Status) override;
    HRESULT STDMETHODCALLTYPE RevertFont(BSTR FontName, LONG* Status) override;
    HRESULT STDMETHODCALLTYPE GetFontList(VARIANT* Names) override;
    HRESULT STDMETHODCALLTYPE GetCharacterSet(VARIANT* CharacterSet) override;
    HRESULT STDMETHODCALLTYPE GetTrainTimeout(LONG* Seconds) override;
    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE IsTrainingDone(VARIANT_BOOL* Done) override;
    HRESULT STDMETHODCALLTYPE GetRmsError(FLOAT* RmsError) override;
    HRESULT STDMETHODCALLTYPE IsTrainingAborted(VARIANT_BOOL* Aborted) override;
    HRESULT STDMETHODCALLTYPE GetTrainCycles(LONG* Cycles) override;
    HRESULT STDMETHODCALLTYPE StopTraining() override;
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUncommittedSamples(VARIANT* Characters) override;
    HRESULT STDMETHODCALLTYPE DeleteSample(LONG Identifier) override;
    HRESULT STDMETHODCALLTYPE GetSampleData(VARIANT Selectors, VARIANT FieldCodes, VARIANT* Records) override;

    HRESULT STDMETHODCALLTYPE get_ProgId(BSTR* Value) override;
    HRESULT STDMETHODCALLTYPE get_Datum(BSTR Name, VARIANT* Value) override;

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

    bool STDMETHODCALLTYPE nativeStep(HMODULE module, tool::StepPtr& step) noexcept override;

  protected:
    // For classes that offer an interface of their own beside these: it is called by names as well, and comes
    // first.
    explicit FontToolObject(Dispatch::Face own);
    virtual ~FontToolObject() = default;

    // The step that the object stands for.
    virtual tool::StepPtr step() { return step_; }

  private:
    template <typename Body>
    HRESULT tool(Body body) noexcept;
    std::vector<Dispatch::Face> faces();

    ModuleReference module_;
    std::atomic<ULONG> references_ = 1;
    tool::StepPtr step_;
    Dispatch dispatch_;
};

ComPtr<IUnknown> newFontToolObject(tool::StepPtr step);

}  // namespace dravik::com
