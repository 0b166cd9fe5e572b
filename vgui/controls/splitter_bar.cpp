#include "vgui/controls/splitter_bar.h"

#include "vgui/foundation/attached.h"

#include <algorithm>
#include <windowsx.h>

namespace
{

// The framework's cursor resources.
constexpr UINT kVerticalBarCursor = 30980;
constexpr UINT kHorizontalBarCursor = 30981;

constexpr int kLargestPane = 0xFFFFFF; // pixels; more than any window has, and safe to add to a coordinate

CRect RectInParent(HWND window, const CWnd& parent)
{
    CRect rect;
    ::GetWindowRect(window, rect);
    parent.ScreenToClient(rect);
    return rect;
}

// The bar's line: 2 pixels in the middle of an even width, 3 of an odd one.
CRect LineRect(CRect client)
{
    const int width = client.Width();
    const int height = client.Height();
    if (width <= height) {
        client.left += width / 2 - 1;
        client.right += 1 - width / 2;
    } else {
        client.top += height / 2 - 1;
        client.bottom += 1 - height / 2;
    }
    return client;
}

HCURSOR LoadBarCursor(BOOL horizontal)
{
    const LPCTSTR name = MAKEINTRESOURCE(horizontal ? kHorizontalBarCursor : kVerticalBarCursor);
    const HCURSOR cursor = ::LoadCursor(AfxFindResourceHandle(name, RT_GROUP_CURSOR), name);
    return cursor != nullptr ? cursor : ::LoadCursor(nullptr, horizontal ? IDC_SIZENS : IDC_SIZEWE);
}

void DeferMove(HDWP& batch, HWND window, const CRect& rect)
{
    if (batch != nullptr)
        batch = ::DeferWindowPos(batch, window, nullptr, rect.left, rect.top, std::max(rect.Width(), 0),
                                 std::max(rect.Height(), 0), SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

IMPLEMENT_DYNAMIC(CSplitterBar, CWnd)

BEGIN_MESSAGE_MAP(CSplitterBar, CWnd)
    ON_WM_PAINT()
    ON_WM_NCHITTEST()
    ON_WM_CREATE()
    ON_WM_SETCURSOR()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_CAPTURECHANGED()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CSplitterBar::CSplitterBar(DWORD color)
    : barRect(0, 0, 0, 0), lastDragRect(0, 0, 0, 0), dragRect(0, 0, 0, 0), barColor(color)
{
}

CSplitterBar::~CSplitterBar()
{
    // Now, while a drag's picture can still be taken off.
    DestroyWindow();
}

BOOL CSplitterBar::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID, BOOL bHorizontal)
{
    if (pParentWnd == nullptr || pParentWnd->m_hWnd == nullptr || m_hWnd != nullptr)
        return FALSE;
    horizontal = bHorizontal;
    return CWnd::Create(nullptr, _T(""), dwStyle, rect, pParentWnd, nID);
}

int CSplitterBar::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CWnd::OnCreate(lpCreateStruct) == -1)
        return -1;
    GetWindowRect(barRect);
    SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return 0;
}

void CSplitterBar::SetPanes(CWnd* newPane1, CWnd* newPane2)
{
    pane1 = newPane1 != nullptr ? newPane1->m_hWnd : nullptr;
    pane2 = newPane2 != nullptr ? newPane2->m_hWnd : nullptr;
    const HWND self = m_hWnd;
    if (self == nullptr)
        return;
    if (::IsWindow(pane1) && ::IsWindow(pane2)) {
        const CWnd& parent = *GetParent();
        const CRect first = RectInParent(pane1, parent);
        const CRect second = RectInParent(pane2, parent);
        if (horizontal)
            MoveWindow(CRect(std::min(first.left, second.left), first.bottom,
                             std::max(first.right, second.right), second.top));
        else // The first pane's top takes part in the choice of the bottom; this is intended.
            MoveWindow(CRect(first.right, std::min(first.top, second.top), second.left,
                             std::max(first.top, second.bottom)));
        if (VGIsAttached(this, self))
            MovePanes();
    }
    if (VGIsAttached(this, self))
        GetMostCoordForPanes();
}

