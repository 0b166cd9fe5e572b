// A tool bar for dialogs in the shared look.
#pragma once

#include "vgui/export.h"

#include <afxcmn.h>
#include <map>

// A row of flat buttons on a dialog that draws itself: shaded under the mouse, sunk while pressed, framed
// while checked, grey while disabled; with separators, drop-down arrows and tips. The dialog gets the
// buttons' commands (WM_COMMAND) and drop-downs (TBN_DROPDOWN).
//
// Images come from the image lists of CToolBarCtrl (SetImageList, SetHotImageList, SetDisabledImageList),
// which stay the caller's, or from AddBitmap. A disabled button without an image of its own is shown in grey.
class VGUI_API VToolBar : public CToolBarCtrl
{
    DECLARE_DYNAMIC(VToolBar)

public:
    VToolBar() = default;

    // Creates the bar on a dialog. rect is in the dialog's client coordinates. dwStyle: TBSTYLE_ and WS_
    // styles to be added, such as TBSTYLE_LIST for texts beside the images or TBSTYLE_WRAPABLE for several
    // rows. FALSE without a dialog window, or when the bar exists already or cannot be created.
    BOOL DlgCreate(CWnd* pDlg, const CRect& rect, UINT nID, DWORD dwStyle = 0);
    // The same in the place of a control of the dialog, whose id and place in the tab order it takes over;
    // that control's window is destroyed. FALSE, with the control left alone, when there is none.
    BOOL DlgCreate(CWnd* pDlg, UINT nPlaceID, DWORD dwStyle = 0);

    // Moves the bar, in client coordinates of its parent, and lays out its buttons for the new width.
    void Reposition(const CRect& rect);
    // Lays out the buttons for the present width, as after a change of images or texts.
    void Reposition();

    // Sets the button at an index, or adds one when index is the number of buttons. A replaced button's state
    // (checked, disabled and so on) stays. fsStyle: BTNS_ values. For BTNS_SEP nImage is the width in pixels,
    // 0 for the usual one, and the rest does not count. nImage: I_IMAGENONE for none. Null texts count as
    // none. FALSE, with nothing changed, for any other index or when there is no memory.
    BOOL SetButton(int nIndex, UINT nCommand, int nImage, BYTE fsStyle = BTNS_BUTTON,
                   const wchar_t* text = nullptr, const wchar_t* tip = nullptr);
    // The number of buttons, separators and hidden ones included; 0 without a window.
    int GetBtnCount() const;

    // Whether the bar's background is that of its parent, as it is at first, or a band of its own.
    void SetBkColorAsParent(BOOL bAsParent);
    // As set by SetBkColorAsParent.
    BOOL GetBkColorAsParent() const;

protected:
    // Paints the whole client area.
    void Draw(CDC& dc);

    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnDestroy();
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    afx_msg BOOL OnGetInfoTip(NMHDR* pNMHDR, LRESULT* pResult);
    DECLARE_MESSAGE_MAP()

    BOOL m_bBkColorAsParent = TRUE; // the background is the parent's

private:
    void DrawBackground(CDC& dc);
    void DrawSeparator(CDC& dc, const CRect& rect);
    void DrawButton(CDC& dc, int index, const TBBUTTON& button, CRect rect);
    void DrawImage(CDC& dc, const TBBUTTON& button, CPoint origin, bool hot);
    void DrawContent(CDC& dc, int index, const TBBUTTON& button, const CRect& rect, bool hot);
    [[nodiscard]] CString GetTextAt(int index) const;
    [[nodiscard]] bool IsEnabled(const TBBUTTON& button) const;
    [[nodiscard]] CRect GetArrowRect(int index, const TBBUTTON& button, const CRect& rect) const;
    [[nodiscard]] CSize GetImageSize() const;

    std::map<UINT, CString> m_tips; // by command
};
