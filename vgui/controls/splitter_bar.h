// The bar between two panes with which the user divides the room among them.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// Phases of a drag, for CSplitterBar::DrawDraggingBar.
enum DRAGFLAG {
    DragStart = 0,
    DragEnd = 1,
    DragMove = 2,
};

// What a bar sends to its parent when the user has dropped it, after the bar and, unless out-drive mode is
// set, the panes were moved. wParam: the bar's control id. lParam: how far the bar moved, in pixels; low 16
// bits to the right, high 16 bits downwards, both signed.
inline constexpr UINT VGSplitterMovedVertical = 0x10F9;   // from a horizontal bar, which moves up and down
inline constexpr UINT VGSplitterMovedHorizontal = 0x10FA; // from a vertical bar, which moves left and right

// A thin child window between two sibling panes. While the left mouse button drags it, an inverted copy of
// the bar follows the mouse on the parent; when it is released, the bar and both panes take their new places
// and the parent is told. A drag that loses the mouse capture is given up: nothing moves.
//
// Coordinates are pixels. The panes are not owned; one that has been destroyed is left out.
class VGUI_API CSplitterBar : public CWnd
{
    DECLARE_DYNAMIC(CSplitterBar)

public:
    // color: the bar's centre line; 0 for a bar that paints nothing.
    explicit CSplitterBar(DWORD color = ::GetSysColor(COLOR_BTNSHADOW));
    ~CSplitterBar() override;

    // Creates the window. rect is in the parent's client coordinates; bHorizontal: the bar lies across and
    // moves up and down. FALSE when there is no parent or the window cannot be created.
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID, BOOL bHorizontal);

    // Sets the left (upper) and the right (lower) pane, both children of the bar's parent, fits the bar
    // between them and the panes to the bar. With a pane missing (null) nothing is moved now. Before the bar
    // has a window the panes are only remembered: call it again afterwards.
    void SetPanes(CWnd* pane1, CWnd* pane2);
    // The least sizes of the panes along the drag's direction; negative ones count as 0. Used from the next
    // drag on. Without a pane the parent's client area bounds the bar on that side.
    void SetPanesMiniSize(int min1, int min2);

    // TRUE: the bar may be dropped anywhere and leaves the panes alone; the parent lays them out when it is
    // told of the movement.
    void SetOutDriveMode(BOOL outDrive);
    // As set by SetOutDriveMode, FALSE at first.
    BOOL GetOutDriveMode() const;

    // Whether a point in screen coordinates lies on the bar. FALSE without a window.
    BOOL IsCursorOverSplitter(const CPoint& screenPoint) const;
    // Sizes the panes so that they meet the bar.
    void MovePanes();
    // Inverts the bar's picture on the parent, with its leading edge at a point in the bar's client
    // coordinates; DragMove takes away the picture of the call before.
    void DrawDraggingBar(CPoint clientPoint, DRAGFLAG phase);

protected:
    // Computes mostLow and mostHigh; they stay as they are without a window.
    void GetMostCoordForPanes();

    afx_msg void OnPaint();
    afx_msg LRESULT OnNcHitTest(CPoint point);
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    CRect barRect;             // screen coordinates; taken at creation and when a drag begins
    CRect lastDragRect;        // parent client coordinates
    CRect dragRect;            // parent client coordinates
    BOOL dragging = FALSE;     // the mouse drags the bar
    HWND pane1 = nullptr;      // left or upper
    HWND pane2 = nullptr;      // right or lower
    int minSize1 = 0;          // least size of pane1 along the drag, pixels
    int minSize2 = 0;          // the same of pane2
    int mostLow = 0;           // least place of the leading edge, parent client coordinates
    int mostHigh = 0;          // greatest place
    BOOL horizontal = FALSE;   // lies across, moves up and down
    BOOL outDriveMode = FALSE; // the parent lays out the panes
    COLORREF barColor;         // of the centre line, 0 for none

private:
    void InvertOnParent(const CRect& rect, const CRect* erase);
    [[nodiscard]] CRect GetDropRect(CPoint screenPoint);
    LPARAM MoveBar(const CRect& screenRect);
    void Drop(CPoint point);
};
