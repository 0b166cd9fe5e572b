// From a control's event to the handler of an event sink map.
#include <afxdisp.h>

#include "ole_events.h"

const AFX_EVENTSINKMAP* PASCAL CCmdTarget::GetThisEventSinkMap()
{
    static const AFX_EVENTSINKMAP_ENTRY entries[] = {{0, 0, 0, FALSE, nullptr}};
    static const AFX_EVENTSINKMAP eventsinkMap = {nullptr, &entries[0], 0};
    return &eventsinkMap;
}

const AFX_EVENTSINKMAP* CCmdTarget::GetEventSinkMap() const
{
    return GetThisEventSinkMap();
}

namespace
{

// Whether a handler's pointer to the listed type is one to the given type too: where there is no list, the
// first type that fits the C++ type stands for both.
constexpr bool IsSamePlace(VARTYPE listed, VARTYPE given)
{
    return given == listed || (listed == VT_I2 && given == VT_BOOL) ||
           (listed == VT_I4 && given == VT_ERROR) || (listed == VT_R8 && given == VT_DATE);
}

HRESULT Convert(VARIANT& given, unsigned char listed, VARIANT& value)
{
    const auto type = static_cast<VARTYPE>(listed & ~afxevent::kByRef);
    if ((listed & afxevent::kByRef) == 0) {
        if (type == VT_VARIANT)
            return ::VariantCopyInd(&value, &given);
        return ::VariantChangeType(&value, &given, 0, type);
    }
    // References go to the control's own places; a VARIANT by reference may be the parameter itself.
    if ((given.vt & VT_BYREF) != 0 && IsSamePlace(type, static_cast<VARTYPE>(given.vt & ~VT_BYREF))) {
        value.byref = given.byref;
    } else if (type == VT_VARIANT) {
        value.pvarVal = &given;
    } else {
        return DISP_E_TYPEMISMATCH;
    }
    value.vt = static_cast<VARTYPE>(VT_BYREF | type);
    return S_OK;
}

} // namespace

afxevent::Parameters::Parameters(const DISPPARAMS& given, const char* types, UINT count)
{
    if (given.cArgs != count) {
        m_status = DISP_E_BADPARAMCOUNT;
        return;
    }
    for (; m_count < count && m_status == S_OK; ++m_count) {
        ::VariantInit(&m_values[m_count]);
        m_status = Convert(given.rgvarg[count - 1 - m_count], static_cast<unsigned char>(types[m_count]),
                           m_values[m_count]);
    }
}

afxevent::Parameters::~Parameters()
{
    // References are not freed by this.
    while (m_count > 0)
        ::VariantClear(&m_values[--m_count]);
}

HRESULT afx_subset::DispatchEvent(CCmdTarget* target, const AFX_EVENTSINKMAP* map, BOOL reflected,
                                  UINT idCtrl, DISPID dispid, const DISPPARAMS& params)
{
    for (; map != nullptr; map = map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr) {
        for (UINT i = 0; i < map->nEntryCount; ++i) {
            const AFX_EVENTSINKMAP_ENTRY& entry = map->lpEntries[i];
            const bool fits = entry.dispid == dispid && entry.bReflect == reflected &&
                              (reflected || (idCtrl >= entry.nCtrlIDFirst && idCtrl <= entry.nCtrlIDLast));
            if (fits)
                return entry.pfn(target, idCtrl, params);
        }
    }
    return S_FALSE;
}
