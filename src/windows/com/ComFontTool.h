// A host's font tool behind COM: through its own interface, or called by names where it has none.
#pragma once

#include <memory>

#include "tool/FontTool.h"
#include "windows/com/ComPtr.h"

namespace dravik::com {

// The object seen as a font tool; keeps it alive. Its failures come with its own numbers and texts. Raises
// Type mismatch (13) when the object has neither the interface nor operations of its names.
std::unique_ptr<tool::FontTool> fontToolOf(IUnknown* object);

// The same, called by names even where it has the interface.
std::unique_ptr<tool::FontTool> lateBoundFontToolOf(IUnknown* object);

}  // namespace dravik::com
