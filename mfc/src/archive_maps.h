// What an archive remembers of the objects and classes that went through it.
#pragma once

#include "afx.h"

#include <unordered_map>
#include <vector>

// Objects and classes share one sequence of numbers, starting with 1; 0 stands for the null pointer.
struct CArchive::ObjectMaps {
    struct Entry {
        CObject* object = nullptr;
        CRuntimeClass* type = nullptr; // null for an object
        UINT schema = 0;
    };

    // The number of what is stored or loaded next.
    DWORD Next(bool storing) const { return storing ? storeCount : static_cast<DWORD>(loaded.size()); }

    std::unordered_map<const void*, DWORD> stored;
    DWORD storeCount = 1;
    std::vector<Entry> loaded{Entry()};
};
