// Changes of the registry below one root that are taken back unless they are all done.
#pragma once

#include <string>
#include <vector>

#include "base/Handle.h"

namespace dravik::server {

struct OpenKey {
    using Value = HKEY;
    static HKEY none() noexcept { return nullptr; }
    static void close(HKEY key) noexcept { RegCloseKey(key); }
};
using RegistryKey = Handle<OpenKey>;

// Raises Failure with the system's code unless the call succeeded.
void checkRegistry(LSTATUS status);

class RegistryTransaction {
  public:
    // `root` outlives the transaction.
    explicit RegistryTransaction(HKEY root) : root_(root) {}
    RegistryTransaction(const RegistryTransaction&) = delete;
    RegistryTransaction& operator=(const RegistryTransaction&) = delete;
    // Takes everything back, last first, unless it is kept.
    ~RegistryTransaction();

    // Makes the key, and those above it, and sets a text value in it; "" names the default value. Raise
    // Failure with the system's code.
    void set(const std::wstring& key, const std::wstring& name, const std::wstring& text);
    void make(const std::wstring& key);
    // Takes away a value; one that is not there is no failure.
    void remove(const std::wstring& key, const std::wstring& name);
    // Takes away a key that holds nothing, and those above it up to `top` that then hold nothing either.
    void removeIfEmpty(const std::wstring& key, const std::wstring& top);

    void keep() noexcept { undo_.clear(); }

  private:
    struct Value {
        bool exists = false;
        DWORD type = REG_NONE;
        std::vector<BYTE> data;
    };
    // What to do to have the old state back: a key to delete or to make, or a value to set or to delete.
    struct Undo {
        enum class Kind { DeleteKey, MakeKey, Value } kind;
        std::wstring key;
        std::wstring name;
        Value value;
    };

    Value valueOf(HKEY key, const std::wstring& name) const;
    void takeBack(const Undo& undo) const noexcept;

    HKEY root_;
    std::vector<Undo> undo_;
};

bool hasKey(HKEY root, const std::wstring& key);
// A text value below a root, the default one for "" as its name; "" when there is none.
std::wstring registryText(HKEY root, const std::wstring& key, const std::wstring& name = {});

}  // namespace dravik::server
