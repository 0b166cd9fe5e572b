// Reading texts of unknown length from controls that cut them to the buffer.
#pragma once

#include <afxwin.h>
#include <commctrl.h>

#include <cwchar>
#include <vector>

namespace afx_subset
{

// Calls fetch(buffer, capacity) with ever larger buffers until the text is shorter than the buffer, which
// proves that it was not cut. fetch answers where the text is (controls may answer a pointer of their own) or
// null for none; capacity counts characters with the terminator.
template <class Fetch>
CString TextOfAnyLength(Fetch fetch)
{
    constexpr size_t kFirstCapacity = 128;
    constexpr size_t kLargestCapacity = size_t{1} << 24;
    for (size_t capacity = kFirstCapacity;; capacity *= 2) {
        // One spare character, so that a control that writes the terminator past its limit does no harm.
        std::vector<TCHAR> buffer(capacity + 1);
        LPCTSTR text = fetch(buffer.data(), static_cast<int>(capacity));
        if (text == nullptr || text == LPSTR_TEXTCALLBACK)
            return CString();
        const bool cut = text == buffer.data() && std::wcslen(text) + 1 >= capacity;
        if (!cut || capacity >= kLargestCapacity)
            return CString(text);
    }
}

} // namespace afx_subset
