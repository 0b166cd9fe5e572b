#include "control_message.h"

#include <algorithm>
#include <iterator>

using afx_subset::Send;

IMPLEMENT_DYNAMIC(CEdit, CWnd)

CEdit::~CEdit()
{
    DestroyWindow();
}

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(WC_EDIT, nullptr, dwStyle, rect, pParentWnd, nID);
}

BOOL CEdit::CanUndo() const
{
    return Send<BOOL>(this, EM_CANUNDO);
}

int CEdit::GetLineCount() const
{
    return Send<int>(this, EM_GETLINECOUNT);
}

BOOL CEdit::GetModify() const
{
    return Send<BOOL>(this, EM_GETMODIFY);
}

void CEdit::SetModify(BOOL bModified)
{
    Send(this, EM_SETMODIFY, bModified);
}

void CEdit::GetRect(LPRECT lpRect) const
{
    Send(this, EM_GETRECT, 0, lpRect);
}

DWORD CEdit::GetSel() const
{
    return Send<DWORD>(this, EM_GETSEL);
}

HLOCAL CEdit::GetHandle() const
{
    return Send<HLOCAL>(this, EM_GETHANDLE);
}

void CEdit::SetHandle(HLOCAL hBuffer)
{
    Send(this, EM_SETHANDLE, hBuffer);
}

DWORD CEdit::GetMargins() const
{
    return Send<DWORD>(this, EM_GETMARGINS);
}

void CEdit::SetMargins(UINT nLeft, UINT nRight)
{
    Send(this, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELONG(nLeft, nRight));
}

UINT CEdit::GetLimitText() const
{
    return Send<UINT>(this, EM_GETLIMITTEXT);
}

void CEdit::SetLimitText(UINT nMax)
{
    Send(this, EM_SETLIMITTEXT, nMax);
}

int CEdit::CharFromPos(CPoint pt) const
{
    return Send<int>(this, EM_CHARFROMPOS, 0, MAKELPARAM(pt.x, pt.y));
}

int CEdit::GetLine(int nIndex, LPTSTR lpszBuffer) const
{
    return Send<int>(this, EM_GETLINE, nIndex, lpszBuffer);
}

TCHAR CEdit::GetPasswordChar() const
{
    return Send<TCHAR>(this, EM_GETPASSWORDCHAR);
}

void CEdit::SetPasswordChar(TCHAR ch)
{
    Send(this, EM_SETPASSWORDCHAR, ch);
}

int CEdit::GetFirstVisibleLine() const
{
    return Send<int>(this, EM_GETFIRSTVISIBLELINE);
}

BOOL CEdit::SetReadOnly(BOOL bReadOnly)
{
    return Send<BOOL>(this, EM_SETREADONLY, bReadOnly);
}

BOOL CEdit::SetCueBanner(LPCWSTR lpszText)
{
    return Send<BOOL>(this, EM_SETCUEBANNER, 0, lpszText);
}

BOOL CEdit::SetCueBanner(LPCWSTR lpszText, BOOL fDrawWhenFocused)
{
    return Send<BOOL>(this, EM_SETCUEBANNER, fDrawWhenFocused, lpszText);
}

BOOL CEdit::GetCueBanner(LPWSTR lpszText, int cchText) const
{
    return Send<BOOL>(this, EM_GETCUEBANNER, lpszText, cchText);
}

BOOL CEdit::ShowBalloonTip(PEDITBALLOONTIP pEditBalloonTip)
{
    return Send<BOOL>(this, EM_SHOWBALLOONTIP, 0, pEditBalloonTip);
}

BOOL CEdit::HideBalloonTip()
{
    return Send<BOOL>(this, EM_HIDEBALLOONTIP);
}

void CEdit::EmptyUndoBuffer()
{
    Send(this, EM_EMPTYUNDOBUFFER);
}

