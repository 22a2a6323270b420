// small-tool.dll : a complete font tool and step, Sample.SmallTool, in one file beside what it works with
// (small-tool-font.h). It keeps a font as NAME.font in its jobs folder. Build it with the headers of the
// contract folder, then register it as an administrator; the control has to be registered as well:
//   x86_64-w64-mingw32-g++ -std=c++20 -shared -static -Wl,--kill-at -I contract small-tool.cpp
//       -o small-tool.dll -lole32 -loleaut32 -luuid -lwindowscodecs
//   regsvr32 small-tool.dll
//   DravikToolCheck Sample.SmallTool
#include <windows.h>
// Behind windows.h
#include <initguid.h>
#include <ole2.h>
#include <wincodec.h>
#include <wrl/client.h>

#include <exception>
#include <new>

#include "DravikLib.h"
#include "TollanLib.h"
#include "small-tool-font.h"
#include "tool-answers.h"

using Microsoft::WRL::ComPtr;

// {0D2B7C5A-7E0E-4C3B-9E57-6A3C1E1F9D42}
static const CLSID kClass = {0x0D2B7C5A, 0x7E0E, 0x4C3B, {0x9E, 0x57, 0x6A, 0x3C, 0x1E, 0x1F, 0x9D, 0x42}};
static const wchar_t kClassKey[] = L"CLSID\\{0D2B7C5A-7E0E-4C3B-9E57-6A3C1E1F9D42}";
static const wchar_t kNameKey[] = L"Sample.SmallTool";

static HMODULE module;
static long inUse = 0;  // objects, and locks of the class factory

// What an operation fails with: the operator reads the run-time error 0x35 as "Err 53".
struct Failure {
    HRESULT code;
    const wchar_t* text;
};
static const Failure kNoFont = {static_cast<HRESULT>(0x800A005B), L"No font is loaded"};
static const Failure kNoSuchFont = {static_cast<HRESULT>(0x800A0035), L"There is no such font"};
static const Failure kNotWritten = {static_cast<HRESULT>(0x800A0039), L"The font cannot be written"};
static const Failure kWrong = {static_cast<HRESULT>(0x800A0005), L"There is nothing like that"};

// No exception of C++ leaves an operation.
template <typename Work>
static HRESULT answered(Work work) {
    try {
        work();
        return S_OK;
    } catch (const Failure& failure) {
        return failed(failure.code, failure.text);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        return failed(E_FAIL, L"The tool failed");
    }
}

static void check(HRESULT code) {
    if (FAILED(code)) throw Failure{code, L"The system refuses it"};
}

// Calls `use` with each element of an array of any kind, as an element of the kind `as`.
template <typename Use>
static void forEach(const VARIANT& value, VARTYPE as, Use use) {
    const VARIANT* at = &value;
    while (at->vt == (VT_BYREF | VT_VARIANT)) at = at->pvarVal;
    if (at->vt == VT_EMPTY) return;
    SAFEARRAY* array = !(at->vt & VT_ARRAY) ? nullptr : at->vt & VT_BYREF ? *at->pparray : at->parray;
    LONG first = 0, last = -1;
    VARTYPE type = VT_EMPTY;
    if (!array || SafeArrayGetDim(array) != 1) throw kWrong;
    check(SafeArrayGetVartype(array, &type));
    check(SafeArrayGetLBound(array, 1, &first));
    check(SafeArrayGetUBound(array, 1, &last));
    for (LONG place = first; place <= last; ++place) {
        VARIANT element, wanted;
        VariantInit(&element);
        VariantInit(&wanted);
        check(SafeArrayGetElement(array, &place,
                                  type == VT_VARIANT ? static_cast<void*>(&element) : &element.byref));
        if (type != VT_VARIANT) element.vt = type;
        const HRESULT converted = VariantChangeType(&wanted, &element, 0, as);
        VariantClear(&element);
        check(converted);
        use(wanted);
        VariantClear(&wanted);
    }
}

