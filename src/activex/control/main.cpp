// The exports of the control's DLL.
#include <windows.h>

#include "DravikDlgLib.h"
#include "DravikLib.h"
