// What a script passes to the control's public interface: variables of any type by reference, names, wrong
// types.
#include "windows/com/Dispatch.h"
#include "windows/com/support/ComTest.h"

#include <DravikDlgLib.h>

namespace dravik::test {
namespace {

// Notes what arrives and writes back through every reference.
class PublicInterface : public CalledByNames<_DravikDlg>, public ISupportErrorInfo {
  public:
    PublicInterface() : CalledByNames(dispatch_) {}

    std::string got;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (iid == IID_ISupportErrorInfo) return handOut(static_cast<ISupportErrorInfo*>(this), out);
        return handOut(static_cast<_DravikDlg*>(this), out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE DeleteSamplesByDistance(BSTR* Character, double* MinDistance,
                                                      double* MaxDistance, short* Count) override {
        return comCall(__uuidof(_DravikDlg), L"Control", [&] {
            got = toUtf8(*Character) + " " + std::to_string(static_cast<int>(*MinDistance * 10)) + " " +
                  std::to_string(static_cast<int>(*MaxDistance * 10));
            SysReAllocString(Character, L"changed");
            *MinDistance = 0.5;
            *Count = -3;
        });
    }
    HRESULT STDMETHODCALLTYPE HighlightIncluded(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FontTrainDate(BSTR*, BSTR*) override { return E_NOTIMPL; }

  private:
    Dispatch dispatch_{{{__uuidof(_DravikDlg), static_cast<_DravikDlg*>(this)}}};
};

// An argument as a script passes one of its variables.
VARIANT variable(Variant& value) {
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &value.get();
    return reference;
}

constexpr DISPID kDelete = 0x60030006;

// A call of DeleteSamplesByDistance, or of the member of that number, with arguments in the order of a
// program's text.
struct Call {
    std::vector<VARIANT> arguments;
    LCID locale = 0;
    DISPID id = kDelete;
    WORD flags = DISPATCH_METHOD;
    UINT wrong = 9;
    Variant result{};
    EXCEPINFO exception{};

    HRESULT on(PublicInterface& object) {
        std::reverse(arguments.begin(), arguments.end());
        DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        return object.Invoke(id, IID_NULL, locale, flags, &parameters, result.put(), &exception, &wrong);
    }
};

TEST(Dispatch, TextsForNumbersAreReadAsTheCallerWritesThem) {
    constexpr LCID kGerman = 0x0407;
    PublicInterface object;
    for (const auto& [locale, text] : {std::pair{kGerman, "0,5"}, {LCID{0}, "0.5"}, {LCID{0x0409}, "0.5"}}) {
        Variant character{Bstr("A")}, least{Bstr("0")}, most{Bstr(text)};
        ASSERT_EQ((Call{{variable(character), variable(least), variable(most)}, locale}.on(object)), S_OK);
        EXPECT_EQ(object.got, "A 0 5") << "5 would delete ten times the range";
    }
}

TEST(Dispatch, VariablesOfAnyTypeAreConvertedAndWrittenBack) {
    PublicInterface object;
    Variant character{Bstr("A")}, least{std::int16_t{1}}, most{Bstr("2.5")};
    Call byScript{{variable(character), variable(least), variable(most)}};
    ASSERT_EQ(byScript.on(object), S_OK);
    EXPECT_EQ(object.got, "A 10 25");
    EXPECT_EQ(int32Of(byScript.result.get()), -3);
    EXPECT_EQ(byScript.result.get().vt, VT_I2);
    EXPECT_EQ(textOf(character.get()), "changed");
    EXPECT_EQ(numberOf(least.get()), 0.5);
    EXPECT_EQ(numberOf(most.get()), 2.5);

    // Values, as other script languages pass them, and typed references, as compiled code does.
    double exact = 7;
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_R8;
    reference.pdblVal = &exact;
    const Variant letter{Bstr("B")}, number{std::int32_t{9}};
    Call mixed{{letter.get(), reference, number.get()}};
    mixed.flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    ASSERT_EQ(mixed.on(object), S_OK);
    EXPECT_EQ(object.got, "B 70 90");
    EXPECT_EQ(exact, 0.5);
    EXPECT_EQ(textOf(letter.get()), "B");
}

TEST(Dispatch, NamedArgumentsFindTheirParameters) {
    PublicInterface object;
    wchar_t method[] = L"deletesamplesbydistance", maximum[] = L"MaxDistance", character[] = L"Character";
    LPOLESTR names[] = {method, maximum, character};
    DISPID ids[3] = {};
    ASSERT_EQ(object.GetIDsOfNames(IID_NULL, names, 3, 0, ids), S_OK);
    EXPECT_EQ(ids[0], kDelete);
    DISPID named[] = {ids[1], 1, ids[2]};
    Variant most{3.0}, least{2.0}, text{Bstr("Q")};
    VARIANT arguments[] = {variable(most), variable(least), variable(text)};
    DISPPARAMS parameters{arguments, named, 3, 3};
    ASSERT_EQ(object.Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(object.got, "Q 20 30");
}

TEST(Dispatch, WrongCallsAreRefusedAndTheArgumentNamed) {
    PublicInterface object;
    Variant character{Bstr("A")}, least{Bstr("little")}, most{1.0};
    const Variant itself(static_cast<IDispatch*>(&object));
    const VARIANT a = variable(character), b = variable(least), c = variable(most);
    const std::vector<std::tuple<std::vector<VARIANT>, DISPID, HRESULT, UINT>> wrongs = {
        {{a, b, c}, kDelete, DISP_E_TYPEMISMATCH, 1},
        {{itself.get(), c, c}, kDelete, DISP_E_TYPEMISMATCH, 2},
        {{b, c}, kDelete, DISP_E_BADPARAMCOUNT, 9},
        {{b, c}, 17, DISP_E_MEMBERNOTFOUND, 9}};
    for (const auto& [arguments, id, code, wrong] : wrongs) {
        Call call{arguments, 0, id};
        EXPECT_EQ(call.on(object), code);
        EXPECT_EQ(call.wrong, wrong);
    }
    EXPECT_EQ(object.got, "");
}

}  // namespace
}  // namespace dravik::test
