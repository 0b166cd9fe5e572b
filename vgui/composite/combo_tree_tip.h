// The tip that shows the whole of a tree label that the tree's right edge cuts off.
#pragma once

#include "vgui/composite/combo_subclass_wnd.h"

#include <afxcmn.h>

// The popup with the label's text. There is one for the process; it never takes the focus. Its window is made
// when a tree first needs it and stays; it is owned by the tree that it serves.
class VGUI_API CComboPopupText : public CWnd
{
public:
    // Alignment flag: the window's right edge stays when a text changes its width.
    static constexpr DWORD kGrowLeft = 1;

    CComboPopupText();
    CComboPopupText(const CComboPopupText&) = delete;
    CComboPopupText& operator=(const CComboPopupText&) = delete;

    // The one popup.
    static CComboPopupText& Instance();

    // Sees to it that the window exists, hidden, and belongs to this tree from now on. False when it cannot
    // be created.
    bool BelongTo(CWnd& tree);
    // Belongs to no tree any more, if it was this one: a tree that goes must not take the popup with it.
    void Leave(const CWnd& tree);
    // The window of the tree that the popup belongs to, null without a window.
    [[nodiscard]] HWND GetTree() const;

    // Shows the window where it is, after a delay in milliseconds. It goes by itself when the mouse is
    // neither on it nor on its tree.
    void Show(UINT delay);
    // Hides the window and gives up a delayed show.
    void Hide();
    // Whether the popup went because the mouse left, since it was last to be shown.
    [[nodiscard]] bool HasMouseLeft() const { return m_bMouseLeft != FALSE; }

protected:
    afx_msg void OnPaint();
    afx_msg LRESULT OnSetText(WPARAM wParam, LPARAM lParam);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    SIZE m_margins{4, 4};       // pixels
    CFont m_font;               // the system's for status bars and tips
    DWORD m_dwAlign = 0;        // alignment flags
    UINT_PTR m_nShowTimer = 0;  // ends the delay; 0 while it does not run
    UINT_PTR m_nLeaveTimer = 0; // looks where the mouse is; 0 while it does not run
    BOOL m_bMouseLeft = FALSE;  // see HasMouseLeft

private:
    void SetTree(HWND tree);
    void StopTimer(UINT_PTR& timer);
    void StopTimers();
    void Appear();
    [[nodiscard]] bool IsMouseAway() const;
};

// The hook on the tree that shows and hides the tip.
class VGUI_API ComboTreeTip : public CComboSubclassWnd
{
public:
    // Hooks a tree and remembers its control id. FALSE when it cannot be hooked.
    BOOL Watch(CTreeCtrl& tree);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // The mouse has moved to a point in the tree's client coordinates. Nothing without a hooked tree.
    virtual void OnHoverMove(CPoint point);
    // Whether a label, in the tree's client coordinates, ends before the tree's right edge.
    virtual BOOL IsLabelVisible(const RECT& label);
    // The item whose icon, check box or label is at a point in client coordinates, null when there is none or
    // no tree is hooked; then nothing is filled in. Otherwise rect, which may be null, is the whole label in
    // client coordinates, also what is cut off.
    virtual HTREEITEM HitTestLabel(CPoint point, RECT* rect, CString& text);

protected:
    UINT m_nTreeId = 0;          // the tree's control id
    HTREEITEM m_hLast = nullptr; // the item hovered last

private:
    [[nodiscard]] CTreeCtrl& Tree() const;
    [[nodiscard]] HTREEITEM ItemAt(CPoint point) const;
    void HideTip();
    void ForgetItem();
};
