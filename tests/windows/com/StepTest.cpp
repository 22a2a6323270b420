// Steps on their way through COM, and the embedded step that programs and scripts create.
#include "drivers/win32/ImageFile.h"
#include "windows/com/EmbeddedStepObject.h"
#include "windows/com/support/ComTest.h"

namespace dravik::test {
namespace {

// Hides which module it comes from, and what it can be besides an object with IStep and IFontTool.
class Stranger : public FontToolObject {
  public:
    using FontToolObject::FontToolObject;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (iid == __uuidof(INativeStep)) return E_NOINTERFACE;
        return FontToolObject::QueryInterface(iid, out);
    }
};

TEST(ComStep, ComesBackAsItselfAndLivesAsLongAsItIsHeld) {
    const auto recording = std::make_shared<test::RecordingTool>();
    {
        const auto object = comFromStep(recording);
        EXPECT_EQ(stepFromCom(object.get()), recording);
    }
    EXPECT_EQ(recording.use_count(), 1) << "the object went with its last reference";
    EXPECT_EQ(moduleObjects(), 0);

    auto* stranger = new Stranger(recording);
    StepPtr step = stepFromCom(static_cast<IFontTool*>(stranger));
    stranger->Release();
    ASSERT_TRUE(step);
    EXPECT_NE(step, recording);
    EXPECT_EQ(step->programIdentifier(), kDravikStep);
    EXPECT_EQ(step->datum(kSelectedFontDatum), 1);
    step->fontTool().CommitNewSamples();
    EXPECT_EQ(recording->calls.back(), "CommitNewSamples()");
    EXPECT_EQ(comFromStep(step).get(), ComPtr<IUnknown>(static_cast<IFontTool*>(stranger)).get());
    step.reset();
    EXPECT_EQ(moduleObjects(), 0);
    EXPECT_EQ(recording.use_count(), 1);

    EXPECT_EQ(stepFromCom(nullptr), nullptr);
    EXPECT_FALSE(comFromStep(nullptr));
}

TEST(ComStep, ObjectsThatAreNoStepsAreRefused) {
    ComPtr<ICreateErrorInfo> made;
    ASSERT_EQ(CreateErrorInfo(made.put()), S_OK);
    EXPECT_EQ(refusal([&] { stepFromCom(made.get()); }), 13);
}

template <typename... Arguments>
Variant call(LateBound& object, const wchar_t* name, Arguments... arguments) {
    std::array<Variant, sizeof...(Arguments)> values{Variant(std::move(arguments))...};
    return object.call(name, values);
}

TEST(EmbeddedStep, SelectsAFontAndOpensFilesForAProgramThatCallsItByNames) {
    const TemporaryFolder folder;
    const auto made = ComPtr<IEmbeddedStep>::attach(new EmbeddedStepObject);
    ASSERT_EQ(made->put_JobsFolder(Bstr(folder.path()).get()), S_OK);
    LateBound step(made.get());
    EXPECT_EQ(numberOf(call(step, L"Datum", Bstr("SelFont")).get()), 0);
    call(step, L"CreateFont", Bstr("F"));

    const std::string path = folder.path() + "\\t\xC3\xA4xt.bmp";
    test::writeImage(path, drawn({"LATE"}), GUID_ContainerFormatBmp);
    call(step, L"OpenImage", Bstr(path));
    EXPECT_EQ(refusal([&] { call(step, L"OpenImage", Bstr(folder.path() + "\\none.png")); }), 53);
    EXPECT_EQ(refusal([&] { call(step, L"OpenImage", Bstr(folder.path())); }), 75);
    call(step, L"IncludeSamples", Bstr("LATE"));
    EXPECT_THAT(firstColumnOf(call(step, L"GetUncommittedSamples").get()), ElementsAre("L", "A", "T", "E"))
        << "a file that is refused changes nothing";
    call(step, L"SaveFont", Bstr("F"));
    EXPECT_EQ(numberOf(call(step, L"Datum", Bstr("SelFont")).get()), 1);
}

TEST(EmbeddedStep, RefusesImagesThatAreNotWhatTheySay) {
    const auto step = ComPtr<IEmbeddedStep>::attach(new EmbeddedStepObject);
    const Variant nine = bytesOf(GreyImage(3, 3));
    EXPECT_EQ(step->SetImage(4, 3, nine.get()), static_cast<HRESULT>(0x800A0009));
    EXPECT_EQ(step->SetImage(-3, -3, nine.get()), static_cast<HRESULT>(0x800A0005));
    EXPECT_EQ(step->SetImage(1'000'000, 1'000'000, nine.get()), static_cast<HRESULT>(0x800A0005));
    EXPECT_EQ(step->SetImage(3, 3, Variant(1.0).get()), static_cast<HRESULT>(0x800A000D));
    EXPECT_EQ(step->SetImage(3, 3, nine.get()), S_OK);
    EXPECT_EQ(step->put_JobsFolder(Bstr("C:\\elsewhere").get()), static_cast<HRESULT>(0x800A0005));
    EXPECT_EQ(step->ReadImage(nullptr), E_POINTER);
    ComPtr<IFontTool> tool = step.as<IFontTool>();
    ASSERT_TRUE(tool);
    EXPECT_EQ(tool->GetFontList(nullptr), E_POINTER);
    EXPECT_EQ(tool->Reserved1(), E_NOTIMPL);
}

}  // namespace
}  // namespace dravik::test
