// How the handle maps make and drop temporary GDI objects, device contexts and menus. Whoever uses one of
// these maps' member functions includes this header.
#pragma once

#include "handle_map.h"

#include <windows.h>

namespace afx_subset
{

template <>
struct HandleTraits<CGdiObject> {
    static CGdiObject* Make(HGDIOBJ handle);
    static void Drop(CGdiObject* object);
};

template <>
struct HandleTraits<CDC> {
    static CDC* Make(HDC handle);
    static void Drop(CDC* object);
};

template <>
struct HandleTraits<CMenu> {
    static CMenu* Make(HMENU handle);
    static void Drop(CMenu* object);
};

} // namespace afx_subset
