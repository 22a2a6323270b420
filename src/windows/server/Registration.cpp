#include "windows/server/Registration.h"

#include <algorithm>
#include <array>
#include <set>

#include "windows/com/Boundary.h"
#include "windows/com/ComText.h"
#include "windows/com/Module.h"
#include "windows/server/RegistryTransaction.h"

namespace dravik::server {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes";
constexpr wchar_t kControlCategory[] = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";
// The system's marshallers that work from a type library and for pure dispatch interfaces.
constexpr wchar_t kTypeLibraryMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t kDispatchMarshaller[] = L"{00020420-0000-0000-C000-000000000046}";
constexpr const wchar_t* kPlatform = sizeof(void*) == 8 ? L"win64" : L"win32";
constexpr wchar_t kSource[] = L"DravikDlg";
// The libraries' resources, those that others import first: an interface belongs to the first that describes
// it.
constexpr std::array<int, com::kTypeLibraries> kDescribingOrder = {4, 2, 3, 1};

std::wstring textOf(REFGUID identifier) {
    std::array<wchar_t, 40> text{};
    StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::wstring versionText() {
    return std::to_wstring(kMajorVersion) + L"." + std::to_wstring(kMinorVersion);
}

// Collects entries below one key that is ours.
class Entries {
  public:
    Entries(std::vector<RegistryEntry>& all, std::wstring own) : all_(all), own_(std::move(own)) {
        const std::size_t separator = own_.rfind(L'\\');
        if (separator != std::wstring::npos) top_ = own_.substr(0, separator);
    }
    void add(const std::wstring& below, const std::wstring& text, const std::wstring& name = {}) {
        all_.push_back({below.empty() ? own_ : own_ + L"\\" + below, name, text, top_});
    }

  private:
    std::vector<RegistryEntry>& all_;
    std::wstring own_;
    std::wstring top_;
};

void addClass(std::vector<RegistryEntry>& all, const RegisteredClass& one, const std::wstring& path) {
    const std::wstring identifier = textOf(one.identifier);
    const std::wstring versioned = one.programIdentifier + L"." + std::to_wstring(kMajorVersion);

    Entries own(all, L"CLSID\\" + identifier);
    own.add(L"", one.description);
    own.add(L"InprocServer32", path);
    own.add(L"InprocServer32", L"Apartment", L"ThreadingModel");
    own.add(L"ProgID", versioned);
    own.add(L"VersionIndependentProgID", one.programIdentifier);
    own.add(L"TypeLib", textOf(one.library));
    own.add(L"Version", versionText());
    if (one.control) {
        own.add(L"Control", L"");
        own.add(std::wstring(L"Implemented Categories\\") + kControlCategory, L"");
        own.add(L"MiscStatus", L"0");
        own.add(L"MiscStatus\\1", std::to_wstring(one.control->miscStatus));
        own.add(L"ToolboxBitmap32", path + L", " + std::to_wstring(one.control->toolboxBitmap));
    }

    Entries current(all, one.programIdentifier);
    current.add(L"", one.description);
    current.add(L"CLSID", identifier);
    current.add(L"CurVer", versioned);
    Entries version(all, versioned);
    version.add(L"", one.description);
    version.add(L"CLSID", identifier);
}

struct LibraryAttributes {
    explicit LibraryAttributes(ITypeLib& of) : library(of) { com::check(library.GetLibAttr(&attributes)); }
    LibraryAttributes(const LibraryAttributes&) = delete;
    LibraryAttributes& operator=(const LibraryAttributes&) = delete;
    ~LibraryAttributes() { library.ReleaseTLibAttr(attributes); }

    ITypeLib& library;
    TLIBATTR* attributes = nullptr;
};

std::wstring nameIn(ITypeLib& library, INT index, bool description) {
    com::Bstr text;
    com::check(library.GetDocumentation(index, description ? nullptr : text.put(),
                                        description ? text.put() : nullptr, nullptr, nullptr));
    return text.get() ? std::wstring(text.get(), SysStringLen(text.get())) : std::wstring();
}

// The interfaces of a library that can be marshalled, except those that an earlier library has described.
void addInterfaces(std::vector<RegistryEntry>& all, ITypeLib& library, const std::wstring& identifier,
                   std::set<std::wstring>& described) {
    for (UINT index = 0; index < library.GetTypeInfoCount(); ++index) {
        com::ComPtr<ITypeInfo> info;
        com::check(library.GetTypeInfo(index, info.put()));
        TYPEATTR* attributes = nullptr;
        com::check(info->GetTypeAttr(&attributes));
        const TYPEKIND kind = attributes->typekind;
        const bool dual = attributes->wTypeFlags & TYPEFLAG_FDUAL;
        const bool automation = attributes->wTypeFlags & TYPEFLAG_FOLEAUTOMATION;
        const std::wstring interfaceIdentifier = textOf(attributes->guid);
        info->ReleaseTypeAttr(attributes);
        if (kind != TKIND_DISPATCH && !(kind == TKIND_INTERFACE && automation)) continue;
        if (!described.insert(interfaceIdentifier).second) continue;
        Entries own(all, L"Interface\\" + interfaceIdentifier);
        own.add(L"", nameIn(library, static_cast<INT>(index), false));
        own.add(L"ProxyStubClsid32",
                kind == TKIND_DISPATCH && !dual ? kDispatchMarshaller : kTypeLibraryMarshaller);
        own.add(L"TypeLib", identifier);
        own.add(L"TypeLib", versionText(), L"Version");
    }
}

void addLibrary(std::vector<RegistryEntry>& all, int resource, const std::wstring& path,
                std::set<std::wstring>& described) {
    const auto library = com::typeLibrary(resource);
    const LibraryAttributes attributes(*library);
    const std::wstring identifier = textOf(attributes.attributes->guid);
    Entries own(all, L"TypeLib\\" + identifier);
    const std::wstring version = versionText();
    own.add(version, nameIn(*library, -1, true));
    own.add(version + L"\\0\\" + kPlatform, path + L"\\" + std::to_wstring(resource));
    own.add(version + L"\\FLAGS", std::to_wstring(attributes.attributes->wLibFlags & ~LIBFLAG_FHASDISKIMAGE));
    own.add(version + L"\\HELPDIR", path.substr(0, path.find_last_of(L"\\/")));
    addInterfaces(all, *library, identifier, described);
}

HKEY hiveOf(Scope scope) {
    return scope == Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

RegistryKey classesKey(Scope scope) {
    RegistryKey key;
    checkRegistry(
        RegCreateKeyExW(hiveOf(scope), kClasses, 0, nullptr, 0, KEY_READ, nullptr, key.put(), nullptr));
    return key;
}

bool isInterface(const RegistryEntry& entry) {
    return entry.top == L"Interface";
}

// An interface's own key.
std::wstring interfaceKey(const RegistryEntry& entry) {
    return entry.key.substr(0, entry.key.find(L'\\', entry.top.size() + 1));
}

// The entries that are ours to write or to take away: all but those of interfaces that somebody else has
// registered.
std::vector<const RegistryEntry*> ownEntries(HKEY root, const std::vector<RegistryEntry>& entries) {
    std::set<std::wstring> libraries;
    for (const RegistryEntry& entry : entries)
        if (isInterface(entry) && entry.key.ends_with(L"\\TypeLib") && entry.name.empty())
            libraries.insert(entry.text);
    std::vector<const RegistryEntry*> own;
    for (const RegistryEntry& entry : entries) {
        const bool foreign = isInterface(entry) && hasKey(root, interfaceKey(entry)) &&
                             !libraries.contains(registryText(root, interfaceKey(entry) + L"\\TypeLib"));
        if (!foreign) own.push_back(&entry);
    }
    return own;
}

// Whether the registry has a second view, of programs of the other bitness, in which the class is registered.
bool isInOtherView(HKEY hive, const std::wstring& identifier) {
    BOOL narrow = FALSE;
    if (sizeof(void*) == 4 && (!IsWow64Process(GetCurrentProcess(), &narrow) || !narrow)) return false;
    const std::wstring path = std::wstring(kClasses) + L"\\CLSID\\" + identifier + L"\\InprocServer32";
    RegistryKey key;
    const REGSAM other = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    // Where there is but one view, this file itself is found.
    return RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ | other, key.put()) == ERROR_SUCCESS &&
           registryText(key.get(), L"") != com::modulePath();
}

// Both views have these keys in common, but for where a type library's file is.
bool isShared(const RegistryEntry& entry) {
    return !isInterface(entry) && entry.top != L"CLSID" && !entry.key.ends_with(kPlatform);
}

// Takes the entries away below a root; nothing of it stays done unless the transaction is kept.
void takeAway(std::span<const RegisteredClass> classes, HKEY hive, HKEY root,
              RegistryTransaction& transaction) {
    const auto entries = registryEntries(classes);
    auto own = ownEntries(root, entries);
    // The control of the other bitness is still there and needs what the two share.
    if (std::ranges::any_of(classes, [hive](const RegisteredClass& one) {
            return isInOtherView(hive, textOf(one.identifier));
        }))
        std::erase_if(own, [](const RegistryEntry* entry) { return isShared(*entry); });
    for (const RegistryEntry* entry : own) transaction.remove(entry->key, entry->name);
    // The deepest first.
    std::sort(own.begin(), own.end(),
              [](const RegistryEntry* a, const RegistryEntry* b) { return a->key.size() > b->key.size(); });
    // A user may have had not even the keys above ours before; of the machine they are never empty.
    for (const RegistryEntry* entry : own) transaction.removeIfEmpty(entry->key, L"");
}

bool isRefusal(const Failure& failure) {
    return failure.number() == static_cast<std::int32_t>(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
}

}  // namespace

std::vector<RegistryEntry> registryEntries(std::span<const RegisteredClass> classes) {
    std::vector<RegistryEntry> all;
    const std::wstring path = com::modulePath();
    std::set<std::wstring> described;
    for (const int resource : kDescribingOrder) addLibrary(all, resource, path, described);
    for (const RegisteredClass& one : classes) addClass(all, one, path);
    return all;
}

void registerServer(std::span<const RegisteredClass> classes, Scope scope) {
    const RegistryKey root = classesKey(scope);
    const auto entries = registryEntries(classes);
    const auto own = ownEntries(root.get(), entries);
    RegistryTransaction transaction(root.get());
    for (const RegistryEntry* entry : own) transaction.set(entry->key, entry->name, entry->text);
    transaction.keep();
}

void unregisterServer(std::span<const RegisteredClass> classes, Scope scope) {
    const RegistryKey root = classesKey(scope);
    RegistryTransaction transaction(root.get());
    takeAway(classes, hiveOf(scope), root.get(), transaction);
    transaction.keep();
}

HRESULT registerServer(std::span<const RegisteredClass> classes) noexcept {
    return com::comCall(IID_IUnknown, kSource, [&] {
        try {
            registerServer(classes, Scope::Machine);
        } catch (const Failure& failure) {
            if (!isRefusal(failure)) throw;
            registerServer(classes, Scope::User);
        }
    });
}

HRESULT unregisterServer(std::span<const RegisteredClass> classes) noexcept {
    return com::comCall(IID_IUnknown, kSource, [&] {
        // Where the machine's registration may not be taken away, the user's stays too.
        const RegistryKey user = classesKey(Scope::User);
        const RegistryKey machine = classesKey(Scope::Machine);
        RegistryTransaction ofUser(user.get());
        RegistryTransaction ofMachine(machine.get());
        takeAway(classes, hiveOf(Scope::User), user.get(), ofUser);
        takeAway(classes, hiveOf(Scope::Machine), machine.get(), ofMachine);
        ofMachine.keep();
        ofUser.keep();
    });
}

HRESULT installServer(std::span<const RegisteredClass> classes, bool install,
                      const wchar_t* commandLine) noexcept {
    if (!commandLine || _wcsicmp(commandLine, L"user") != 0)
        return install ? registerServer(classes) : unregisterServer(classes);
    return com::comCall(IID_IUnknown, kSource, [&] {
        if (install)
            registerServer(classes, Scope::User);
        else
            unregisterServer(classes, Scope::User);
    });
}

}  // namespace dravik::server
