// The gallery's stand-in for a drawing editor: an area in which points are picked.
#pragma once

#include <afxwin.h>
#include <functional>
#include <optional>
#include <vector>

// A child window with a grid and the points picked in it.
class PointCanvas : public CWnd
{
    DECLARE_DYNAMIC(PointCanvas)

public:
    // Receives the point in client coordinates, nothing when picking was cancelled.
    using PickDone = std::function<void(std::optional<CPoint>)>;

    // Creates the window in place of a control of the parent, which is destroyed; it takes over the id.
    // False when it cannot be created.
    bool CreateInPlaceOf(CWnd& parent, UINT nID);

    // Asks the user for a point: calls done after the next click. A pick that was still open is cancelled.
    void BeginPick(PickDone done);
    [[nodiscard]] bool IsPicking() const { return static_cast<bool>(m_done); }
    // Ends an open pick without a point.
    void CancelPick();

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    void EndPick(std::optional<CPoint> point);
    void Draw(CDC& dc, const CRect& client);
    void DrawPoint(CDC& dc, const CRect& client, CPoint point) const;

    PickDone m_done;
    std::vector<CPoint> m_points; // client coordinates, the newest last
};