static std::wstring textOf(BSTR text) {
    return text ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

class SmallTool : public IFontTool, public IEmbeddedStep, public IStep, public ISupportErrorInfo {
  public:
    SmallTool() {
        ++inUse;
        const wchar_t* data = _wgetenv(L"LOCALAPPDATA");
        folder_ = std::filesystem::path(data ? data : L"C:\\") / L"SmallTool";
    }
    virtual ~SmallTool() { --inUse; }

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(IFontTool))
            *object = static_cast<IFontTool*>(this);
        if (iid == __uuidof(IEmbeddedStep)) *object = static_cast<IEmbeddedStep*>(this);
        if (iid == __uuidof(IStep)) *object = static_cast<IStep*>(this);
        if (iid == IID_ISupportErrorInfo) *object = static_cast<ISupportErrorInfo*>(this);
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID) override { return S_OK; }

    // IDispatch: what scripts call by names are the members of all three interfaces, whose numbers differ.
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        for (const Described& one : described())
            if (one.info && SUCCEEDED(DispGetIDsOfNames(one.info.Get(), names, count, ids))) return S_OK;
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* answer,
                        EXCEPINFO* exception, UINT* wrong) override {
        // JScript does not know whether what it assigns is an object.
        if (flags & DISPATCH_PROPERTYPUT) flags = DISPATCH_PROPERTYPUT;
        for (const Described& one : described()) {
            if (!one.info) continue;
            const HRESULT code =
                DispInvoke(one.object, one.info.Get(), id, flags, parameters, answer, exception, wrong);
            if (code != DISP_E_MEMBERNOTFOUND) return code;
        }
        return DISP_E_MEMBERNOTFOUND;
    }

    // IStep
    STDMETHODIMP get_ProgId(BSTR* value) override {
        return *value = SysAllocString(L"Step.DravikTool.1"), *value ? S_OK : E_OUTOFMEMORY;
    }
    STDMETHODIMP get_Datum(BSTR name, VARIANT* value) override {
        return answered([&] {
            if (textOf(name) != L"SelFont") throw kWrong;
            const auto names = fonts();
            const auto current = std::find(names.begin(), names.end(), current_);
            const auto place = current == names.end() ? 0 : current - names.begin();
            VariantInit(value);
            value->vt = VT_I4;
            value->lVal = names.empty() || place > 14 ? 0 : 1 << place;
        });
    }

    // IFontTool: fonts
    STDMETHODIMP GetFontList(VARIANT* names) override {
        return answered([&] { check(textList(fonts(), 1, names)); });
    }
    STDMETHODIMP LoadFont(BSTR name) override {
        return answered([&] {
            if (textOf(name) == current_) return;  // what is not saved of it stays
            font_ = stored(textOf(name));
            current_ = textOf(name);
        });
    }
    STDMETHODIMP CreateFont(BSTR name) override {
        return answered([&] {
            store(textOf(name), {});
            font_ = {};
            current_ = textOf(name);
        });
    }
    STDMETHODIMP SaveFont(BSTR name, long* status) override {
        return answered([&] {
            store(textOf(name), font());
            *status = 0;
        });
    }
    STDMETHODIMP RevertFont(BSTR name, long* status) override {
        return answered([&] {
            font().trained = stored(textOf(name)).trained;
            *status = 0;
        });
    }
    STDMETHODIMP DeleteFont(BSTR name) override {
        return answered([&] {
            if (!std::filesystem::remove(existing(textOf(name)))) throw kNoSuchFont;
            if (textOf(name) == current_) current_.clear();
        });
    }
    STDMETHODIMP RenameFont(BSTR newName, BSTR existingName) override {
        return answered([&] {
            std::filesystem::rename(existing(textOf(existingName)), unused(textOf(newName)));
            if (textOf(existingName) == current_) current_ = textOf(newName);
        });
    }
    STDMETHODIMP DuplicateFont(BSTR newName, BSTR existingName) override {
        return answered(
            [&] { std::filesystem::copy_file(existing(textOf(existingName)), unused(textOf(newName))); });
    }
    STDMETHODIMP GetCharacterSet(VARIANT* characters) override {
        return answered([&] {
            std::vector<std::wstring> all;
            for (const wchar_t character : font().characters) all.emplace_back(1, character);
            check(textList(all, 1, characters));
        });
    }
    STDMETHODIMP SetCharacterSet(VARIANT characters) override {
        return answered([&] {
            std::wstring all;
            forEach(characters, VT_BSTR, [&](const VARIANT& one) {
                const std::wstring character = textOf(one.bstrVal);
                if (!character.empty() && all.find(character[0]) == std::wstring::npos) all += character[0];
            });
            font().characters = all;
        });
    }

    // IFontTool: samples
    STDMETHODIMP IncludeSamples(BSTR expected) override {
        return answered([&] {
            Font& font = this->font();
            if (image_.empty()) throw Failure{kWrong.code, L"There is no image"};
            const std::wstring text = textOf(expected);
            std::size_t place = 0;
            for (const auto& line : image_.lines())
                for (const Features& features : line) {
                    font.uncommitted.push_back({place < text.size() ? text[place] : L'?', features});
                    ++place;
                }
        });
    }
    STDMETHODIMP GetUncommittedSamples(VARIANT* characters) override {
        return answered([&] {
            std::vector<std::wstring> all;
            if (!current_.empty())
                for (const Sample& sample : font_.uncommitted) all.emplace_back(1, sample.character);
            check(textList(all, 2, characters));
        });
    }
    STDMETHODIMP CommitNewSamples() override {
        return answered([&] {
            Font& font = this->font();
            font.committed.insert(font.committed.end(), font.uncommitted.begin(), font.uncommitted.end());
            font.uncommitted.clear();
        });
    }
    STDMETHODIMP DeleteSample(long identifier) override {
        return answered([&] {
            const long kind = identifier / kKind;
            if (identifier < 0 || (kind != 2 && kind != 3)) throw kWrong;
            auto& samples = kind == 2 ? font().uncommitted : font().committed;
            const long place = identifier % kKind;
            // The screen deletes one too many when it undoes.
            if (place < static_cast<long>(samples.size())) samples.erase(samples.begin() + place);
        });
    }
    STDMETHODIMP GetSampleData(VARIANT selectors, VARIANT fields, VARIANT* records) override {
        return answered([&] {
            std::vector<long> asked;
            forEach(fields, VT_I4, [&](const VARIANT& field) { asked.push_back(field.lVal); });
            std::vector<Record> all;
            forEach(selectors, VT_I4, [&](const VARIANT& selector) { addRecords(selector.lVal, all); });
            // Each field is a column behind the identifier's, but for the last one, the features.
            check(recordTable(all, static_cast<ULONG>(asked.size()), records));
        });
    }

    // IFontTool: training. Means are taken in no time; what takes longer runs in a thread of its own, since
    // StartTraining returns at once and the screen asks IsTrainingDone ten times a second.
    STDMETHODIMP SetTrainTimeout(long seconds) override { return timeout_ = seconds, S_OK; }
    STDMETHODIMP GetTrainTimeout(long* seconds) override { return *seconds = timeout_, S_OK; }
    STDMETHODIMP StartTraining() override {
        return answered([&] {
            if (font().committed.empty()) throw Failure{kWrong.code, L"There is nothing to train from"};
            font().train();
        });
    }
    STDMETHODIMP IsTrainingDone(VARIANT_BOOL* done) override { return *done = VARIANT_TRUE, S_OK; }
    STDMETHODIMP IsTrainingAborted(VARIANT_BOOL* aborted) override { return *aborted = VARIANT_FALSE, S_OK; }
    STDMETHODIMP GetRmsError(float* error) override {
        return answered([&] {
            double sum = 0;
            for (const Sample& sample : font().committed) sum += std::pow(font_.distanceOf(sample), 2);
            const auto count = std::max<std::size_t>(font_.committed.size(), 1);
            *error = static_cast<float>(std::sqrt(sum / static_cast<double>(count)));
        });
    }
    STDMETHODIMP GetTrainCycles(long* cycles) override { return *cycles = 1, S_OK; }
    STDMETHODIMP StopTraining() override { return S_OK; }
    STDMETHODIMP Reserved1() override { return E_NOTIMPL; }
    STDMETHODIMP Reserved2() override { return E_NOTIMPL; }
    STDMETHODIMP Reserved3() override { return E_NOTIMPL; }

    // IEmbeddedStep: where images come from, and what the trained font makes of them.
    STDMETHODIMP get_JobsFolder(BSTR* path) override {
        return *path = SysAllocString(folder_.c_str()), *path ? S_OK : E_OUTOFMEMORY;
    }
    STDMETHODIMP put_JobsFolder(BSTR path) override {
        return answered([&] { folder_ = textOf(path); });
    }
    STDMETHODIMP SetImage(long width, long height, VARIANT pixels) override {
        return answered([&] {
            std::vector<unsigned char> levels;
            forEach(pixels, VT_UI1, [&](const VARIANT& level) { levels.push_back(level.bVal); });
            if (width < 1 || height < 1 ||
                levels.size() / static_cast<std::size_t>(width) != static_cast<std::size_t>(height) ||
                levels.size() % static_cast<std::size_t>(width) != 0)
                throw kWrong;
            image_ = Image(width, height, std::move(levels));
        });
    }
    STDMETHODIMP OpenImage(BSTR path) override {
        return answered([&] {
            ComPtr<IWICImagingFactory> images;
            ComPtr<IWICBitmapDecoder> decoder;
            ComPtr<IWICBitmapFrameDecode> frame;
            ComPtr<IWICBitmapSource> grey;
            check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                   IID_PPV_ARGS(&images)));
            check(images->CreateDecoderFromFilename(path, nullptr, GENERIC_READ,
                                                    WICDecodeMetadataCacheOnDemand, &decoder));
            check(decoder->GetFrame(0, &frame));
            check(WICConvertBitmapSource(GUID_WICPixelFormat8bppGray, frame.Get(), &grey));
            UINT width = 0, height = 0;
            check(grey->GetSize(&width, &height));
            std::vector<unsigned char> levels(static_cast<std::size_t>(width) * height);
            check(grey->CopyPixels(nullptr, width, static_cast<UINT>(levels.size()), levels.data()));
            image_ = Image(static_cast<int>(width), static_cast<int>(height), std::move(levels));
        });
    }
    STDMETHODIMP ReadImage(BSTR* text) override {
        return answered([&] {
            std::wstring all;
            for (const auto& line : image_.lines()) {
                if (!all.empty()) all += L"\r\n";
                for (const Features& features : line) all += font().read(features);
            }
            *text = SysAllocStringLen(all.data(), static_cast<UINT>(all.size()));
        });
    }

  private:
    static const long kKind = 100000;  // an identifier is kind * 100000 + place
    static const long kAll = kKind - 1;

    struct Described {
        void* object;  // the interface's own part of this object
        ComPtr<ITypeInfo> info;
    };
    const std::array<Described, 3>& described() {
        const auto find = [](REFGUID library, REFGUID wanted, ComPtr<ITypeInfo>& info) {
            ComPtr<ITypeLib> types;
            if (SUCCEEDED(LoadRegTypeLib(library, 1, 0, LOCALE_NEUTRAL, &types)))
                types->GetTypeInfoOfGuid(wanted, &info);
        };
        if (!described_[0].object) {
            described_[0].object = static_cast<IFontTool*>(this);
            described_[1].object = static_cast<IEmbeddedStep*>(this);
            described_[2].object = static_cast<IStep*>(this);
            find(LIBID_DravikLib, __uuidof(IFontTool), described_[0].info);
            find(LIBID_DravikLib, __uuidof(IEmbeddedStep), described_[1].info);
            find(LIBID_TollanLib, __uuidof(IStep), described_[2].info);
        }
        return described_;
    }

    Font& font() {
        if (current_.empty()) throw kNoFont;
        return font_;
    }
    std::filesystem::path fileOf(const std::wstring& name) const {
        if (name.empty() || name.find_first_of(L"\\/:*?\"<>|.") != std::wstring::npos)
            throw Failure{kWrong.code, L"A font cannot have that name"};
        return folder_ / (name + L".font");
    }
    std::filesystem::path existing(const std::wstring& name) const {
        const std::filesystem::path file = fileOf(name);
        if (!std::filesystem::exists(file)) throw kNoSuchFont;
        return file;
    }
    std::filesystem::path unused(const std::wstring& name) const {
        const std::filesystem::path file = fileOf(name);
        if (std::filesystem::exists(file)) throw Failure{kNotWritten.code, L"There is a font of that name"};
        return file;
    }
    std::vector<std::wstring> fonts() const {
        std::vector<std::wstring> names;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(folder_, none))
            if (entry.path().extension() == L".font") names.push_back(entry.path().stem().wstring());
        std::sort(names.begin(), names.end());
        return names;
    }
    Font stored(const std::wstring& name) const {
        Font font;
        if (!font.load(existing(name))) throw Failure{kWrong.code, L"The font cannot be read"};
        return font;
    }
    void store(const std::wstring& name, const Font& font) const {
        std::filesystem::create_directories(folder_);
        if (!font.save(fileOf(name))) throw kNotWritten;
    }

    void addRecords(long selector, std::vector<Record>& records) const {
        const long kind = selector / kKind, place = selector % kKind;
        if (current_.empty() || kind < 1 || kind > 3) return;
        const auto add = [&](std::size_t at, wchar_t character, double number, const Features& features) {
            if (place == kAll || place == static_cast<long>(at))
                records.push_back({kind * kKind + static_cast<long>(at), character, number,
                                   std::vector<double>(features.begin(), features.end())});
        };
        const auto& samples = kind == 2 ? font_.uncommitted : font_.committed;
        for (std::size_t at = 0; kind != 1 && at < samples.size(); ++at)
            add(at, samples[at].character, font_.distanceOf(samples[at]), samples[at].features);
        const std::wstring listed = font_.listed();
        for (std::size_t at = 0; kind == 1 && at < listed.size(); ++at) {
            const auto found = font_.trained.find(listed[at]);
            const Font::Trained one = found == font_.trained.end() ? Font::Trained() : found->second;
            add(at, listed[at], static_cast<double>(one.count), one.mean);
        }
    }

    ULONG references_ = 1;
    std::array<Described, 3> described_ = {};
    std::filesystem::path folder_;
    std::wstring current_;  // the font that is loaded, "" for none
    Font font_;
    Image image_;
    long timeout_ = 60;
};

