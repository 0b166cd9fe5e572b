#include "vgui/controls/button_exchange.h"

#include "vgui/controls/radio_group.h"

namespace
{

VRadioBtn* LibraryRadio(CWnd* parent, UINT id)
{
    return LibraryRadio(::GetDlgItem(parent->GetSafeHwnd(), static_cast<int>(id)));
}

} // namespace

void VGDDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    VCheckBox* box = DYNAMIC_DOWNCAST(VCheckBox, CWnd::FromHandlePermanent(pDX->PrepareCtrl(nIDC)));
    if (box == nullptr)
        DDX_Check(pDX, nIDC, value);
    else if (pDX->m_bSaveAndValidate)
        value = box->GetCheck();
    else
        box->SetCheck(value, TRUE);
}

void VGDDX_Radio(CDataExchange* pDX, int nIDC, int& value)
{
    ExchangeRadioGroup(pDX->m_bSaveAndValidate != FALSE, pDX->PrepareCtrl(nIDC), value);
}

void VGCheckRB(CWnd* parent, UINT nFirstID, UINT nLastID, UINT nCheckID)
{
    if (nCheckID < nFirstID || nCheckID > nLastID)
        return;
    if (VRadioBtn* radio = LibraryRadio(parent, nCheckID))
        radio->SetCheck(TRUE, TRUE);
}

// Walks the children and not the ids, of which there may be billions.
int VGGetCRB(CWnd* parent, UINT nFirstID, UINT nLastID)
{
    UINT lowest = 0;
    HWND child = ::GetWindow(parent->GetSafeHwnd(), GW_CHILD);
    for (; child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const auto id = static_cast<UINT>(::GetDlgCtrlID(child));
        if (id < nFirstID || id > nLastID || (lowest != 0 && id >= lowest))
            continue;
        const VRadioBtn* radio = LibraryRadio(parent, id);
        if (radio != nullptr && radio->m_hWnd == child && radio->GetCheck())
            lowest = id;
    }
    return static_cast<int>(lowest);
}
