// The server in the registry: every entry, creating through it, and none left afterwards.
#include "windows/com/support/ComTest.h"
#include "windows/server/Registration.h"

#include "windows/com/Module.h"
#include "windows/server/RegistryTransaction.h"

namespace dravik::test {

using namespace server;
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
const std::wstring kControl = L"CLSID\\{B19EFBE9-EA51-48C7-9335-D538042C1C2D}";
const std::wstring kControls = L"TypeLib\\{C3975B05-1E7B-44D3-8653-3DDB24C5FF4E}\\1.0";
const std::wstring kFontTool = L"Interface\\{5536B3D3-C530-11D3-B4D9-00609769E417}";
const std::wstring kTool = L"CLSID\\{1B6009B3-7029-4764-8499-D3F97CB96ACA}";

std::wstring machineText(const std::wstring& key, const std::wstring& name = {}) {
    return registryText(HKEY_LOCAL_MACHINE, kClasses + key, name);
}

bool isThere(const std::wstring& key) {
    return hasKey(HKEY_LOCAL_MACHINE, kClasses + key);
}

bool isLoaded() {
    return GetModuleHandleW(L"DravikDlg.ocx") != nullptr;
}

// What is in a key: a line for each key and each value.
std::string contentOf(HKEY root, const std::wstring& path) {
    RegistryKey key;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, key.put()) != ERROR_SUCCESS) return {};
    std::string text = utf8(path) + "\n";
    std::array<wchar_t, 1 << 10> name;
    std::array<char, 1 << 12> data;
    for (DWORD i = 0;; ++i) {
        DWORD length = name.size(), size = data.size(), type = 0;
        if (RegEnumValueW(key.get(), i, name.data(), &length, nullptr, &type,
                          reinterpret_cast<BYTE*>(data.data()), &size) != ERROR_SUCCESS)
            break;
        text += utf8({name.data(), length}) + " " + std::to_string(type) + " " +
                std::string(data.data(), size) + "\n";
    }
    for (DWORD i = 0; RegEnumKeyW(key.get(), i, name.data(), name.size()) == ERROR_SUCCESS; ++i)
        text += contentOf(root, path + L"\\" + name.data());
    return text;
}

HRESULT nothing(REFIID, void**) {
    return E_NOTIMPL;
}

// A control beside the embedded step.
std::vector<RegisteredClass> classes() {
    RegisteredClass control;
    CLSIDFromString(kControl.c_str() + kControl.find(L'{'), &control.identifier);
    control.programIdentifier = L"DravikTest.Control";
    control.description = L"A control";
    control.library = embeddedStepClass().library;
    control.create = nothing;
    control.control = RegisteredClass::Control{0x20191, 101};
    return {embeddedStepClass(), control};
}

class RegistrationTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        unregisterServer(classes(), Scope::User);
        unregisterServer(classes(), Scope::Machine);
    }

    RegistrationTest() : before_(own()) {}
    ~RegistrationTest() override { EXPECT_EQ(own(), before_); }

    // What is below the keys that the server writes.
    std::string own() const {
        std::set<std::wstring> keys;
        for (const RegistryEntry& entry : registryEntries(all_))
            keys.insert(entry.key.substr(0, entry.key.find(L'\\', entry.top.size() + 1)));
        std::string text;
        for (const std::wstring& key : keys)
            text += contentOf(HKEY_LOCAL_MACHINE, kClasses + key) + "the user's:\n" +
                    contentOf(HKEY_CURRENT_USER, kClasses + key);
        return text;
    }

    const std::vector<RegisteredClass> all_ = classes();
    const std::string before_;
};

