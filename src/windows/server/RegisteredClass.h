// A class that the server offers: how it is made and how it is entered in the registry.
#pragma once

#include <optional>
#include <string>

namespace dravik::server {

struct RegisteredClass {
    // What only controls have.
    struct Control {
        DWORD miscStatus = 0;   // OLEMISC_...
        int toolboxBitmap = 0;  // resource
    };

    CLSID identifier{};
    std::wstring programIdentifier;  // without the version, e.g. "Dravik.EmbeddedStep"
    std::wstring description;
    GUID library{};  // type library
    // Makes an object and asks it for the interface; a failure leaves no object behind. May throw.
    HRESULT (*create)(REFIID iid, void** out) = nullptr;
    std::optional<Control> control;
};

// Version of the classes and of their type libraries.
constexpr int kMajorVersion = 1;
constexpr int kMinorVersion = 0;

// The embedded tool as a job step.
RegisteredClass embeddedStepClass();

}  // namespace dravik::server
