#include "vgui/controls/button_exchange.h"

#include "vgui/controls/buttons.h"

namespace
{

template <class Control>
Control* LibraryControl(HWND window)
{
    return DYNAMIC_DOWNCAST(Control, CWnd::FromHandlePermanent(window));
}

VRadioBtn* LibraryRadio(CWnd* parent, UINT id)
{
    return LibraryControl<VRadioBtn>(::GetDlgItem(parent->GetSafeHwnd(), static_cast<int>(id)));
}

bool EndsGroup(HWND window)
{
    return window == nullptr || (::GetWindowLongW(window, GWL_STYLE) & WS_GROUP) != 0;
}

// Exchanges one button of a group. False when the window is no radio button.
bool ExchangeRadio(bool save, HWND window, int index, int& value)
{
    if (VRadioBtn* radio = LibraryControl<VRadioBtn>(window)) {
        if (save && radio->GetCheck())
            value = index;
        if (!save) {
            radio->SetCheck(index == value, FALSE);
            radio->Invalidate();
        }
        return true;
    }
    if ((::SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) == 0)
        return false;
    if (!save)
        ::SendMessageW(window, BM_SETCHECK, index == value, 0);
    else if (::SendMessageW(window, BM_GETCHECK, 0, 0) != 0)
        value = index;
    return true;
}

} // namespace

void VGDDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    VCheckBox* box = LibraryControl<VCheckBox>(pDX->PrepareCtrl(nIDC));
    if (box == nullptr)
        DDX_Check(pDX, nIDC, value);
    else if (pDX->m_bSaveAndValidate)
        value = box->GetCheck();
    else
        box->SetCheck(value, TRUE);
}

void VGDDX_Radio(CDataExchange* pDX, int nIDC, int& value)
{
    HWND window = pDX->PrepareCtrl(nIDC);
    const bool save = pDX->m_bSaveAndValidate != FALSE;
    if (save)
        value = -1;
    int index = 0;
    do {
        if (ExchangeRadio(save, window, index, value))
            ++index;
        window = ::GetWindow(window, GW_HWNDNEXT);
    } while (!EndsGroup(window));
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