TEST_F(RegistrationTest, EntersWhatAControlNeedsAndTakesItAwayAgain) {
    registerServer(all_, Scope::Machine);
    const std::wstring path = modulePath();
    const std::vector<std::pair<std::wstring, std::wstring>> texts = {
        {kControl, L"A control"},
        {kControl + L"\\InprocServer32", path},
        {kControl + L"\\ProgID", L"DravikTest.Control.1"},
        {kControl + L"\\VersionIndependentProgID", L"DravikTest.Control"},
        {kControl + L"\\MiscStatus\\1", L"131473"},
        {kControl + L"\\ToolboxBitmap32", path + L", 101"},
        {L"DravikTest.Control\\CurVer", L"DravikTest.Control.1"},
        {L"DravikTest.Control.1\\CLSID", L"{B19EFBE9-EA51-48C7-9335-D538042C1C2D}"},
        {kTool + L"\\ProgID", L"Dravik.EmbeddedStep.1"},
        // Each library by its identifier, and each interface with the library that describes it first.
        {kControls, L"Tamberlux Controls: Dravik Custom Property Pages"},
        {kControls + L"\\FLAGS", std::to_wstring(LIBFLAG_FCONTROL)},
        {kFontTool, L"IFontTool"},
        {kFontTool + L"\\TypeLib", L"{A7230994-BF7A-423D-B658-CCF37FD7E6A8}"},
        {L"Interface\\{1D488D37-0865-4068-B239-99D58B508366}\\TypeLib",
         L"{D93B71CB-2FAE-45F6-BC16-B40C29815A58}"}};
    for (const auto& [key, text] : texts) EXPECT_EQ(machineText(key), text) << utf8(key);
    EXPECT_EQ(machineText(kControl + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_TRUE(isThere(kControl + L"\\Control"));
    EXPECT_TRUE(isThere(kControl + L"\\Implemented Categories\\{40FC6ED4-2438-11CF-A3DB-080036F12502}"));
    EXPECT_FALSE(isThere(kControl + L"\\Insertable"));
    EXPECT_FALSE(isThere(kTool + L"\\Control"));
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(LIBID_DravikLib, 1, 0, 0, library.put()), S_OK);
    unregisterServer(all_, Scope::Machine);
}

TEST_F(RegistrationTest, LeavesWhatOthersPutBelowItsKeys) {
    RegistryTransaction foreign(HKEY_LOCAL_MACHINE);
    registerServer(all_, Scope::Machine);
    foreign.set(kClasses + kTool + L"\\InprocServer32\\1.0", L"Assembly", L"Wrapper");
    foreign.set(kClasses + kTool, L"AppID", L"somebody's");
    unregisterServer(all_, Scope::Machine);
    EXPECT_EQ(machineText(kTool + L"\\InprocServer32\\1.0", L"Assembly"), L"Wrapper");
    EXPECT_EQ(machineText(kTool + L"\\InprocServer32"), L"");
    EXPECT_EQ(machineText(kTool), L"");
    EXPECT_FALSE(isThere(kTool + L"\\ProgID"));
    // The transaction made neither key, so the test takes away what is left of them.
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kClasses + kTool).c_str());
    foreign.keep();
}

// The keys of classes are apart in the two views of the registry, those of names and type libraries are not.
TEST_F(RegistrationTest, LeavesWhatTheControlOfTheOtherBitnessNeeds) {
    BOOL emulated = FALSE;
    if (sizeof(void*) == 4 && (!IsWow64Process(GetCurrentProcess(), &emulated) || !emulated))
        GTEST_SKIP() << "a 32-bit system has one view";
    const std::wstring other = kClasses + kTool + L"\\InprocServer32";
    const REGSAM view = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, other.c_str(), 0, nullptr, 0, KEY_WRITE | view, nullptr,
                              RegistryKey().put(), nullptr),
              ERROR_SUCCESS);
    registerServer(all_, Scope::Machine);
    unregisterServer(all_, Scope::Machine);
    EXPECT_EQ(machineText(L"Dravik.EmbeddedStep\\CurVer"), L"Dravik.EmbeddedStep.1");
    EXPECT_NE(machineText(kControls), L"");
    EXPECT_FALSE(isThere(kControls + L"\\0"));
    EXPECT_FALSE(isThere(kControl));
    for (const std::wstring& key : {other, kClasses + kTool})
        RegDeleteKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), view, 0);
    registerServer(all_, Scope::Machine);
    unregisterServer(all_, Scope::Machine);
}