void CSplitterBar::SetPanesMiniSize(int min1, int min2)
{
    minSize1 = std::max(min1, 0);
    minSize2 = std::max(min2, 0);
}

void CSplitterBar::SetOutDriveMode(BOOL outDrive)
{
    outDriveMode = outDrive;
}

BOOL CSplitterBar::GetOutDriveMode() const
{
    return outDriveMode;
}

BOOL CSplitterBar::IsCursorOverSplitter(const CPoint& screenPoint) const
{
    if (m_hWnd == nullptr)
        return FALSE;
    CRect rect;
    GetWindowRect(rect);
    return rect.PtInRect(screenPoint);
}

void CSplitterBar::GetMostCoordForPanes()
{
    if (m_hWnd == nullptr)
        return;
    const CWnd& parent = *GetParent();
    CRect room;
    parent.GetClientRect(room);
    if (::IsWindow(pane1))
        room.TopLeft() = RectInParent(pane1, parent).TopLeft();
    if (::IsWindow(pane2))
        room.BottomRight() = RectInParent(pane2, parent).BottomRight();
    CRect bar;
    GetWindowRect(bar);
    mostLow = (horizontal ? room.top : room.left) + std::min(minSize1, kLargestPane);
    mostHigh = (horizontal ? room.bottom - bar.Height() : room.right - bar.Width()) -
               std::min(minSize2, kLargestPane);
}

void CSplitterBar::MovePanes()
{
    if (m_hWnd == nullptr)
        return;
    const CWnd& parent = *GetParent();
    const CRect bar = RectInParent(m_hWnd, parent);
    HDWP batch = ::BeginDeferWindowPos(2);
    if (::IsWindow(pane1)) {
        CRect rect = RectInParent(pane1, parent);
        (horizontal ? rect.bottom : rect.right) = horizontal ? bar.top : bar.left;
        DeferMove(batch, pane1, rect);
    }
    if (::IsWindow(pane2)) {
        CRect rect = RectInParent(pane2, parent);
        (horizontal ? rect.top : rect.left) = horizontal ? bar.bottom : bar.right;
        DeferMove(batch, pane2, rect);
    }
    if (batch != nullptr)
        ::EndDeferWindowPos(batch);
}

void CSplitterBar::OnPaint()
{
    CPaintDC dc(this);
    if (barColor == 0)
        return;
    CRect client;
    GetClientRect(client);
    CRect line = LineRect(client);
    dc.Draw3dRect(line, ::GetSysColor(COLOR_BTNHIGHLIGHT), ::GetSysColor(COLOR_BTNFACE));
    line.DeflateRect(1, 1);
    dc.FillSolidRect(line, barColor);
}

LRESULT CSplitterBar::OnNcHitTest(CPoint)
{
    return HTCLIENT;
}

BOOL CSplitterBar::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message)
{
    const DWORD position = ::GetMessagePos();
    if (!IsCursorOverSplitter(CPoint(GET_X_LPARAM(position), GET_Y_LPARAM(position))))
        return CWnd::OnSetCursor(pWnd, nHitTest, message);
    ::SetCursor(LoadBarCursor(horizontal));
    return TRUE;
}

void CSplitterBar::DrawDraggingBar(CPoint clientPoint, DRAGFLAG phase)
{
    if (m_hWnd == nullptr)
        return;
    ClientToScreen(&clientPoint);
    dragRect = barRect;
    if (horizontal) {
        dragRect.top = clientPoint.y;
        dragRect.bottom = clientPoint.y + barRect.Height();
    } else {
        dragRect.left = clientPoint.x;
        dragRect.right = clientPoint.x + barRect.Width();
    }
    GetParent()->ScreenToClient(dragRect);
    InvertOnParent(dragRect, phase == DragMove ? &lastDragRect : nullptr);
    lastDragRect = dragRect;
}

