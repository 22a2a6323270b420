// The headers of Windows as every file of src/windows sees them: the compiler includes this one first, so
// that no other has to come before or after. Macros that would rename operations and types of ours are gone.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>
#include <olectl.h>
#include <shellapi.h>
#include <windowsx.h>

#undef CreateFont
#undef DeleteFont
#undef GetObject
#undef LoadImage
#undef MessageBox
#undef SelectFont
#undef Yield
