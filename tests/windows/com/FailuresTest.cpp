// What a tool reports arrives with its own number and text, whichever way it is called.
#include "windows/com/support/ComTest.h"
#include "windows/headers/ComObject.h"

namespace dravik::test {
namespace {

// Every operation of the contract, with arguments that suit it.
const std::vector<std::pair<std::string, std::function<void(FontTool&)>>> kOperations = {
    {"LoadFont", [](FontTool& tool) { tool.LoadFont("a"); }},
    {"CreateFont", [](FontTool& tool) { tool.CreateFont("a"); }},
    {"DeleteFont", [](FontTool& tool) { tool.DeleteFont("a"); }},
    {"RenameFont", [](FontTool& tool) { tool.RenameFont("a", "b"); }},
    {"DuplicateFont", [](FontTool& tool) { tool.DuplicateFont("a", "b"); }},
    {"SetCharacterSet", [](FontTool& tool) { tool.SetCharacterSet(CharacterSet(2, "\xC3\x84")); }},
    {"IncludeSamples", [](FontTool& tool) { tool.IncludeSamples("A\xC3\x84"); }},
    {"CommitNewSamples", [](FontTool& tool) { tool.CommitNewSamples(); }},
    {"SetTrainTimeout", [](FontTool& tool) { tool.SetTrainTimeout(20); }},
    {"StartTraining", [](FontTool& tool) { tool.StartTraining(); }},
    {"SaveFont", [](FontTool& tool) { tool.SaveFont("a"); }},
    {"RevertFont", [](FontTool& tool) { tool.RevertFont("a"); }},
    {"GetFontList", [](FontTool& tool) { tool.GetFontList(); }},
    {"GetCharacterSet", [](FontTool& tool) { tool.GetCharacterSet(); }},
    {"GetTrainTimeout", [](FontTool& tool) { tool.GetTrainTimeout(); }},
    {"IsTrainingDone", [](FontTool& tool) { tool.IsTrainingDone(); }},
    {"GetRmsError", [](FontTool& tool) { tool.GetRmsError(); }},
    {"IsTrainingAborted", [](FontTool& tool) { tool.IsTrainingAborted(); }},
    {"GetTrainCycles", [](FontTool& tool) { tool.GetTrainCycles(); }},
    {"StopTraining", [](FontTool& tool) { tool.StopTraining(); }},
    {"GetUncommittedSamples", [](FontTool& tool) { tool.GetUncommittedSamples(); }},
    {"DeleteSample", [](FontTool& tool) { tool.DeleteSample(200001); }},
    {"GetSampleData", [](FontTool& tool) { tool.GetSampleData(kAllCommitted, kSampleFields); }},
};

TEST(Failures, OfEveryOperationArriveWithTheToolsNumberAndText) {
    const auto recording = std::make_shared<test::RecordingTool>();
    const auto direct = std::make_shared<test::RecordingTool>();
    recording->fonts = direct->fonts = {"a", "b"};
    const auto object = comFromStep(recording);
    for (const auto adapter : {fontToolOf, lateBoundFontToolOf}) {
        const auto tool = adapter(object.get());
        for (const auto& [name, call] : kOperations) {
            call(*direct);
            ASSERT_NO_THROW(call(*tool)) << name;
            ASSERT_EQ(recording->calls.back(), direct->calls.back()) << "the arguments differ";
            for (const std::int32_t number : {9, 1017, static_cast<std::int32_t>(0x80040217)}) {
                recording->failAt(name, number, "Camera \xC3\xBC is away");
                const Failure failure = test::failureOfAction([&] { call(*tool); });
                EXPECT_EQ(failure.number(), number) << name;
                EXPECT_EQ(failure.description(), "Camera \xC3\xBC is away") << name;
            }
            recording->succeedAt(name);
        }
    }
}

// An object whose calls end with what a test says.
class Reporting final : public NotCalledByNames<ComObject<IDispatch>> {
  public:
    HRESULT code = DISP_E_EXCEPTION;
    EXCEPINFO exception{};
    bool knowsNames = true;

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
        *ids = 1;
        return knowsNames ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO* out,
                                     UINT*) override {
        *out = exception;
        return code;
    }
};

void expectFailure(Reporting& object, std::int32_t number, const testing::Matcher<std::string>& description,
                   const std::string& source = {}) {
    const Failure failure =
        failureOfAction([&] { LateBound(static_cast<IDispatch*>(&object)).call(L"Anything"); });
    EXPECT_EQ(failure.number(), number);
    EXPECT_THAT(failure.description(), description);
    EXPECT_TRUE(source.empty() || failure.source() == source) << failure.source();
}

HRESULT __stdcall fillIn(EXCEPINFO* exception) {
    exception->bstrDescription = SysAllocString(L"filled in late");
    exception->scode = static_cast<SCODE>(0x800A0046);
    return S_OK;
}

TEST(Failures, OfLateBoundCallsAreReadInEveryFormTheyHave) {
    Reporting object;
    object.exception.wCode = 1001;
    object.exception.bstrDescription = SysAllocString(L"own text");
    object.exception.bstrSource = SysAllocString(L"Tool");
    expectFailure(object, 1001, "own text", "Tool");
    object.exception = {};
    object.exception.pfnDeferredFillIn = fillIn;
    expectFailure(object, 70, "filled in late");
    object.exception = {};
    object.exception.scode = static_cast<SCODE>(0x800A0009);
    expectFailure(object, 9, "Subscript out of range");
    object.code = DISP_E_TYPEMISMATCH;
    expectFailure(object, 13, testing::_);
    object.code = RPC_E_DISCONNECTED;
    expectFailure(object, static_cast<std::int32_t>(RPC_E_DISCONNECTED), testing::Not(IsEmpty()));
    object.knowsNames = false;
    expectFailure(object, 438, HasSubstr("Anything"));
}

TEST(Failures, OfAnyKindLeaveAsCodes) {
    EXPECT_EQ(comCall(IID_IDispatch, L"", [] { throw std::bad_alloc(); }), E_OUTOFMEMORY);
    EXPECT_EQ(comCall(IID_IDispatch, L"", [] { throw 5; }), static_cast<HRESULT>(0x800A0033));
    EXPECT_EQ(comCall(IID_IDispatch, L"", [] { throw Failure(RuntimeError::TypeMismatch); }),
              static_cast<HRESULT>(0x800A000D));
    EXPECT_EQ(
        comCall(IID_IDispatch, L"Page",
                [] { throw Failure(E_FAIL, "Given step is not Dravik Tool", "DravikPage.DravikPage"); }),
        E_FAIL);
    ComPtr<IErrorInfo> info;
    ASSERT_EQ(GetErrorInfo(0, info.put()), S_OK);
    Bstr source, description;
    info->GetSource(source.put());
    info->GetDescription(description.put());
    EXPECT_EQ(source.utf8(), "DravikPage.DravikPage");
    EXPECT_EQ(description.utf8(), "Given step is not Dravik Tool");
}

}  // namespace
}  // namespace dravik::test
