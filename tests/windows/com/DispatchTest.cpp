// What a script passes to the control's public interface: variables of any type by reference, names, wrong
// types.
#include "windows/com/Dispatch.h"

#include <DravikDlgLib.h>
#include <gtest/gtest.h>

#include "windows/com/Boundary.h"
#include "windows/com/ComText.h"
#include "windows/com/Variant.h"

namespace dravik {

using namespace com;
namespace {

// Notes what arrives and writes back through every reference.
class PublicInterface : public _DravikDlg, public ISupportErrorInfo {
  public:
    std::string got;
    bool fails = false;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (iid == IID_ISupportErrorInfo) return handOut(static_cast<ISupportErrorInfo*>(this), out);
        return handOut(static_cast<_DravikDlg*>(this), out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return dispatch_.typeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        return dispatch_.typeInfo(index, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return dispatch_.idsOfNames(names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrong) override {
        return dispatch_.invoke(id, locale, flags, parameters, result, exception, wrong);
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE DeleteSamplesByDistance(BSTR* Character, double* MinDistance,
                                                      double* MaxDistance, short* Count) override {
        return comCall(__uuidof(_DravikDlg), L"Control", [&] {
            if (fails) throw Failure(RuntimeError::Overflow);
            got = toUtf8(*Character) + " " + std::to_string(static_cast<int>(*MinDistance * 10)) + " " +
                  std::to_string(static_cast<int>(*MaxDistance * 10));
            SysReAllocString(Character, L"changed");
            *MinDistance = 0.5;
            *Count = -3;
        });
    }
    HRESULT STDMETHODCALLTYPE HighlightIncluded(BSTR* IncludedChars) override {
        got = toUtf8(*IncludedChars);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE FontTrainDate(BSTR* Font, BSTR* Date) override {
        got = toUtf8(*Font);
        *Date = SysAllocString(L"today");
        return S_OK;
    }

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

TEST(Dispatch, IdentifiersAreThoseOfTheContract) {
    PublicInterface object;
    for (const auto& [name, wanted] :
         {std::pair{L"DeleteSamplesByDistance", 0x60030006}, std::pair{L"highlightincluded", 0x60030009},
          std::pair{L"FontTrainDate", 0x6003000C}}) {
        auto text = const_cast<LPOLESTR>(name);
        DISPID id = 0;
        ASSERT_EQ(object.GetIDsOfNames(IID_NULL, &text, 1, 0, &id), S_OK);
        EXPECT_EQ(id, wanted);
    }
    wchar_t other[] = L"Delete";
    LPOLESTR text = other;
    DISPID id = 0;
    EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &text, 1, 0, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(id, DISPID_UNKNOWN);
}

TEST(Dispatch, TextsForNumbersAreReadAsTheCallerWritesThem) {
    constexpr LCID kGerman = 0x0407;
    PublicInterface object;
    for (const auto& [locale, text] : {std::pair{kGerman, "0,5"}, {LCID{0}, "0.5"}, {LCID{0x0409}, "0.5"}}) {
        Variant character{Bstr("A")}, least{Bstr("0")}, most{Bstr(text)}, result;
        VARIANT arguments[] = {variable(most), variable(least), variable(character)};
        DISPPARAMS parameters{arguments, nullptr, 3, 0};
        ASSERT_EQ(object.Invoke(kDelete, IID_NULL, locale, DISPATCH_METHOD, &parameters, result.put(),
                                nullptr, nullptr),
                  S_OK);
        EXPECT_EQ(object.got, "A 0 5") << "5 would delete ten times the range";
    }
}

TEST(Dispatch, VariablesOfAnyTypeAreConvertedAndWrittenBack) {
    PublicInterface object;
    Variant character{Bstr("A")}, least{std::int16_t{1}}, most{Bstr("2.5")}, result;
    VARIANT arguments[] = {variable(most), variable(least), variable(character)};
    DISPPARAMS parameters{arguments, nullptr, 3, 0};
    ASSERT_EQ(
        object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD, &parameters, result.put(), nullptr, nullptr),
        S_OK);
    EXPECT_EQ(object.got, "A 10 25");
    EXPECT_EQ(int32Of(result.get()), -3);
    EXPECT_EQ(result.get().vt, VT_I2);
    EXPECT_EQ(textOf(character.get()), "changed");
    EXPECT_EQ(numberOf(least.get()), 0.5);
    EXPECT_EQ(numberOf(most.get()), 2.5);

    // Values, as other script languages pass them, and typed references, as compiled code does.
    double exact = 7;
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_R8;
    reference.pdblVal = &exact;
    const Variant letter{Bstr("B")}, number{std::int32_t{9}};
    VARIANT mixed[] = {number.get(), reference, letter.get()};
    parameters.rgvarg = mixed;
    ASSERT_EQ(object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                            result.put(), nullptr, nullptr),
              S_OK);
    EXPECT_EQ(object.got, "B 70 90");
    EXPECT_EQ(exact, 0.5);
    EXPECT_EQ(textOf(letter.get()), "B");
}

TEST(Dispatch, NamedArgumentsFindTheirParameters) {
    PublicInterface object;
    wchar_t method[] = L"DeleteSamplesByDistance", maximum[] = L"MaxDistance", character[] = L"Character";
    LPOLESTR names[] = {method, maximum, character};
    DISPID ids[3] = {};
    ASSERT_EQ(object.GetIDsOfNames(IID_NULL, names, 3, 0, ids), S_OK);
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
    Variant character{Bstr("A")}, least{Bstr("little")}, most{1.0}, nothing(static_cast<IDispatch*>(nullptr));
    VARIANT arguments[] = {variable(most), variable(least), variable(character)};
    DISPPARAMS parameters{arguments, nullptr, 3, 0};
    UINT wrong = 9;
    EXPECT_EQ(object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &wrong),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(wrong, 1u);
    arguments[2] = nothing.get();
    arguments[1] = arguments[0];
    EXPECT_EQ(object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &wrong),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(wrong, 2u);
    const Variant itself(static_cast<IDispatch*>(&object));
    arguments[2] = itself.get();
    EXPECT_EQ(object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &wrong),
              DISP_E_TYPEMISMATCH);
    parameters.cArgs = 0;
    EXPECT_EQ(object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
              DISP_E_BADPARAMCOUNT);
    parameters.cArgs = 2;
    EXPECT_EQ(object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
              DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.Invoke(17, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(object.got, "");
}

TEST(Dispatch, FailuresFillTheExceptionAndLeaveVariablesAlone) {
    PublicInterface object;
    object.fails = true;
    Variant character{Bstr("A")}, least{1.0}, most{2.0};
    VARIANT arguments[] = {variable(most), variable(least), variable(character)};
    DISPPARAMS parameters{arguments, nullptr, 3, 0};
    EXCEPINFO exception{};
    const HRESULT code =
        object.Invoke(kDelete, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, &exception, nullptr);
    EXPECT_EQ(code, DISP_E_EXCEPTION);
    const Failure failure = failureOf(code, exception);
    EXPECT_EQ(failure.number(), 6);
    EXPECT_EQ(failure.description(), "Overflow");
    EXPECT_EQ(failure.source(), "Control");
    EXPECT_EQ(textOf(character.get()), "A");
}

}  // namespace
}  // namespace dravik
