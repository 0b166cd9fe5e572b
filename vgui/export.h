// VGUI_API marks what the library offers to hosts; everything else stays inside vgui.dll.
#pragma once

#ifdef VGUI_BUILD
// Before a class, function or variable that the library exports.
#define VGUI_API __declspec(dllexport)
#else
#define VGUI_API __declspec(dllimport)
#endif
