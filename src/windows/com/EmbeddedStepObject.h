// The class EmbeddedStep: the embedded tool as a job step that a script or a host without a job system
// creates, shows images and lets read.
#pragma once

#include "engine/embedded/EmbeddedTool.h"
#include "windows/com/FontToolObject.h"

namespace dravik::com {

class EmbeddedStepObject final : public FontToolObject, public IEmbeddedStep {
  public:
    // Starts with one reference, which is the caller's.
    EmbeddedStepObject();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return FontToolObject::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return FontToolObject::Release(); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return FontToolObject::GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return FontToolObject::GetTypeInfo(index, locale, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        return FontToolObject::GetIDsOfNames(iid, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        return FontToolObject::Invoke(id, iid, locale, flags, parameters, result, exception, wrongArgument);
    }

    HRESULT STDMETHODCALLTYPE get_JobsFolder(BSTR* Path) override;
    HRESULT STDMETHODCALLTYPE put_JobsFolder(BSTR Path) override;
    HRESULT STDMETHODCALLTYPE OpenImage(BSTR Path) override;
    HRESULT STDMETHODCALLTYPE SetImage(LONG Width, LONG Height, VARIANT Pixels) override;
    HRESULT STDMETHODCALLTYPE ReadImage(BSTR* Text) override;

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

  protected:
    tool::StepPtr step() override;

  private:
    template <typename Body>
    HRESULT own(Body body) noexcept;
    engine::EmbeddedTool& embedded();

    JobFolder folder_;
    std::shared_ptr<engine::EmbeddedTool> tool_;  // made when it is first used
};

}  // namespace dravik::com
