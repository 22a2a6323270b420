// The Windows headers without those of their macros that bear names of ours. Included before the contract's
// headers and before any of the system that has operations of such a name.
#pragma once

#include <windows.h>
// Behind windows.h
#include <ole2.h>
#include <olectl.h>

#undef MessageBox
#undef CreateFont
#undef LoadImage
#undef GetObject
#undef Yield
