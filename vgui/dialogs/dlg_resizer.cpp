#include "vgui/dialogs/dlg_resizer.h"

#include <cmath>
#include <limits>

namespace
{

constexpr int kNotFound = -1;

// Hosts may pass any size: sums beyond the range of int wrap instead of being undefined.
int Sum(int a, int b)
{
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

int Difference(int a, int b)
{
    return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

template <class Records>
auto& RecordAt(Records& records, INT_PTR index)
{
    if (index < 0 || static_cast<size_t>(index) >= records.size())
        AfxThrowInvalidArgException();
    return records[static_cast<size_t>(index)];
}

void Shift(LONG& edge, int distance)
{
    edge = Sum(edge, distance);
}

// Moves an edge by the whole pixels of its carry, which keeps the rest.
void ShiftByCarry(LONG& edge, float& carry)
{
    constexpr float kBeyondInt = 2147483648.0F;
    if (!(std::fabs(carry) < kBeyondInt)) {
        // Not a number, infinite, or far off every screen: there is no fraction worth keeping.
        const float bound = carry;
        carry = 0;
        if (!std::isnan(bound))
            Shift(edge, bound < 0 ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max());
        return;
    }
    const int whole = static_cast<int>(carry);
    Shift(edge, whole);
    carry -= static_cast<float>(whole);
}

// The control's rectangle in the dialog's client coordinates, in the direction in which it is empty with the
// size of its last layout. That size may be negative, so that a control that the dialog had no room for comes
// back as it was.
template <class Record>
CRect ControlRect(HWND dialog, const Record& record)
{
    CRect rect;
    ::GetWindowRect(record.hWnd, &rect);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
    if (rect.Width() == 0)
        rect.right = Sum(rect.left, record.cx);
    if (rect.Height() == 0)
        rect.bottom = Sum(rect.top, record.cy);
    return rect;
}

template <class Record>
void Place(HDWP batch, Record& record, const CRect& rect)
{
    record.cx = Difference(rect.right, rect.left);
    record.cy = Difference(rect.bottom, rect.top);
    ::DeferWindowPos(batch, record.hWnd, nullptr, rect.left, rect.top, record.cx, record.cy, SWP_NOZORDER);
}

void ReportException()
{
    AfxMessageBox(L"控件异常!");
}

} // namespace

// ---- VDlgResizerBase

void VDlgResizerBase::Init(CWnd* pDlg)
{
    if (!ISVALIDEWND(pDlg))
        return;
    m_hWnd = pDlg->m_hWnd;
    SaveClientSize();
}

void VDlgResizerBase::SaveClientSize()
{
    CRect client(0, 0, 0, 0);
    if (HasDialog())
        ::GetClientRect(m_hWnd, &client);
    m_szClient = client.Size();
}

bool VDlgResizerBase::ISVALIDEWND(const CWnd* pWnd)
{
    return pWnd != nullptr && ::IsWindow(pWnd->m_hWnd);
}

CWnd* VDlgResizerBase::FindControl(UINT nID) const
{
    return HasDialog() ? CWnd::FromHandle(::GetDlgItem(m_hWnd, static_cast<int>(nID))) : nullptr;
}

int VDlgResizerBase::SearchWnd(const CWnd* pCtrl) const
{
    if (pCtrl == nullptr || pCtrl->m_hWnd == nullptr)
        return kNotFound;
    for (INT_PTR index = 0; index < GetSize(); ++index) {
        if (GetAt(index) == pCtrl->m_hWnd)
            return static_cast<int>(index);
    }
    return kNotFound;
}

void VDlgResizerBase::ResizeAll(UINT nType, int cx, int cy)
{
    if (!HasDialog() || nType == SIZE_MINIMIZED)
        return;
    const int dx = Difference(cx, m_szClient.cx);
    const int dy = Difference(cy, m_szClient.cy);
    m_szClient = CSize(cx, cy);

    // A control that is moved may end the dialog and this object with it: from the end of the batch on,
    // only locals are used. A batch in which something went wrong is not ended, so that the controls stay.
    const HWND hDlg = m_hWnd;
    try {
        const auto count = static_cast<int>(GetSize());
        const HDWP hDwp = ::BeginDeferWindowPos(count);
        for (int index = 0; index < count; ++index) {
            if (::IsWindow(GetAt(index)))
                ResizeControl(index, hDwp, dx, dy);
        }
        ::EndDeferWindowPos(hDwp);
        ::InvalidateRect(hDlg, nullptr, TRUE);
    } catch (CException* e) {
        e->Delete();
        ReportException();
    } catch (...) {
        ReportException();
    }
}

void VDlgResizerBase::ResizeOne(int nIndex, int dx, int dy)
{
    const HWND hCtrl = GetAt(nIndex);
    if (!HasDialog() || !::IsWindow(hCtrl))
        return;
    const HDWP hDwp = ::BeginDeferWindowPos(1);
    ResizeControl(nIndex, hDwp, dx, dy);
    ::EndDeferWindowPos(hDwp);
    ::InvalidateRect(hCtrl, nullptr, TRUE);
}

// ---- VDlgResizer

void VDlgResizer::AddControl(UINT nID, UINT nFlags)
{
    AddControl(FindControl(nID), nFlags);
}

void VDlgResizer::AddControl(const CWnd* pCtrl, UINT nFlags)
{
    Add(pCtrl, nFlags, SRESIZERSCALE(0, 0, 0, 0));
}

void VDlgResizer::AddControl(UINT nID, SRESIZERSCALE scale)
{
    AddControl(FindControl(nID), scale);
}

void VDlgResizer::AddControl(const CWnd* pCtrl, SRESIZERSCALE scale)
{
    Add(pCtrl, MoveAll, scale);
}

void VDlgResizer::Add(const CWnd* pCtrl, UINT nFlags, const SRESIZERSCALE& scale)
{
    if (HasDialog() && ISVALIDEWND(pCtrl))
        m_arrRec.push_back({pCtrl->m_hWnd, nFlags, 0, 0, scale});
}

void VDlgResizer::SetControl(UINT nID, UINT nFlags)
{
    SetControl(FindControl(nID), nFlags);
}

void VDlgResizer::SetControl(const CWnd* pCtrl, UINT nFlags)
{
    const int index = SearchWnd(pCtrl);
    if (index != kNotFound)
        RecordAt(m_arrRec, index).nFlags = nFlags;
}

void VDlgResizer::Resize(UINT nID, int dx, int dy, UINT nFlags)
{
    Resize(FindControl(nID), dx, dy, nFlags);
}

void VDlgResizer::Resize(CWnd* pCtrl, int dx, int dy, UINT nFlags)
{
    const int index = SearchWnd(pCtrl);
    if (index == kNotFound)
        return;
    SetControl(pCtrl, nFlags);
    ResizeOne(index, dx, dy);
}

bool VDlgResizer::GetCtrlSize(const CWnd* pCtrl, CSize& size) const
{
    const int index = SearchWnd(pCtrl);
    if (index == kNotFound)
        return false;
    const RESIZEREC& rec = RecordAt(m_arrRec, index);
    size = CSize(rec.cx, rec.cy);
    return true;
}

HWND VDlgResizer::GetAt(INT_PTR nIndex) const
{
    return RecordAt(m_arrRec, nIndex).hWnd;
}

void VDlgResizer::ResizeControl(int nIndex, void* hDwp, int dx, int dy)
{
    RESIZEREC& rec = RecordAt(m_arrRec, nIndex);
    CRect rect = ControlRect(m_hWnd, rec);
    const auto follow = [&](UINT flag, LONG& edge, int distance) {
        if (rec.nFlags & flag)
            Shift(edge, distance);
    };
    follow(MoveLeft, rect.left, dx);
    follow(MoveRight, rect.right, dx);
    follow(MoveLeftHalf, rect.left, dx / 2);
    follow(MoveRightHalf, rect.right, dx / 2);
    follow(MoveTop, rect.top, dy);
    follow(MoveBottom, rect.bottom, dy);
    Place(static_cast<HDWP>(hDwp), rec, rect);
}

// ---- VDlgResizerEx

void VDlgResizerEx::AddControl(UINT nID, double fLeft, double fRight, double fTop, double fBottom)
{
    AddControl(FindControl(nID), fLeft, fRight, fTop, fBottom);
}

void VDlgResizerEx::AddControl(const CWnd* pCtrl, double fLeft, double fRight, double fTop, double fBottom)
{
    if (!HasDialog() || !ISVALIDEWND(pCtrl))
        return;
    m_arrRec.push_back({pCtrl->m_hWnd, static_cast<float>(fLeft), static_cast<float>(fRight),
                        static_cast<float>(fTop), static_cast<float>(fBottom)});
    m_arrError.push_back({pCtrl->m_hWnd});
}

void VDlgResizerEx::SetControl(UINT nID, float fLeft, float fRight, float fTop, float fBottom)
{
    SetControl(FindControl(nID), fLeft, fRight, fTop, fBottom);
}

void VDlgResizerEx::SetControl(const CWnd* pCtrl, float fLeft, float fRight, float fTop, float fBottom)
{
    const int index = SearchWnd(pCtrl);
    if (index == kNotFound)
        return;
    RESIZEREC& rec = RecordAt(m_arrRec, index);
    rec.fLeft = fLeft;
    rec.fRight = fRight;
    rec.fTop = fTop;
    rec.fBottom = fBottom;
}

void VDlgResizerEx::Resize(UINT nID, int dx, int dy, float fLeft, float fRight, float fTop, float fBottom)
{
    Resize(FindControl(nID), dx, dy, fLeft, fRight, fTop, fBottom);
}

void VDlgResizerEx::Resize(CWnd* pCtrl, int dx, int dy, float fLeft, float fRight, float fTop, float fBottom)
{
    const int index = SearchWnd(pCtrl);
    if (index == kNotFound)
        return;
    SetControl(pCtrl, fLeft, fRight, fTop, fBottom);
    ResizeOne(index, dx, dy);
}

HWND VDlgResizerEx::GetAt(INT_PTR nIndex) const
{
    return RecordAt(m_arrRec, nIndex).hWnd;
}

void VDlgResizerEx::ResizeControl(int nIndex, void* hDwp, int dx, int dy)
{
    RESIZEREC& rec = RecordAt(m_arrRec, nIndex);
    MEASUREERROR& error = RecordAt(m_arrError, nIndex);
    CRect rect = ControlRect(m_hWnd, rec);
    const auto follow = [](LONG& edge, int distance, float share, float& carry) {
        carry += static_cast<float>(distance) * share;
        ShiftByCarry(edge, carry);
    };
    follow(rect.left, dx, rec.fLeft, error.eLeft);
    follow(rect.right, dx, rec.fRight, error.eRight);
    follow(rect.top, dy, rec.fTop, error.eTop);
    follow(rect.bottom, dy, rec.fBottom, error.eBottom);
    Place(static_cast<HDWP>(hDwp), rec, rect);
}
