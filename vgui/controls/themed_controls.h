// The standard controls in the shared look: edit field, list box, list control, combo box and group box.
//
// Each is attached to a dialog's control by subclassing, or created; a skinned dialog replaces its plain edit
// fields, list boxes, combo boxes and group boxes by itself. What is not named here is the stock control's:
// keyboard, mnemonics, notifications and what it tells assistive software.
#pragma once

#include "vgui/export.h"

#include <afxcmn.h>
#include <afxwin.h>

// An edit field whose frame, when it has one (WS_EX_CLIENTEDGE), is drawn in VGM.Edit.clrFrame, grey while
// it is disabled.
class VGUI_API VEdit : public CEdit
{
    DECLARE_DYNAMIC(VEdit)

public:
    VEdit() = default;

protected:
    afx_msg void OnNcPaint();
    afx_msg void OnEnable(BOOL bEnable);
    DECLARE_MESSAGE_MAP()
};

// A list box with a frame in VGM.List.clrFrame, grey while it is disabled, and with tips that show the text
// of the item under the mouse.
//
// A null text counts as the empty one. Indices count from 0.
class VGUI_API VListBox : public CListBox
{
    DECLARE_DYNAMIC(VListBox)

public:
    VListBox() = default;

    // Adds an item with its item data. Returns its index, or LB_ERR or LB_ERRSPACE.
    int AddItem(const wchar_t* text, long data);
    // The same at an index, -1 for the end of the list; a sorted list is not sorted anew.
    int InsertItem(int index, const wchar_t* text, ULONG_PTR data);
    // The item's text, empty when there is no such item.
    void GetItem(int index, CString& text) const;
    // The first item with this item data, -1 when there is none.
    int FindItemByItemData(long data);
    // Replaces an item's text. Its item data, its selection and its place in a scrolled list stay. Nothing
    // happens when there is no such item or no memory for the text.
    void SetText(int index, const wchar_t* text);
    // Selects the first item after start whose whole text is the given one (case does not matter), going on
    // from the top; a start of -1, or outside the list, begins at the top. Returns its index, -1 when none
    // has the text.
    int SelectStringExact(int start, const wchar_t* text);

    // Shows tips with the dialog's tooltip control, which must exist; does nothing unless the parent is a
    // VGuiDlg. Always returns 1.
    int EnableTips();

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void PreSubclassWindow() override;
    // The item at a point in client coordinates, -1 when there is none.
    int ItemAt(CPoint point) const;

    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnDestroy();
    afx_msg void OnNcPaint();
    afx_msg void OnEnable(BOOL bEnable);
    // For the messages that add and remove items.
    afx_msg LRESULT OnItemsChange(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    CToolTipCtrl* m_pToolTip = nullptr; // the dialog's
    int m_nTipItem = -1;                // whose text the tip shows

private:
    [[nodiscard]] bool HasTips() const;
    void ForgetTip();
    void RelayToTip(MSG& message);
    int AddWithData(int index, DWORD_PTR data);
};

// A list control with a frame in VGM.List.clrFrame. A disabled one keeps that frame; this is intended.
class VGUI_API VListCtrl : public CListCtrl
{
    DECLARE_DYNAMIC(VListCtrl)

public:
    VListCtrl() = default;

protected:
    afx_msg void OnNcPaint();
    DECLARE_MESSAGE_MAP()
};

// A combo box that draws its frame and drop-down button, remembers its items as a history text, and has a
// tip. A simple combo box (CBS_SIMPLE), which has no button, is drawn as the stock one.
//
// A null text counts as the empty one. Indices count from 0.
class VGUI_API VComboBox : public CComboBox
{
    DECLARE_DYNAMIC(VComboBox)

public:
    VComboBox() = default;

    // Returns the new item's index, or CB_ERR or CB_ERRSPACE.
    int AddString(const wchar_t* text);
    // Selects the first item after start whose whole text is the given one (case does not matter), going on
    // from the top; a start of -1, or outside the list, begins at the top. Returns its index, -1 when none
    // has the text.
    int SelectStringExact(int start, const wchar_t* text);
    // Selects the item with this text, which is added when it is missing. An empty text that no item has
    // selects the first item if selectFirst says so, and nothing otherwise. Returns the index of what was
    // selected, -1 for nothing.
    int SetWindowTextEx(const wchar_t* text, bool selectFirst);

    // Fills the list from what SaveHistory returned and selects the item that begins with the saved text,
    // looking at the first item last. False, with nothing changed, when there is no "|" in the history.
    bool LoadHistory(const CString& history);
    // The current text, "|", and the items with ";" between them. Items that contain ";", and empty ones, do
    // not survive being loaded again; nor does a text that contains "|".
    CString SaveHistory() const;

    // Makes the control's own tooltip, deactivated, unless it is there already. Needs a window.
    void InitToolTip();
    // Sets the tip's text and activates or deactivates the tip. On a VGuiDlg the text is handed to the
    // dialog's tooltip, which takes care of showing it. A string resource that does not exist changes
    // nothing. Needs a window.
    void SetTooltipText(const wchar_t* text, int activate);
    void SetTooltipText(int stringId, int activate);
    // Activates or deactivates the control's own tooltip, if it has one.
    void ActivateTooltip(int activate);

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void PreSubclassWindow() override;
    // Paints the frame and the button over a client area that the stock control has painted.
    void DrawFace(CDC& dc);

    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    CToolTipCtrl m_toolTip;     // the control's own, see InitToolTip
    BOOL m_bHover = FALSE;      // the mouse is on the button
    CRect m_rcFace{0, 0, 0, 0}; // the button as it was last painted, client coordinates
};

// A group box in one of two looks: a thin frame that is interrupted by the caption, or a frame with a band
// for the caption along the top. Captions too long for the box end in an ellipsis.
//
// Only the frame and the caption are painted: the parent shows through, and controls on the box are never
// painted over. The caption is in VGM.Group.clrTitleText, or in the colour that the dialog has for the
// control, and grey while the box is disabled.
class VGUI_API VGroup : public CButton
{
    DECLARE_DYNAMIC(VGroup)

public:
    VGroup() = default;

    // The height of the band in pixels, at first 20; one below 1 leaves no band. Returns the former height.
    int SetTitleHeight(int height);
    // Whether the box has the band. Returns the former setting.
    int SetUseTitle(int useTitle);

protected:
    // Draws the look without a band, for the whole client area. The font is selected, and the controls on the
    // box are clipped out.
    virtual void DrawNormalStyle(CDC* pDC);
    // The same for the look with a band.
    virtual void DrawTitleStyle(CDC* pDC);

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    void PreSubclassWindow() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    int m_nTitleHeight = 20; // of the band, pixels
    int m_bUseTitle = 0;     // the box has the band

private:
    void Draw(CDC& dc);
    void DrawCaption(CDC& dc, const CString& caption, CRect rect, COLORREF background);
    [[nodiscard]] COLORREF GetCaptionColor() const;
    void ExcludeControls(CDC& dc) const;
    void Repaint();
};
