// Steps across COM: a host's step object as a Step, and a Step as an object for others.
#pragma once

#include "tool/Step.h"
#include "windows/com/ComPtr.h"

namespace dravik::com {

// The step behind an object: its interfaces where it has them, else its members called by names. Keeps the
// object alive. An object of comFromStep() made in this module gives its step itself. Nothing for a null
// pointer; raises Type mismatch (13) for an object that cannot be called.
tool::StepPtr stepFromCom(IUnknown* object);

// The step as an object with IStep and IFontTool; the object that a step of stepFromCom() came from is given
// back itself. Nothing for no step.
ComPtr<IUnknown> comFromStep(const tool::StepPtr& step);

// How an object tells the step that it stands for to code of the same module.
MIDL_INTERFACE("634245f3-cc32-468f-a0a3-555c59782a65")
INativeStep : public IUnknown {
    // `module` is thisModule(); false, and no step, when the object lives in another one.
    virtual bool STDMETHODCALLTYPE nativeStep(HMODULE module, tool::StepPtr & step) noexcept = 0;
};

}  // namespace dravik::com

__CRT_UUID_DECL(dravik::com::INativeStep, 0x634245f3, 0xcc32, 0x468f, 0xa0, 0xa3, 0x55, 0x5c, 0x59, 0x78,
                0x2a, 0x65)
