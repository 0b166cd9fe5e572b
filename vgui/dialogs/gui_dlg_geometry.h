// Where the parts of a skinned dialog's non-client area lie. Plain arithmetic on rectangles: no window, no
// device context. All lengths are pixels.
#pragma once

#include <afxwin.h>
#include <algorithm>

namespace gui_dlg
{

struct NcMetrics {
    int frame;   // width of the painted frame
    int caption; // height of the painted caption
};

// Which caption buttons stand beside the close button, which is always there.
struct CapBtns {
    bool maximize;
    bool minimize;
    bool help;
};

// Which dimensions of a window the user may change, and how far down.
struct SizingLimits {
    bool allowWidth;
    bool allowHeight;
    UINT minWidth;  // 0: no minimum
    UINT minHeight; // 0: no minimum
};

// Below this width the close button takes this size, so that its cross stays legible.
inline constexpr int kMinCapBtnSize = 20;

// The client area inside a window rectangle, in the same coordinates; empty, never inside out, when the
// window is smaller than its frame.
inline CRect ClientRect(const CRect& window, const NcMetrics& nc)
{
    CRect client(window.left + nc.frame, window.top + nc.caption + nc.frame, window.right - nc.frame,
                 window.bottom - nc.frame);
    client.right = std::max(client.left, client.right);
    client.bottom = std::max(client.top, client.bottom);
    return client;
}

// The size of the window region that fits a client area of this size.
inline CSize RegionSize(CSize client, const NcMetrics& nc)
{
    return {client.cx + 2 * nc.frame, client.cy + nc.caption + 2 * nc.frame};
}

// The caption, in window coordinates.
inline CRect CaptionRect(const CRect& window, const NcMetrics& nc)
{
    return {nc.frame, nc.frame, window.Width() - nc.frame, nc.frame + nc.caption - 1};
}

// The close button, in the coordinates of the window rectangle.
inline CRect CloseBtnRect(const CRect& window, const NcMetrics& nc)
{
    CRect button;
    button.right = window.right - 2 * nc.frame;
    button.left = button.right - nc.caption + 3;
    button.top = window.top + nc.frame + 1;
    button.bottom = button.top + nc.caption - 3;
    if (button.Width() < kMinCapBtnSize) {
        const int middle = (button.top + button.bottom) / 2;
        button.left = button.right - kMinCapBtnSize;
        button.top = middle - kMinCapBtnSize / 2;
        button.bottom = middle + kMinCapBtnSize / 2;
    }
    return button;
}

// Calls visit(hit-test code, rectangle) for each present button, from the close button to the left, in the
// coordinates of the window rectangle. A missing button leaves no gap.
template <class Visit>
void ForEachCapBtn(const CRect& window, const NcMetrics& nc, const CapBtns& present, Visit visit)
{
    CRect button = CloseBtnRect(window, nc);
    const int step = button.Width();
    const auto place = [&](LRESULT hit) {
        visit(hit, static_cast<const CRect&>(button));
        button.OffsetRect(-step, 0);
    };
    place(HTCLOSE);
    if (present.maximize)
        place(HTMAXBUTTON);
    if (present.minimize)
        place(HTMINBUTTON);
    if (present.help)
        place(HTHELP);
}

// The button at a point in the coordinates of the window rectangle, HTERROR when there is none.
inline LRESULT CapBtnAt(CPoint point, const CRect& window, const NcMetrics& nc, const CapBtns& present)
{
    LRESULT found = HTERROR;
    ForEachCapBtn(window, nc, present, [&](LRESULT hit, const CRect& button) {
        if (found == HTERROR && button.PtInRect(point))
            found = hit;
    });
    return found;
}

// Whether the window can be dragged at a point in client coordinates. The drag area is the caption's
// rectangle, shifted by one frame to the right and one pixel up.
inline bool IsDragPoint(CPoint client, const CRect& window, const NcMetrics& nc)
{
    return CaptionRect(window, nc).PtInRect({client.x, client.y + nc.caption + nc.frame + 1}) != FALSE;
}

// Holds a rectangle that the user drags to the limits. A minimum is anchored at the current top left
// corner whichever edge is dragged.
inline void LimitSizing(RECT& dragged, const CRect& current, const SizingLimits& limits)
{
    // Far beyond any screen, and still safe to add to a coordinate.
    constexpr UINT kMaxMinimum = 0x3FFFFFFF;
    const auto hold = [kMaxMinimum](bool allow, UINT minimum, LONG currentLow, LONG currentHigh, LONG& low,
                                    LONG& high) {
        const LONG least = static_cast<LONG>(std::min(minimum, kMaxMinimum));
        if (!allow) {
            low = currentLow;
            high = currentHigh;
        } else if (least != 0 && LONGLONG{high} - low < least) {
            low = currentLow;
            high = low + least;
        }
    };
    hold(limits.allowHeight, limits.minHeight, current.top, current.bottom, dragged.top, dragged.bottom);
    hold(limits.allowWidth, limits.minWidth, current.left, current.right, dragged.left, dragged.right);
}

} // namespace gui_dlg
