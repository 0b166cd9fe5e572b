// How the handle map makes and drops temporary image lists. Whoever uses the map's member functions includes
// this header.
#pragma once

#include "handle_map.h"

namespace afx_subset
{

template <>
struct HandleTraits<CImageList> {
    static CImageList* Make(struct _IMAGELIST* handle);
    static void Drop(CImageList* object);
};

// A new object, the caller's to delete, that owns the list; null for a null handle.
CImageList* NewImageList(struct _IMAGELIST* handle);

} // namespace afx_subset
