#include <afxwin.h>

#include <cwchar>
#include <limits>

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd)
{
}

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    const HWND control = ::GetDlgItem(m_pDlgWnd->GetSafeHwnd(), nIDC);
    if (control == nullptr)
        AfxThrowNotSupportedException();
    m_idLastControl = nIDC;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC)
{
    const HWND control = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_idLastControl != 0) {
        const HWND control = ::GetDlgItem(m_pDlgWnd->GetSafeHwnd(), m_idLastControl);
        ::SetFocus(control);
        if (m_bEditLastControl)
            ::SendMessage(control, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

// ---- CWnd's part

BOOL CWnd::UpdateData(BOOL bSaveAndValidate)
{
    CDataExchange exchange(this, bSaveAndValidate);
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (CUserException* e) {
        // The user has been told already.
        e->Delete();
    } catch (CException* e) {
        e->ReportError(MB_ICONEXCLAMATION);
        e->Delete();
    }
    return FALSE;
}

void CWnd::DoDataExchange(CDataExchange*) {}

void CWnd::UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CCmdUI state;
        state.m_pOther = FromHandle(child);
        state.m_nID = static_cast<UINT>(::GetDlgCtrlID(child) & 0xFFFF);
        // A control's own handler comes first, then the target's.
        CWnd* const permanent = FromHandlePermanent(child);
        if (permanent != nullptr &&
            permanent->CCmdTarget::OnCmdMsg(0, static_cast<int>(CN_UPDATE_COMMAND_UI), &state, nullptr))
            continue;
        // Only push buttons are disabled for want of a handler.
        const bool button =
            (::SendMessage(child, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
        state.DoUpdate(pTarget, bDisableIfNoHndler && button);
    }
}

// ---- Exchange

void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl)
{
    if (rControl.m_hWnd != nullptr || pDX->m_bSaveAndValidate)
        return;
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (!rControl.SubclassWindow(control))
        AfxThrowNotSupportedException();
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        const int length = ::GetWindowTextLength(control);
        ::GetWindowText(control, value.GetBufferSetLength(length), length + 1);
        value.ReleaseBuffer();
        return;
    }
    // An unchanged text is not set again: that would move the caret and send notifications.
    CString current;
    CWnd::FromHandle(control)->GetWindowText(current);
    if (current != value)
        ::SetWindowText(control, value);
}

namespace
{

void RefuseNumber(CDataExchange* pDX, LPCTSTR prompt)
{
    AfxMessageBox(prompt, MB_ICONEXCLAMATION);
    pDX->Fail();
}

CString TextOf(HWND control)
{
    CString text;
    CWnd::FromHandle(control)->GetWindowText(text);
    text.Trim();
    return text;
}

template <class T>
void ExchangeInteger(CDataExchange* pDX, int nIDC, T& value)
{
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    CString text;
    if (!pDX->m_bSaveAndValidate) {
        text.Format(_T("%lld"), static_cast<long long>(value));
        ::SetWindowText(control, text);
        return;
    }
    text = TextOf(control);
    wchar_t* end = nullptr;
    errno = 0;
    const long long number = std::wcstoll(text, &end, 10);
    const bool whole = !text.IsEmpty() && *end == 0 && errno == 0;
    if (!whole || number < static_cast<long long>((std::numeric_limits<T>::min)()) ||
        number > static_cast<long long>((std::numeric_limits<T>::max)()))
        RefuseNumber(pDX, std::is_signed_v<T> ? _T("Please enter an integer.")
                                              : _T("Please enter a positive integer."));
    value = static_cast<T>(number);
}

template <class T>
void ExchangeReal(CDataExchange* pDX, int nIDC, T& value, int digits)
{
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    CString text;
    if (!pDX->m_bSaveAndValidate) {
        text.Format(_T("%.*g"), digits, static_cast<double>(value));
        ::SetWindowText(control, text);
        return;
    }
    text = TextOf(control);
    wchar_t* end = nullptr;
    const double number = std::wcstod(text, &end);
    if (text.IsEmpty() || *end != 0)
        RefuseNumber(pDX, _T("Please enter a number."));
    value = static_cast<T>(number);
}

} // namespace

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value)
{
    ExchangeInteger(pDX, nIDC, value);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, short& value)
{
    ExchangeInteger(pDX, nIDC, value);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value)
{
    ExchangeInteger(pDX, nIDC, value);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value)
{
    ExchangeInteger(pDX, nIDC, value);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value)
{
    ExchangeInteger(pDX, nIDC, value);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value)
{
    ExchangeInteger(pDX, nIDC, value);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, float& value)
{
    ExchangeReal(pDX, nIDC, value, std::numeric_limits<float>::digits10);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, double& value)
{
    ExchangeReal(pDX, nIDC, value, std::numeric_limits<double>::digits10);
}

