// Search in message maps.
#pragma once

namespace afx_subset
{

inline const AFX_MSGMAP* BaseMap(const AFX_MSGMAP* map)
{
    return map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr;
}

// The first entry of one map for a command or notification, null when there is none.
inline const AFX_MSGMAP_ENTRY* FindEntry(const AFX_MSGMAP_ENTRY* entry, UINT message, UINT code, UINT id)
{
    for (; entry->pfn != nullptr; ++entry) {
        if (entry->nMessage == message && entry->nCode == code && id >= entry->nID && id <= entry->nLastID)
            return entry;
    }
    return nullptr;
}

// The first entry of one map for a window message or a registered one.
inline const AFX_MSGMAP_ENTRY* FindMessage(const AFX_MSGMAP_ENTRY* entry, UINT message)
{
    for (; entry->pfn != nullptr; ++entry) {
        if (entry->nMessage == message && entry->nCode == 0)
            return entry;
        if (entry->pnRegistered != nullptr && *entry->pnRegistered == message)
            return entry;
    }
    return nullptr;
}

} // namespace afx_subset
