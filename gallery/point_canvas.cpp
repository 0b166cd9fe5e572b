#include "gallery/point_canvas.h"

#include <vgui/vgui.h>

#include <utility>

namespace
{

constexpr int kGridStep = 20; // pixels
constexpr int kCrossArm = 6;
constexpr int kLabelGap = 4;
constexpr int kHintHeight = 26;
constexpr int kHintOpacity = 200;
constexpr std::size_t kMaxPoints = 50;
constexpr COLORREF kGrid = RGB(225, 232, 242);
constexpr COLORREF kPoint = RGB(200, 30, 30);
constexpr COLORREF kHint = RGB(255, 245, 200);
constexpr COLORREF kText = RGB(40, 40, 40);

} // namespace

IMPLEMENT_DYNAMIC(PointCanvas, CWnd)

BEGIN_MESSAGE_MAP(PointCanvas, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_SETCURSOR()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

bool PointCanvas::CreateInPlaceOf(CWnd& parent, UINT nID)
{
    CWnd* const place = parent.GetDlgItem(nID);
    if (place == nullptr)
        return false;
    CRect rect;
    place->GetWindowRect(rect);
    parent.ScreenToClient(rect);
    place->DestroyWindow();
    const LPCTSTR windowClass = AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW);
    return Create(windowClass, L"", WS_CHILD | WS_VISIBLE, rect, &parent, nID) != FALSE;
}

void PointCanvas::BeginPick(PickDone done)
{
    CancelPick();
    m_done = std::move(done);
    Invalidate();
}

void PointCanvas::CancelPick()
{
    EndPick(std::nullopt);
}

void PointCanvas::EndPick(std::optional<CPoint> point)
{
    if (!m_done)
        return;
    const PickDone done = std::exchange(m_done, nullptr);
    if (m_hWnd != nullptr)
        Invalidate();
    done(point);
}

void PointCanvas::OnLButtonDown(UINT nFlags, CPoint point)
{
    CWnd::OnLButtonDown(nFlags, point);
    if (!IsPicking())
        return;
    m_points.push_back(point);
    if (m_points.size() > kMaxPoints)
        m_points.erase(m_points.begin());
    EndPick(point);
}

BOOL PointCanvas::OnSetCursor(CWnd*, UINT, UINT)
{
    ::SetCursor(::LoadCursor(nullptr, IsPicking() ? IDC_CROSS : IDC_ARROW));
    return TRUE;
}

void PointCanvas::OnDestroy()
{
    CancelPick();
    CWnd::OnDestroy();
}

BOOL PointCanvas::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void PointCanvas::OnPaint()
{
    CPaintDC target(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC dc(target, client);
    if (CFont* const font = GetParent()->GetFont())
        dc.SelectObject(font);
    Draw(dc, client);
}

void PointCanvas::Draw(CDC& dc, const CRect& client)
{
    dc.FillSolidRect(client, VGM.Common.clrWhite);
    {
        const VPen grid(&dc, kGrid);
        for (int x = kGridStep; x < client.right; x += kGridStep) {
            dc.MoveTo(x, 0);
            dc.LineTo(x, client.bottom);
        }
        for (int y = kGridStep; y < client.bottom; y += kGridStep) {
            dc.MoveTo(0, y);
            dc.LineTo(client.right, y);
        }
    }
    for (const CPoint& point : m_points)
        DrawPoint(dc, client, point);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(kText);
    if (IsPicking()) {
        CRect hint(0, 0, client.right, kHintHeight);
        VGAlphaBlendColorToRect(&dc, hint, kHintOpacity, kHint, VGNoColor);
        dc.DrawText(L"请单击一点，Esc 取消。 Click a point, Esc cancels.", -1, hint,
                    DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    }
    VGDraw3dCtrlFrame(&dc, client, VGM.Common.clrFrame, VGM.Common.nCtrlFrameFade, 0);
}

void PointCanvas::DrawPoint(CDC& dc, const CRect& client, CPoint point) const
{
    const VPen cross(&dc, kPoint);
    dc.MoveTo(point.x - kCrossArm, point.y);
    dc.LineTo(point.x + kCrossArm + 1, point.y);
    dc.MoveTo(point.x, point.y - kCrossArm);
    dc.LineTo(point.x, point.y + kCrossArm + 1);

    CString label;
    label.Format(L"%d, %d", point.x, point.y);
    CRect place(CPoint(0, 0), dc.GetTextExtent(label));
    place.OffsetRect(point.x + kLabelGap, point.y + kLabelGap);
    // Points at the right and bottom edge have their label on the inner side.
    if (place.right > client.right)
        place.OffsetRect(-place.Width() - 2 * kLabelGap, 0);
    if (place.bottom > client.bottom)
        place.OffsetRect(0, -place.Height() - 2 * kLabelGap);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(kPoint);
    dc.DrawText(label, place, DT_SINGLELINE | DT_NOCLIP);
}
