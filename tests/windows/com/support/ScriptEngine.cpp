#include "windows/com/support/ScriptEngine.h"

#include "windows/com/Boundary.h"
#include "windows/com/ComText.h"

namespace dravik::test {

using namespace com;

class ScriptEngine::Site : public IActiveScriptSite {
  public:
    std::string error;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (iid != IID_IUnknown && iid != IID_IActiveScriptSite) return E_NOINTERFACE;
        return handOut(static_cast<IActiveScriptSite*>(this), out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD, IUnknown**, ITypeInfo**) override {
        return TYPE_E_ELEMENTNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* report) override {
        EXCEPINFO exception{};
        if (SUCCEEDED(report->GetExceptionInfo(&exception)))
            error = failureOf(DISP_E_EXCEPTION, exception).description();
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

  private:
    virtual ~Site() = default;
    ULONG references_ = 0;
};

ScriptEngine::ScriptEngine(const std::wstring& language) : site_(new Site) {
    CLSID identifier;
    check(CLSIDFromProgID(language.c_str(), &identifier));
    check(CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                           engine_.putVoid()));
    parser_ = engine_.as<IActiveScriptParse>();
    check(engine_->SetScriptSite(site_.get()));
    check(required(parser_.get()).InitNew());
    check(engine_->SetScriptState(SCRIPTSTATE_STARTED));
}

ScriptEngine::~ScriptEngine() {
    engine_->Close();
}

void ScriptEngine::run(const std::wstring& text) {
    check(parser_->ParseScriptText(text.c_str(), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE,
                                   nullptr, nullptr));
}

Variant ScriptEngine::value(const std::wstring& expression) {
    Variant result;
    check(parser_->ParseScriptText(expression.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                   SCRIPTTEXT_ISEXPRESSION, result.put(), nullptr));
    return result;
}

const std::string& ScriptEngine::error() const {
    return static_cast<const Site*>(site_.get())->error;
}

}  // namespace dravik::test
