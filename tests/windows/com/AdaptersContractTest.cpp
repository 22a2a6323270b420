// The embedded tool, offered as a COM object and used through one again, keeps the contract of all font
// tools.
#include "contract/FontToolContract.h"
#include "engine/embedded/EmbeddedTool.h"
#include "windows/com/support/ComTest.h"

namespace dravik::test {
namespace {

// Turns an answer into one as some classic tools give it: an array whose bounds start anywhere, by reference.
class OddAnswers {
  public:
    // Keeps the answer and refers to it, now to the value and now to the array in it.
    HRESULT operator()(HRESULT result, VARIANT* answer) {
        if (FAILED(result) || !answer || !(answer->vt & VT_ARRAY)) return result;
        for (USHORT dimension = 0; dimension < answer->parray->cDims; ++dimension)
            answer->parray->rgsabound[dimension].lLbound = dimension == 0 ? 7 : -3;
        kept_ = Variant();
        kept_.get() = *answer;
        VariantInit(answer);
        wholeValue_ = !wholeValue_;
        if (wholeValue_) {
            answer->vt = VT_BYREF | VT_VARIANT;
            answer->pvarVal = &kept_.get();
        } else {
            answer->vt = static_cast<VARTYPE>(VT_BYREF | kept_.get().vt);
            answer->pparray = &kept_.get().parray;
        }
        return S_OK;
    }

  private:
    Variant kept_;
    bool wholeValue_ = false;
};

class OddObject : public FontToolObject {
  public:
    using FontToolObject::FontToolObject;

    HRESULT STDMETHODCALLTYPE GetFontList(VARIANT* Names) override {
        return odd_(FontToolObject::GetFontList(Names), Names);
    }
    HRESULT STDMETHODCALLTYPE GetCharacterSet(VARIANT* CharacterSet) override {
        return odd_(FontToolObject::GetCharacterSet(CharacterSet), CharacterSet);
    }
    HRESULT STDMETHODCALLTYPE GetUncommittedSamples(VARIANT* Characters) override {
        return odd_(FontToolObject::GetUncommittedSamples(Characters), Characters);
    }
    HRESULT STDMETHODCALLTYPE GetSampleData(VARIANT Selectors, VARIANT FieldCodes,
                                            VARIANT* Records) override {
        return odd_(FontToolObject::GetSampleData(Selectors, FieldCodes, Records), Records);
    }

  private:
    OddAnswers odd_;
};

class OddScriptObject : public FontToolObject {
  public:
    using FontToolObject::FontToolObject;

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrong) override {
        return odd_(FontToolObject::Invoke(id, iid, locale, flags, parameters, result, exception, wrong),
                    result);
    }

  private:
    OddAnswers odd_;
};

template <class Object, auto Adapter>
class Bench {
  public:
    FontTool& tool() { return *adapted_; }
    void show(const std::string& text) { embedded_->setImage(drawn({text})); }

  private:
    TemporaryFolder folder_;
    std::shared_ptr<EmbeddedTool> embedded_ = std::make_shared<EmbeddedTool>(JobFolder(folder_.path()));
    ComPtr<IUnknown> object_ = ComPtr<IUnknown>::attach(static_cast<IFontTool*>(new Object(embedded_)));
    std::unique_ptr<FontTool> adapted_ = Adapter(object_.get());
};

using Benches = testing::Types<Bench<FontToolObject, fontToolOf>, Bench<FontToolObject, lateBoundFontToolOf>,
                               Bench<OddObject, fontToolOf>, Bench<OddScriptObject, lateBoundFontToolOf>>;
struct BenchNames {
    template <typename T>
    static std::string GetName(int index) {
        return std::array{"Typed", "LateBound", "TypedOddArrays",
                          "LateBoundOddArrays"}[static_cast<std::size_t>(index)];
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Com, FontToolContract, Benches, BenchNames);

}  // namespace
}  // namespace dravik::test
