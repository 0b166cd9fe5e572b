#include "vgui/controls/progress_ctrl.h"

#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>
#include <cstdint>

namespace
{

constexpr COLORREF kBackground = RGB(255, 255, 255);
constexpr int kMargin = 1;   // between the control's edge and the bar, pixels
constexpr int kBlockGap = 2; // between two blocks
constexpr int kMarqueeBlocks = 5;
constexpr int kMarqueeStep = 4;       // pixels
constexpr UINT kMarqueeInterval = 30; // milliseconds
// Not one of the stock control's, whose ids are small.
constexpr UINT_PTR kMarqueeTimer = 0x5647;
constexpr int kLightEnd = 110; // what is added to a host's bar colour for its light end

struct BarColors {
    COLORREF from;
    COLORREF to;
};

BarColors GetBarColors(const CProgressCtrl& control)
{
    const COLORREF own = control.GetBarColor();
    if (!control.IsWindowEnabled())
        return {VGFadeColor(VGM.Common.clrGray, kLightEnd), VGM.Common.clrGray};
    if (own != CLR_DEFAULT)
        return {VGFadeColor(own, kLightEnd), own};
    return {VGM.Progress.clrFrom, VGM.Progress.clrTo};
}

// The part of the track from one place along it to another.
CRect SpanRect(const CRect& track, bool vertical, int from, int to)
{
    if (vertical)
        return {track.left, track.bottom - to, track.right, track.bottom - from};
    return {track.left + from, track.top, track.left + to, track.bottom};
}

int MarqueeLength()
{
    return kMarqueeBlocks * std::max(VGM.Progress.nStep, 1);
}

int TrackLength(const CWnd& control)
{
    CRect client;
    control.GetClientRect(client);
    const bool vertical = (control.GetStyle() & PBS_VERTICAL) != 0;
    return std::max((vertical ? client.Height() : client.Width()) - 2 * kMargin, 0);
}

} // namespace

IMPLEMENT_DYNAMIC(VProgressCtrl, CProgressCtrl)

BEGIN_MESSAGE_MAP(VProgressCtrl, CProgressCtrl)
    ON_WM_NCPAINT()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_ENABLE()
    ON_WM_TIMER()
    ON_MESSAGE(WM_PRINTCLIENT, &VProgressCtrl::OnPrintClient)
    ON_MESSAGE(PBM_SETMARQUEE, &VProgressCtrl::OnSetMarquee)
END_MESSAGE_MAP()

int VProgressCtrl::BarLength(int length, int lower, int upper, int pos)
{
    const int64_t range = int64_t{upper} - lower;
    if (range <= 0 || length <= 0)
        return 0;
    const int64_t done = std::clamp<int64_t>(int64_t{pos} - lower, 0, range);
    return static_cast<int>(length * done / range);
}

void VProgressCtrl::PreSubclassWindow()
{
    m_bMarquee = false; // the timer went with the object's former window
    CProgressCtrl::PreSubclassWindow();
}

// The edge that the stock control has is drawn in the shared colour.
void VProgressCtrl::OnNcPaint()
{
    CProgressCtrl::OnNcPaint();
    CRect window;
    CRect client;
    GetWindowRect(window);
    GetClientRect(client);
    if (window.Size() == client.Size())
        return;
    window.OffsetRect(-window.TopLeft());
    const COLORREF color = IsWindowEnabled() ? VGM.Common.clrFrame : VGM.Common.clrGray;
    CWindowDC dc(this);
    dc.Draw3dRect(window, color, color);
}

void VProgressCtrl::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC buffer(dc, client);
    Draw(buffer);
}

LRESULT VProgressCtrl::OnPrintClient(WPARAM wParam, LPARAM)
{
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc);
    return 0;
}

BOOL VProgressCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void VProgressCtrl::OnEnable(BOOL bEnable)
{
    CProgressCtrl::OnEnable(bEnable);
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
}

LRESULT VProgressCtrl::OnSetMarquee(WPARAM wParam, LPARAM lParam)
{
    m_bMarquee =
        wParam != 0 && (GetStyle() & PBS_MARQUEE) != 0 &&
        SetTimer(kMarqueeTimer, lParam > 0 ? static_cast<UINT>(lParam) : kMarqueeInterval, nullptr) != 0;
    if (!m_bMarquee)
        KillTimer(kMarqueeTimer);
    m_nMarqueeOffset = MarqueeLength();
    Invalidate();
    return TRUE;
}

void VProgressCtrl::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent != kMarqueeTimer) {
        CProgressCtrl::OnTimer(nIDEvent);
        return;
    }
    m_nMarqueeOffset = (m_nMarqueeOffset + kMarqueeStep) % (TrackLength(*this) + MarqueeLength());
    Invalidate();
}

// What of a track of this length is filled.
VProgressCtrl::Span VProgressCtrl::GetSpan(int length)
{
    if (m_bMarquee)
        return {std::max(m_nMarqueeOffset - MarqueeLength(), 0), std::min(m_nMarqueeOffset, length)};
    if ((GetStyle() & PBS_MARQUEE) != 0)
        return {0, 0};
    int lower = 0;
    int upper = 0;
    GetRange(lower, upper);
    return {0, BarLength(length, lower, upper, GetPos())};
}

void VProgressCtrl::Draw(CDC& dc)
{
    CRect client;
    GetClientRect(client);
    const COLORREF own = GetBkColor();
    dc.FillSolidRect(client, own == CLR_DEFAULT ? kBackground : own);
    DrawBar(dc, client);
}

void VProgressCtrl::DrawBar(CDC& dc, const CRect& client)
{
    CRect track = client;
    track.DeflateRect(kMargin, kMargin);
    const bool vertical = (GetStyle() & PBS_VERTICAL) != 0;
    const int length = TrackLength(*this);
    const Span span = GetSpan(length);
    const BarColors colors = GetBarColors(*this);
    const auto fill = [&](int from, int to) {
        VGGradientFillRect(&dc, SpanRect(track, vertical, from, to), colors.from, colors.to, vertical);
    };
    if ((GetStyle() & PBS_SMOOTH) != 0) {
        fill(span.from, span.to);
        return;
    }
    // Blocks stand still; a bar that ends inside of one shows the whole block. A marquee's are cut.
    const int step = std::max(VGM.Progress.nStep, kBlockGap + 1);
    for (int block = span.from / step * step; block < span.to; block += step) {
        const int end = std::min(block + step - kBlockGap, length);
        fill(m_bMarquee ? std::max(block, span.from) : block, m_bMarquee ? std::min(end, span.to) : end);
    }
}
