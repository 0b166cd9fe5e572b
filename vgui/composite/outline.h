// A strip of items to navigate by.
#pragma once

#include "vgui/export.h"

#include <afxtempl.h>
#include <afxwin.h>

// What VOutlineEx posts to its parent when a click has selected another item. wParam: the new index; lParam:
// the one before, -1 for none.
inline constexpr UINT VGOutlineSelected = WM_USER + 525;

// A static control that shows a title, when there is one, above a list of text items. One item is selected,
// the one under the mouse is highlighted. Works on statics with and without SS_NOTIFY. Items count from 0;
// sizes are pixels.
class VGUI_API VOutlineEx : public CStatic
{
    DECLARE_DYNAMIC(VOutlineEx)

public:
    // One item.
    struct Item {
        CString text;             // what is shown
        HBITMAP bitmap = nullptr; // the control's; null when there is no such resource
    };
    // How an item is shown.
    enum ItemStatus {
        StatusNormal = 0,
        StatusHot = 1,
        StatusSelected = 2,
    };

    VOutlineEx();
    ~VOutlineEx() override;

    // Appends an item; bitmapId is one of the host's bitmap resources. The bitmaps live until the window is
    // destroyed; the drawing here shows the text only. No repaint.
    void AddItem(const CString& text, int bitmapId);

    // An empty title has no band. No repaint.
    void SetTitle(const CString& title) { m_strTitle = title; }
    // As set by SetTitle.
    [[nodiscard]] CString GetTitle() const { return m_strTitle; }

    // Selects the item, or the first one with exactly this text; nothing when there is none. The parent is
    // not told, and there is no repaint.
    void SetSelected(int index);
    void SetSelected(const CString& text);
    // -1 for none.
    [[nodiscard]] int GetSelected() const { return m_nSelected; }

    // The steps of drawing, for derived classes. Rectangles are in the control's client coordinates, as is
    // the context; its font is the parent's.

    // Fills the rectangle and draws frame and ribs.
    virtual void DrawBackGround(CDC* pDC, const CRect& rect);
    // Draws the title's band; nothing without a title.
    virtual void DrawTitle(CDC* pDC, const CRect& rect);
    // Draws one item.
    virtual void DrawOutlineItem(CDC* pDC, const CRect& rect, const Item& item, ItemStatus status);

protected:
    // Where an item lies in a client area, whether there is such an item or not.
    [[nodiscard]] CRect GetItemRect(int index, const CRect& client) const;
    // The item at the height of a client point; no valid index above and below the items. What lies less than
    // an item's height above the first one counts as that; this is intended.
    [[nodiscard]] int PointToItem(const CPoint& point) const;
    // Whether there is an item with this index.
    [[nodiscard]] BOOL IsIndexInRange(int index) const;
    // Ends the highlight of the item under the mouse and repaints it.
    void UnhighlightItem();

    afx_msg void OnPaint();
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg LRESULT OnSetText(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnNcHitTest(CPoint point);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    CArray<Item> m_items;    // in the order of AddItem
    CString m_strTitle;      // empty for no band
    int m_nLeftMargin = 2;   // left of the items, pixels
    int m_nRightMargin = 2;  // right of the items, pixels
    int m_nTopMargin = 12;   // above the first item, below the title's band, pixels
    int m_nTitleHeight = 20; // of the band, pixels
    int m_nItemHeight = 31;  // of an item, pixels
    COLORREF m_clrFrame;     // of the frame round the control
    COLORREF m_clrBk;        // background
    int m_nSelected = -1;    // the selected item, -1 for none
    int m_nHot = -1;         // the item under the mouse, -1 for none
    int m_bTracking = 0;     // WM_MOUSELEAVE has been asked for

private:
    void Draw(CDC& dc, const CRect& client);
    [[nodiscard]] ItemStatus StatusOf(int index) const;
    [[nodiscard]] int ItemsTop() const { return m_nTopMargin + (m_strTitle.IsEmpty() ? 0 : m_nTitleHeight); }
    void DeleteBitmaps();
};