void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessage(control, BM_GETCHECK, 0, 0));
        return;
    }
    if (value < BST_UNCHECKED || value > BST_INDETERMINATE)
        value = BST_UNCHECKED;
    ::SendMessage(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value)
{
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = -1;
    int index = 0;
    do {
        // Other controls may stand between the buttons of a group.
        if ((::SendMessage(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0) {
            if (!pDX->m_bSaveAndValidate)
                ::SendMessage(control, BM_SETCHECK, index == value, 0);
            else if (::SendMessage(control, BM_GETCHECK, 0, 0) != 0)
                value = index;
            ++index;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control != nullptr && (::GetWindowLong(control, GWL_STYLE) & WS_GROUP) == 0);
}

void AFXAPI DDX_LBString(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        ::SendMessage(control, LB_SELECTSTRING, static_cast<WPARAM>(-1),
                      reinterpret_cast<LPARAM>(static_cast<LPCTSTR>(value)));
        return;
    }
    const LRESULT index = ::SendMessage(control, LB_GETCURSEL, 0, 0);
    if (index == LB_ERR) {
        value.Empty();
        return;
    }
    const auto length =
        static_cast<int>(::SendMessage(control, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0));
    ::SendMessage(control, LB_GETTEXT, static_cast<WPARAM>(index),
                  reinterpret_cast<LPARAM>(value.GetBufferSetLength(length)));
    value.ReleaseBuffer();
}

void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessage(control, LB_GETCURSEL, 0, 0));
    else
        ::SendMessage(control, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        CWnd::FromHandle(control)->GetWindowText(value);
        return;
    }
    const auto text = reinterpret_cast<LPARAM>(static_cast<LPCTSTR>(value));
    if (::SendMessage(control, CB_SELECTSTRING, static_cast<WPARAM>(-1), text) == CB_ERR)
        ::SetWindowText(control, value);
}

void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessage(control, CB_GETCURSEL, 0, 0));
    else
        ::SendMessage(control, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

// ---- Validation

void AFXAPI DDV_MaxChars(CDataExchange* pDX, CString const& value, int nChars)
{
    if (pDX->m_bSaveAndValidate) {
        if (value.GetLength() <= nChars)
            return;
        CString prompt;
        prompt.Format(_T("Please enter no more than %d characters."), nChars);
        AfxMessageBox(prompt, MB_ICONEXCLAMATION);
        pDX->Fail();
    } else if (pDX->m_idLastControl != 0 && pDX->m_bEditLastControl) {
        ::SendDlgItemMessage(pDX->m_pDlgWnd->GetSafeHwnd(), pDX->m_idLastControl, EM_LIMITTEXT,
                             static_cast<WPARAM>(nChars), 0);
    }
}

namespace
{

template <class T>
void ValidateRange(CDataExchange* pDX, T value, T minVal, T maxVal, LPCTSTR format)
{
    // Outside the range on loading is the program's affair; only the user is corrected.
    if (!pDX->m_bSaveAndValidate || (value >= minVal && value <= maxVal))
        return;
    CString prompt;
    prompt.Format(format, minVal, maxVal);
    AfxMessageBox(prompt, MB_ICONEXCLAMATION);
    pDX->Fail();
}

} // namespace

void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal)
{
    ValidateRange(pDX, value, minVal, maxVal, _T("Please enter an integer between %d and %d."));
}

void AFXAPI DDV_MinMaxDouble(CDataExchange* pDX, double const& value, double minVal, double maxVal)
{
    ValidateRange(pDX, value, minVal, maxVal, _T("Please enter a number between %g and %g."));
}
