// The Windows headers without the macro of a system function that would rename a type of the models.
#pragma once

#include <windows.h>

#undef MessageBox
