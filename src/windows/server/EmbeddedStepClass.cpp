#include "windows/com/EmbeddedStepObject.h"
#include "windows/server/RegisteredClass.h"

namespace dravik::server {
namespace {

HRESULT create(REFIID iid, void** out) {
    const auto step = com::ComPtr<IEmbeddedStep>::attach(new com::EmbeddedStepObject);
    return step->QueryInterface(iid, out);
}

}  // namespace

RegisteredClass embeddedStepClass() {
    return {.identifier = __uuidof(EmbeddedStep),
            .programIdentifier = L"Dravik.EmbeddedStep",
            .description = L"Dravik embedded font tool",
            .library = LIBID_DravikLib,
            .create = create,
            .control = {}};
}

}  // namespace dravik::server