// One for the whole file; nobody counts it.
class Factory : public IClassFactory {
  public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IClassFactory;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        *object = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        return answered([&] {
            ComPtr<SmallTool> tool;
            tool.Attach(new SmallTool);
            check(tool->QueryInterface(iid, object));
        });
    }
    STDMETHODIMP LockServer(BOOL lock) override { return inUse += lock ? 1 : -1, S_OK; }
};

STDAPI DllGetClassObject(REFCLSID identifier, REFIID iid, void** object) {
    static Factory factory;
    *object = nullptr;
    return identifier == kClass ? factory.QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return inUse == 0 ? S_OK : S_FALSE;
}

static HRESULT put(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    return HRESULT_FROM_WIN32(RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, text.c_str(),
                                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
}

STDAPI DllRegisterServer() {
    wchar_t file[MAX_PATH] = {};
    GetModuleFileNameW(module, file, MAX_PATH);
    const std::wstring server = std::wstring(kClassKey) + L"\\InprocServer32";
    HRESULT code = put(kClassKey, nullptr, L"Small font tool");
    if (SUCCEEDED(code)) code = put(server, nullptr, file);
    if (SUCCEEDED(code)) code = put(server, L"ThreadingModel", L"Apartment");
    if (SUCCEEDED(code)) code = put(kNameKey, nullptr, L"Small font tool");
    if (SUCCEEDED(code)) code = put(std::wstring(kNameKey) + L"\\CLSID", nullptr, wcsrchr(kClassKey, L'{'));
    return code;
}

STDAPI DllUnregisterServer() {
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kClassKey);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kNameKey);
    return S_OK;
}

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) module = instance;
    return TRUE;
}
