#include "activex/com/EmbeddedStepObject.h"
#include "activex/server/RegisteredClass.h"

namespace dravik {
namespace {

HRESULT create(REFIID iid, void** out) {
    const auto step = ComPtr<IEmbeddedStep>::attach(new EmbeddedStepObject);
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

}  // namespace dravik