// Both rectangles are in the parent's client coordinates. The context is the whole window's, whose origin is
// the left upper corner of the frame, also where the parent is mirrored.
void CSplitterBar::InvertOnParent(const CRect& rect, const CRect* erase)
{
    CWnd* const parent = GetParent();
    CRect frame;
    parent->GetWindowRect(frame);
    CRect shown = rect;
    CRect previous = erase != nullptr ? *erase : CRect(0, 0, 0, 0);
    for (CRect* const picture : {&shown, &previous}) {
        parent->ClientToScreen(*picture);
        picture->OffsetRect(-frame.TopLeft());
    }
    CWindowDC dc(parent);
    ::SetLayout(dc.m_hDC, 0);
    dc.DrawDragRect(shown, barRect.Size(), erase != nullptr ? &previous : nullptr, barRect.Size());
}

void CSplitterBar::OnLButtonDown(UINT nFlags, CPoint point)
{
    CPoint screen = point;
    ClientToScreen(&screen);
    if (dragging || !IsCursorOverSplitter(screen)) {
        CWnd::OnLButtonDown(nFlags, point);
        return;
    }
    SetCapture();
    dragging = TRUE;
    GetWindowRect(barRect);
    DrawDraggingBar(point, DragStart);
}

void CSplitterBar::OnMouseMove(UINT nFlags, CPoint point)
{
    if ((nFlags & MK_LBUTTON) != 0 && dragging)
        DrawDraggingBar(point, DragMove);
    else
        CWnd::OnMouseMove(nFlags, point);
}

void CSplitterBar::OnLButtonUp(UINT nFlags, CPoint point)
{
    const HWND self = m_hWnd;
    if (dragging)
        Drop(point);
    // The parent may have destroyed the bar when it was told.
    if (VGIsAttached(this, self))
        CWnd::OnLButtonUp(nFlags, point);
}

void CSplitterBar::Drop(CPoint point)
{
    // The button may go up where no move was reported: the picture goes there first, so that all of it is
    // taken off.
    DrawDraggingBar(point, DragMove);
    DrawDraggingBar(point, DragEnd);

    dragging = FALSE; // with the picture off, a capture lost from here on is nothing to tidy up

    ClientToScreen(&point);
    // The bar may be gone once it or a pane has been moved.
    const HWND self = m_hWnd;
    const HWND parent = ::GetParent(self);
    const UINT message = horizontal ? VGSplitterMovedVertical : VGSplitterMovedHorizontal;
    const auto id = static_cast<WPARAM>(GetDlgCtrlID());
    const LPARAM movement = MoveBar(GetDropRect(point));
    if (VGIsAttached(this, self)) {
        OnPaint();
        ::ReleaseCapture();
    }
    if (VGIsAttached(this, self) && !outDriveMode)
        MovePanes();
    ::SendMessage(parent, message, id, movement);
}

// The bar's new place in screen coordinates. Where the limits cross, the upper one holds. They are compared
// in the parent's coordinates, which run to the left in a mirrored one.
CRect CSplitterBar::GetDropRect(CPoint screenPoint)
{
    GetMostCoordForPanes();
    const auto limited = [this](int place) { return std::min(std::max(place, mostLow), mostHigh); };
    CRect rect = barRect;
    if (horizontal)
        rect.MoveToY(screenPoint.y);
    else
        rect.MoveToX(screenPoint.x);
    if (outDriveMode)
        return rect;
    GetParent()->ScreenToClient(rect);
    if (horizontal)
        rect.MoveToY(limited(rect.top));
    else
        rect.MoveToX(limited(rect.left));
    GetParent()->ClientToScreen(rect);
    return rect;
}

// Returns the movement as the notification's lParam.
LPARAM CSplitterBar::MoveBar(const CRect& screenRect)
{
    CRect current;
    GetWindowRect(current);
    const CSize movement = screenRect.TopLeft() - current.TopLeft();
    CRect rect = screenRect;
    GetParent()->ScreenToClient(rect);
    MoveWindow(rect);
    return static_cast<int>((movement.cx & 0xFFFF) | (movement.cy << 16));
}

void CSplitterBar::OnCaptureChanged(CWnd* pWnd)
{
    if (dragging && pWnd != this) {
        dragging = FALSE;
        InvertOnParent(lastDragRect, nullptr);
    }
    CWnd::OnCaptureChanged(pWnd);
}

void CSplitterBar::OnDestroy()
{
    if (dragging)
        ::ReleaseCapture();
    CWnd::OnDestroy();
}
