#pragma once

#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>
