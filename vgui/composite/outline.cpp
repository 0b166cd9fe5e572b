#include "vgui/composite/outline.h"

#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"

#include <iterator>
#include <utility>

namespace
{

constexpr int kRibSpacing = 5;
constexpr int kRibHeight = 3;
constexpr int kRibFade = -20;
constexpr int kItemFrameFade = -30;
constexpr int kTitleIndent = 12;
constexpr BYTE kHalf = 128; // opacity of title and items

void DrawItemText(CDC& dc, CRect rect, const CString& text)
{
    const VBkModeScope transparent(dc.m_hDC, TRANSPARENT);
    dc.DrawText(text, rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

} // namespace

IMPLEMENT_DYNAMIC(VOutlineEx, CStatic)

BEGIN_MESSAGE_MAP(VOutlineEx, CStatic)
    ON_WM_PAINT()
    ON_MESSAGE(WM_PRINTCLIENT, &VOutlineEx::OnPrintClient)
    ON_WM_ERASEBKGND()
    ON_WM_ENABLE()
    ON_MESSAGE(WM_SETTEXT, &VOutlineEx::OnSetText)
    ON_WM_NCHITTEST()
    ON_WM_LBUTTONDOWN()
    ON_WM_DESTROY()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
END_MESSAGE_MAP()

VOutlineEx::VOutlineEx() : m_clrFrame(VGM.Outline.clrFrame), m_clrBk(VGM.Outline.clrBk) {}

VOutlineEx::~VOutlineEx()
{
    DeleteBitmaps();
}

// ---- Items

void VOutlineEx::AddItem(const CString& text, int bitmapId)
{
    const LPCWSTR name = MAKEINTRESOURCEW(bitmapId);
    m_items.Add({text, ::LoadBitmapW(AfxFindResourceHandle(name, RT_BITMAP), name)});
}

void VOutlineEx::DeleteBitmaps()
{
    for (int i = 0; i < m_items.GetSize(); ++i)
        VOwnedBitmap(std::exchange(m_items[i].bitmap, nullptr));
}

void VOutlineEx::SetSelected(int index)
{
    if (IsIndexInRange(index))
        m_nSelected = index;
}

void VOutlineEx::SetSelected(const CString& text)
{
    for (int i = 0; i < m_items.GetSize(); ++i) {
        if (m_items[i].text == text) {
            m_nSelected = i;
            return;
        }
    }
}

BOOL VOutlineEx::IsIndexInRange(int index) const
{
    return index >= 0 && index < m_items.GetSize();
}

CRect VOutlineEx::GetItemRect(int index, const CRect& client) const
{
    const int top = client.top + ItemsTop() + index * m_nItemHeight;
    return {client.left + m_nLeftMargin, top, client.right - m_nRightMargin, top + m_nItemHeight - 1};
}

int VOutlineEx::PointToItem(const CPoint& point) const
{
    return (point.y - ItemsTop()) / m_nItemHeight;
}

// ---- Drawing

void VOutlineEx::OnPaint()
{
    CPaintDC target(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC dc(target, client);
    Draw(dc, client);
}

LRESULT VOutlineEx::OnPrintClient(WPARAM wParam, LPARAM /*lParam*/)
{
    CRect client;
    GetClientRect(client);
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc, client);
    return 0;
}

// All of the client area is painted.
BOOL VOutlineEx::OnEraseBkgnd(CDC* /*pDC*/)
{
    return TRUE;
}

// The standard control draws itself at once when it is enabled or disabled.
void VOutlineEx::OnEnable(BOOL bEnable)
{
    CStatic::OnEnable(bEnable);
    Invalidate(FALSE);
}

// Keeps the text without the standard control, which would draw it at once.
LRESULT VOutlineEx::OnSetText(WPARAM wParam, LPARAM lParam)
{
    return ::DefWindowProc(m_hWnd, WM_SETTEXT, wParam, lParam);
}

void VOutlineEx::Draw(CDC& dc, const CRect& client)
{
    DrawBackGround(&dc, client);
    const CWnd* parent = GetParent();
    const CFont* font = parent != nullptr ? parent->GetFont() : nullptr;
    const VSelectScope parentFont(dc.m_hDC, font != nullptr ? font->m_hObject : nullptr);
    DrawTitle(&dc, CRect(client.left, client.top, client.right, client.top + m_nTitleHeight));
    for (int i = 0; i < m_items.GetSize(); ++i)
        DrawOutlineItem(&dc, GetItemRect(i, client), m_items[i], StatusOf(i));
}

VOutlineEx::ItemStatus VOutlineEx::StatusOf(int index) const
{
    if (index == m_nSelected)
        return StatusSelected;
    return index == m_nHot ? StatusHot : StatusNormal;
}

// Unlike VGFillShadingRect's, the ribs go over the frame.
void VOutlineEx::DrawBackGround(CDC* pDC, const CRect& rect)
{
    pDC->FillSolidRect(rect, m_clrBk);
    pDC->Draw3dRect(rect, m_clrFrame, m_clrFrame);
    const VPen pen(pDC, VGFadeColor(m_clrBk, kRibFade));
    for (int y = kRibSpacing; y < rect.Height(); y += kRibSpacing) {
        POINT rib[] = {{rect.left + 1, y},
                       {rect.left + kRibHeight, y - kRibHeight},
                       {rect.right - kRibHeight, y - kRibHeight},
                       {rect.right - 1, y}};
        pDC->Polyline(rib, static_cast<int>(std::size(rib)));
    }
}

void VOutlineEx::DrawTitle(CDC* pDC, const CRect& rect)
{
    if (m_strTitle.IsEmpty())
        return;
    VGAlphaBlendColorToRect(pDC, rect, kHalf, VGM.Outline.clrTitleFrom, VGM.Outline.clrTitleTo);
    pDC->Draw3dRect(rect, m_clrFrame, m_clrFrame);

    LOGFONTW face{};
    ::GetObjectW(::GetCurrentObject(pDC->m_hDC, OBJ_FONT), sizeof(face), &face);
    face.lfWeight = FW_BOLD;
    const VOwnedFont bold(::CreateFontIndirectW(&face));
    const VSelectScope boldFont(pDC->m_hDC, bold.Get());
    const VBkModeScope transparent(pDC->m_hDC, TRANSPARENT);
    const VTextColorScope color(pDC->m_hDC, VGM.Outline.clrTitleText);
    CRect text = rect;
    text.left += kTitleIndent;
    pDC->DrawText(m_strTitle, text, DT_VCENTER | DT_SINGLELINE);
}

void VOutlineEx::DrawOutlineItem(CDC* pDC, const CRect& rect, const Item& item, ItemStatus status)
{
    const CRect face(CPoint(0, 0), rect.Size());
    CDC memory;
    CBitmap picture;
    if (status != StatusNormal && !rect.IsRectEmpty() && memory.CreateCompatibleDC(pDC) &&
        picture.CreateCompatibleBitmap(pDC, face.Width(), face.Height())) {
        const VSelectScope selected(memory, picture);
        const bool hot = status == StatusHot;
        CRect inside = face;
        inside.DeflateRect(1, 1);
        VGGradientFillRect(&memory, inside, hot ? m_clrBk : VGM.Outline.clrSelFrom,
                           hot ? m_clrFrame : VGM.Outline.clrSelTo, 0);
        memory.Draw3dRect(face, m_clrFrame, VGFadeColor(m_clrFrame, kItemFrameFade));
        VGAlphaBlend(pDC, rect, &memory, face, kHalf);
    }
    DrawItemText(*pDC, rect, item.text);
}

// ---- Mouse

// A static without SS_NOTIFY would leave the mouse to its parent.
LRESULT VOutlineEx::OnNcHitTest(CPoint /*point*/)
{
    const LRESULT hit = Default();
    return hit == HTTRANSPARENT ? HTCLIENT : hit;
}

void VOutlineEx::OnLButtonDown(UINT /*nFlags*/, CPoint point)
{
    const int item = PointToItem(point);
    if (!IsIndexInRange(item) || item == m_nSelected)
        return;
    if (const HWND parent = ::GetParent(m_hWnd))
        ::PostMessageW(parent, VGOutlineSelected, item, m_nSelected);
    m_nSelected = item;
    Invalidate(FALSE);
}

void VOutlineEx::OnMouseMove(UINT nFlags, CPoint point)
{
    CStatic::OnMouseMove(nFlags, point);
    if (!m_bTracking) {
        TRACKMOUSEEVENT leave{sizeof(leave), TME_LEAVE, m_hWnd, 0};
        m_bTracking = ::TrackMouseEvent(&leave);
    }
    const int item = PointToItem(point);
    if (item == m_nHot)
        return;
    if (!IsIndexInRange(item) || item == m_nSelected) {
        UnhighlightItem();
        return;
    }
    m_nHot = item;
    Invalidate(FALSE);
}

void VOutlineEx::OnMouseLeave()
{
    if (!m_bTracking)
        return;
    m_bTracking = 0;
    UnhighlightItem();
}

void VOutlineEx::UnhighlightItem()
{
    if (m_nHot < 0)
        return;
    CRect client;
    GetClientRect(client);
    const CRect rect = GetItemRect(m_nHot, client);
    m_nHot = -1;
    InvalidateRect(rect, FALSE);
}

void VOutlineEx::OnDestroy()
{
    DeleteBitmaps();
    m_nHot = -1;
    m_bTracking = 0;
    CStatic::OnDestroy();
}