TEST_F(RegistrationTest, LeavesInterfacesToTheLibraryThatHasThem) {
    RegistryTransaction foreign(HKEY_LOCAL_MACHINE);
    foreign.set(kClasses + kFontTool, L"", L"The host's tool");
    foreign.set(kClasses + kFontTool + L"\\TypeLib", L"", L"{AAAAAAAA-0000-0000-0000-000000000001}");
    const std::string between = own();
    registerServer(all_, Scope::Machine);
    EXPECT_EQ(machineText(kFontTool), L"The host's tool");
    EXPECT_FALSE(isThere(kFontTool + L"\\ProxyStubClsid32"));
    unregisterServer(all_, Scope::Machine);
    EXPECT_EQ(own(), between);
}

TEST_F(RegistrationTest, FailureHalfWayTakesBackWhatWasWritten) {
    auto broken = all_;
    broken.back().programIdentifier.assign(300, L'x');
    RegistryTransaction foreign(HKEY_LOCAL_MACHINE);
    foreign.make(kClasses + kTool);  // where only the values are the server's
    const std::string between = own();
    EXPECT_THROW(registerServer(broken, Scope::Machine), Failure);
    EXPECT_EQ(own(), between);

    // Also what stood there before.
    registerServer(all_, Scope::Machine);
    const std::string registered = own();
    broken.front().description = L"changed";
    EXPECT_THROW(registerServer(broken, Scope::Machine), Failure);
    EXPECT_EQ(own(), registered);
    // And what was taken away, of the user's too.
    registerServer(all_, Scope::User);
    const std::string both = own();
    EXPECT_TRUE(FAILED(unregisterServer(broken)));
    EXPECT_EQ(own(), both);
    EXPECT_TRUE(hasKey(HKEY_CURRENT_USER, kClasses + kTool + L"\\InprocServer32"));
    EXPECT_EQ(unregisterServer(all_), S_OK);
    EXPECT_FALSE(hasKey(HKEY_CURRENT_USER, kClasses + kTool));
    EXPECT_EQ(own(), before_);
}

TEST_F(RegistrationTest, ObjectsAreMadeThroughTheRegistryAndTheServerUnloads) {
    ASSERT_EQ(controlFile()("DllRegisterServer"), S_OK);
    EXPECT_FALSE(isLoaded());
    {
        CLSID identifier;
        ASSERT_EQ(CLSIDFromProgID(L"Dravik.EmbeddedStep", &identifier), S_OK);
        ComPtr<IFontTool> tool;
        ASSERT_EQ(
            CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IFontTool), tool.putVoid()),
            S_OK);
        EXPECT_TRUE(isLoaded());
        EXPECT_EQ(textOf(LateBound(tool.get()).property(L"ProgId").get()), "Step.DravikTool.1");
        ComPtr<IUnknown> aggregate;
        EXPECT_EQ(
            CoCreateInstance(identifier, tool.get(), CLSCTX_INPROC_SERVER, IID_IUnknown, aggregate.putVoid()),
            CLASS_E_NOAGGREGATION);
        CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_EQ(controlFile()("DllCanUnloadNow"), S_FALSE);
    }
    EXPECT_EQ(controlFile()("DllCanUnloadNow"), S_OK);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_FALSE(isLoaded());
    EXPECT_EQ(controlFile()("DllUnregisterServer"), S_OK);
}

TEST_F(RegistrationTest, AUserCanHaveTheServerForHimself) {
    const ControlFile dll = controlFile();
    auto* install = dll.find<HRESULT __stdcall(BOOL, LPCWSTR)>("DllInstall");
    const std::wstring key = std::wstring(kClasses) + L"Dravik.EmbeddedStep.1";
    ASSERT_EQ(install(TRUE, L"user"), S_OK);
    EXPECT_TRUE(hasKey(HKEY_CURRENT_USER, key));
    EXPECT_FALSE(hasKey(HKEY_LOCAL_MACHINE, key));
    EXPECT_EQ(install(FALSE, L"user"), S_OK);
}

TEST_F(RegistrationTest, UnknownClassesAreRefused) {
    const ControlFile dll = controlFile();
    auto* classObject = dll.find<HRESULT __stdcall(REFCLSID, REFIID, void**)>("DllGetClassObject");
    void* out = &out;
    EXPECT_EQ(classObject(IID_IUnknown, IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(classObject(__uuidof(EmbeddedStep), IID_IDispatch, &out), E_NOINTERFACE);
    EXPECT_EQ(dll("DllCanUnloadNow"), S_OK);
}

}  // namespace
}  // namespace dravik::test
