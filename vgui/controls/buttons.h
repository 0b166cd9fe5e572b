// The library's push buttons, check boxes, radio buttons and links.
#pragma once

#include "vgui/controls/image_button.h"

#include <memory>

// A push button with a rounded frame and a gradient, bluer while it has the focus or the mouse over it.
class VGUI_API VButton : public VButtonST
{
    DECLARE_DYNAMIC(VButton)

public:
    VButton();

protected:
    // The frame, its hot colours while hovered.
    DWORD OnDrawBorder(CDC* pDC, const RECT* pRect) override;
    // The frame as well: it belongs to the button in every state.
    DWORD OnDrawBackground(CDC* pDC, const RECT* pRect) override;
};

// A button that is nothing but its picture and caption until the mouse is over it.
class VGUI_API VFlatButton : public VButtonST
{
    DECLARE_DYNAMIC(VFlatButton)

public:
    VFlatButton() = default;

protected:
    DWORD OnDrawBorder(CDC* pDC, const RECT* pRect) override;
    DWORD OnDrawBackground(CDC* pDC, const RECT* pRect) override;
};

// A check box. Every click toggles it; GetCheck and SetCheck are the toggle button's, BM_GETCHECK and
// BM_SETCHECK agree with them. There is no third state: any state but 0 checks.
class VGUI_API VCheckBox : public VButtonST
{
    DECLARE_DYNAMIC(VCheckBox)

public:
    VCheckBox() = default;

    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void PreSubclassWindow() override;

    // The check mark inside box.
    void DrawTick(CDC* pDC, const CRect& box, COLORREF clr);
    // The ring of the hot look: two pixels wide, with rounded corners.
    void DrawOrange(CDC* pDC, const CRect& rect);

    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    // A check box, not a push button: Enter stays the default button's.
    afx_msg UINT OnGetDlgCode();
    DECLARE_MESSAGE_MAP()

    BOOL hot = FALSE; // the mouse is over the control
};

// A radio button. Its group is what the dialog manager takes for it: the siblings from one with WS_GROUP up
// to the next. Standard radio buttons may stand in the same group.
class VGUI_API VRadioBtn : public VButtonST
{
    DECLARE_DYNAMIC(VRadioBtn)

public:
    VRadioBtn();
    ~VRadioBtn() override;

    // Checks or unchecks the button. Checking one that was not checked unchecks the others of the group, but
    // only with bRepaint.
    DWORD SetCheck(int nCheck, BOOL bRepaint = TRUE) override;
    // 1 when the button is checked, 0 otherwise.
    int GetCheck() const { return radioChecked; }

    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void PreSubclassWindow() override;

    // Unchecks all other radio buttons of the group, library and standard ones.
    void UnCheckOthers();

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg BOOL OnClicked();
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    // DLGC_RADIOBUTTON: the dialog manager's arrow keys and code for standard groups find the button.
    afx_msg UINT OnGetDlgCode();
    // Checks the button when an arrow key has brought the focus from another one of the group.
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg LRESULT OnGetCheckMessage(WPARAM wParam, LPARAM lParam);
    // Like a standard radio button's: the others of the group stay.
    afx_msg LRESULT OnSetCheckMessage(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    COLORREF bkColor;          // read by no drawing
    BOOL radioChecked = FALSE; // the button is checked
    BOOL hot = FALSE;          // the mouse is over the control

private:
    class GroupWatch;

    void WatchGroup();

    std::unique_ptr<GroupWatch> m_groupWatch;
};

// A button that knows whether the mouse is over it; derived classes draw it.
class VGUI_API VHotTrackBtn : public CButton
{
    DECLARE_DYNAMIC(VHotTrackBtn)

public:
    VHotTrackBtn() = default;
    VHotTrackBtn(const VHotTrackBtn&) = delete;
    VHotTrackBtn& operator=(const VHotTrackBtn&) = delete;

protected:
    void PreSubclassWindow() override;

    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    DECLARE_MESSAGE_MAP()

    BOOL hot = FALSE; // the mouse is over the control
};

// A text that opens a web or e-mail address when it is clicked. The parent gets no BN_CLICKED.
class VGUI_API VUrlEmailBtn : public VHotTrackBtn
{
    DECLARE_DYNAMIC(VUrlEmailBtn)

public:
    VUrlEmailBtn() = default;

    // 0: the target is a web address, "http:\\" goes before it; 1: an e-mail address, "mailto:" goes before
    // it; others: it is opened as it is.
    void SetType(int nType);
    // The target; empty for the caption.
    void SetLink(const CString& strLink);

    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void PreSubclassWindow() override;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

    afx_msg BOOL OnClicked();
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnNcDestroy();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg LRESULT OnSetFontMessage(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    CFont underlineFont; // the control's font, underlined
    int type = 0;        // see SetType
    CString link;        // see SetLink

private:
    void CreateUnderlineFont(HFONT hFont);
};
