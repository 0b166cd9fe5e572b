// Calls that concern both handles of a device context object.
#pragma once

#include <afxwin.h>

namespace afx_subset
{

// TRUE when output goes elsewhere than questions, so that state has to be set twice.
inline bool HasOwnOutput(const CDC& dc)
{
    return dc.m_hDC != nullptr && dc.m_hDC != dc.m_hAttribDC;
}

// Makes the call for the output and the attribute device context, once when they are the same. The answer is
// the attribute device context's, as it is for every question.
template <class Result, class Call>
Result OnBoth(const CDC& dc, Result failed, Call call)
{
    Result result = failed;
    if (HasOwnOutput(dc))
        result = call(dc.m_hDC);
    if (dc.m_hAttribDC != nullptr)
        result = call(dc.m_hAttribDC);
    return result;
}

inline HDC OutputOf(const CDC* dc)
{
    return dc == nullptr ? nullptr : dc->m_hDC;
}

template <class Handle>
Handle HandleOf(const CGdiObject* object)
{
    return object == nullptr ? nullptr : static_cast<Handle>(object->m_hObject);
}

} // namespace afx_subset