BOOL CEdit::FmtLines(BOOL bAddEOL)
{
    return Send<BOOL>(this, EM_FMTLINES, bAddEOL);
}

void CEdit::LimitText(int nChars)
{
    Send(this, EM_LIMITTEXT, nChars);
}

int CEdit::LineFromChar(int nIndex) const
{
    return Send<int>(this, EM_LINEFROMCHAR, nIndex);
}

int CEdit::LineIndex(int nLine) const
{
    return Send<int>(this, EM_LINEINDEX, nLine);
}

int CEdit::LineLength(int nLine) const
{
    return Send<int>(this, EM_LINELENGTH, nLine);
}

void CEdit::LineScroll(int nLines, int nChars)
{
    Send(this, EM_LINESCROLL, nChars, nLines);
}

void CEdit::ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo)
{
    Send(this, EM_REPLACESEL, bCanUndo, lpszNewText);
}

void CEdit::SetRect(LPCRECT lpRect)
{
    Send(this, EM_SETRECT, 0, lpRect);
}

void CEdit::SetRectNP(LPCRECT lpRect)
{
    Send(this, EM_SETRECTNP, 0, lpRect);
}

BOOL CEdit::SetTabStops(int nTabStops, LPINT rgTabStops)
{
    return Send<BOOL>(this, EM_SETTABSTOPS, nTabStops, rgTabStops);
}

void CEdit::SetTabStops()
{
    Send(this, EM_SETTABSTOPS);
}

BOOL CEdit::SetTabStops(const int& cxEachStop)
{
    return Send<BOOL>(this, EM_SETTABSTOPS, 1, &cxEachStop);
}

BOOL CEdit::Undo()
{
    return Send<BOOL>(this, EM_UNDO);
}

void CEdit::Clear()
{
    Send(this, WM_CLEAR);
}

void CEdit::Copy()
{
    Send(this, WM_COPY);
}

void CEdit::Cut()
{
    Send(this, WM_CUT);
}

void CEdit::Paste()
{
    Send(this, WM_PASTE);
}

void CEdit::GetSel(int& nStartChar, int& nEndChar) const
{
    DWORD start = 0;
    DWORD end = 0;
    Send(this, EM_GETSEL, &start, &end);
    nStartChar = static_cast<int>(start);
    nEndChar = static_cast<int>(end);
}

CPoint CEdit::PosFromChar(UINT nChar) const
{
    const auto packed = Send<DWORD>(this, EM_POSFROMCHAR, nChar);
    return CPoint(static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed)));
}

int CEdit::GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const
{
    if (lpszBuffer == nullptr || nMaxLength < 1)
        return 0;
    *reinterpret_cast<WORD*>(lpszBuffer) = static_cast<WORD>(std::min(nMaxLength, 0xffff));
    return GetLine(nIndex, lpszBuffer);
}

CString CEdit::GetCueBanner() const
{
    WCHAR text[256] = {};
    GetCueBanner(text, static_cast<int>(std::size(text)));
    return text;
}

BOOL CEdit::ShowBalloonTip(LPCWSTR lpszTitle, LPCWSTR lpszText, INT ttiIcon)
{
    EDITBALLOONTIP tip = {sizeof(tip), lpszTitle, lpszText, ttiIcon};
    return ShowBalloonTip(&tip);
}

void CEdit::SetSel(DWORD dwSelection, BOOL bNoScroll)
{
    // 0xFFFF stands for -1 (no selection, or up to the end); all other words are positions.
    const auto position = [](WORD word) { return word == 0xffff ? -1 : static_cast<int>(word); };
    SetSel(position(LOWORD(dwSelection)), position(HIWORD(dwSelection)), bNoScroll);
}

void CEdit::SetSel(int nStartChar, int nEndChar, BOOL bNoScroll)
{
    Send(this, EM_SETSEL, nStartChar, nEndChar);
    if (!bNoScroll)
        Send(this, EM_SCROLLCARET);
}
