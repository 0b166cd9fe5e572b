// The standard Windows controls. Included at the end of afxwin.h; programs include that.
//
// Texts and rectangles follow Windows: rectangles for Create are in client coordinates of the parent, all
// others in client coordinates of the control, in pixels. Owner-drawn controls draw themselves: the parent's
// default handling of WM_DRAWITEM and its kin ends in the virtual DrawItem, MeasureItem, CompareItem and
// DeleteItem of the control. Members that answer a pointer to a window or image list object may answer a
// temporary one, which is not for keeping.
#pragma once

#include <afxwin.h>
#include <commctrl.h>

class CImageList;

// A text, an icon, a bitmap or a frame.
class AFX_SUBSET_API CStatic : public CWnd
{
    DECLARE_DYNAMIC(CStatic)

public:
    CStatic() = default;
    ~CStatic() override;
    virtual BOOL Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                        UINT nID = 0xffff);

    // The setters answer what was shown before; the control never takes ownership of what is set.
    HICON SetIcon(HICON hIcon);
    HICON GetIcon() const;
    HBITMAP SetBitmap(HBITMAP hBitmap);
    HBITMAP GetBitmap() const;
    HCURSOR SetCursor(HCURSOR hCursor);
    HCURSOR GetCursor();
    HENHMETAFILE SetEnhMetaFile(HENHMETAFILE hMetaFile);
    HENHMETAFILE GetEnhMetaFile() const;

    // Draws a control of style SS_OWNERDRAW; nothing by default.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

// A push button, check box, radio button or group box.
class AFX_SUBSET_API CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)

public:
    CButton() = default;
    ~CButton() override;
    virtual BOOL Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    UINT GetState() const;
    void SetState(BOOL bHighlight);
    int GetCheck() const;
    void SetCheck(int nCheck);
    // The type bits of the style (BS_TYPEMASK), as BS_ constants.
    UINT GetButtonStyle() const;
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE);

    // The setters answer what was shown before; the control never takes ownership of what is set.
    HICON SetIcon(HICON hIcon);
    HICON GetIcon() const;
    HBITMAP SetBitmap(HBITMAP hBitmap);
    HBITMAP GetBitmap() const;
    HCURSOR SetCursor(HCURSOR hCursor);
    HCURSOR GetCursor();

    // These need version 6 of the common controls; with an older one they answer FALSE.
    BOOL GetIdealSize(SIZE* psize);
    BOOL SetImageList(PBUTTON_IMAGELIST pbuttonImagelist);
    BOOL GetImageList(PBUTTON_IMAGELIST pbuttonImagelist);
    BOOL SetTextMargin(RECT* pmargin);
    BOOL GetTextMargin(RECT* pmargin);
    BOOL SetElevationRequired(BOOL fElevationRequired);

    // Draws a button of style BS_OWNERDRAW; nothing by default.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

// A list of items. Indices count from 0; LB_ERR answers a bad index, LB_ERRSPACE a lack of memory.
class AFX_SUBSET_API CListBox : public CWnd
{
    DECLARE_DYNAMIC(CListBox)

public:
    CListBox() = default;
    ~CListBox() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCount() const;
    int GetHorizontalExtent() const;
    void SetHorizontalExtent(int cxExtent);
    int GetTopIndex() const;
    int SetTopIndex(int nIndex);
    LCID GetLocale() const;
    LCID SetLocale(LCID nNewLocale);
    int InitStorage(int nItems, UINT nBytes);
    // The item nearest to the point; bOutside tells whether the point lies outside the client area.
    UINT ItemFromPoint(CPoint pt, BOOL& bOutside) const;
    DWORD GetListBoxInfo() const;

    // Single-selection lists.
    int GetCurSel() const;
    int SetCurSel(int nSelect);
    // Multiple-selection lists.
    int GetSel(int nIndex) const;
    int SetSel(int nIndex, BOOL bSelect = TRUE);
    int GetSelCount() const;
    int GetSelItems(int nMaxItems, LPINT rgIndex) const;
    int SelItemRange(BOOL bSelect, int nFirstItem, int nLastItem);
    void SetAnchorIndex(int nIndex);
    int GetAnchorIndex() const;

    DWORD_PTR GetItemData(int nIndex) const;
    int SetItemData(int nIndex, DWORD_PTR dwItemData);
    void* GetItemDataPtr(int nIndex) const;
    int SetItemDataPtr(int nIndex, void* pData);
    int GetItemRect(int nIndex, LPRECT lpRect) const;
    // The buffer needs GetTextLen(nIndex) + 1 characters. Answers the length, LB_ERR for a bad index.
    int GetText(int nIndex, LPTSTR lpszBuffer) const;
    // A bad index, and a list that keeps no strings, give the empty string.
    void GetText(int nIndex, CString& rString) const;
    int GetTextLen(int nIndex) const;
    void SetColumnWidth(int cxWidth);
    // Tab stops in dialog units.
    BOOL SetTabStops(int nTabStops, LPINT rgTabStops);
    void SetTabStops();
    BOOL SetTabStops(const int& cxEachStop);
    int SetItemHeight(int nIndex, UINT cyItemHeight);
    int GetItemHeight(int nIndex) const;
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const;
    int GetCaretIndex() const;
    int SetCaretIndex(int nIndex, BOOL bScroll = TRUE);

    int AddString(LPCTSTR lpszItem);
    int DeleteString(UINT nIndex);
    int InsertString(int nIndex, LPCTSTR lpszItem);
    void ResetContent();
    int Dir(UINT attr, LPCTSTR lpszWildCard);
    int FindString(int nStartAfter, LPCTSTR lpszItem) const;
    int SelectString(int nStartAfter, LPCTSTR lpszItem);

    // Owner-drawn lists. By default nothing is drawn or measured and all items compare equal.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct);
    virtual int CompareItem(LPCOMPAREITEMSTRUCT lpCompareItemStruct);
    virtual void DeleteItem(LPDELETEITEMSTRUCT lpDeleteItemStruct);
    // Lists with LBS_WANTKEYBOARDINPUT: the item to select, -1 for the list's own action, -2 for none.
    virtual int VKeyToItem(UINT nKey, UINT nIndex);
    virtual int CharToItem(UINT nKey, UINT nIndex);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

// A list box with an edit or static field. Indices count from 0; CB_ERR answers a bad index, CB_ERRSPACE a
// lack of memory.
class AFX_SUBSET_API CComboBox : public CWnd
{
    DECLARE_DYNAMIC(CComboBox)

public:
    CComboBox() = default;
    ~CComboBox() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCount() const;
    int GetCurSel() const;
    int SetCurSel(int nSelect);
    LCID GetLocale() const;
    LCID SetLocale(LCID nNewLocale);
    int GetTopIndex() const;
    int SetTopIndex(int nIndex);
    int InitStorage(int nItems, UINT nBytes);
    void SetHorizontalExtent(UINT nExtent);
    UINT GetHorizontalExtent() const;
    int SetDroppedWidth(UINT nWidth);
    int GetDroppedWidth() const;
    BOOL GetComboBoxInfo(PCOMBOBOXINFO pcbi) const;

    // The edit field. GetEditSel: start in the low word, end in the high word.
    DWORD GetEditSel() const;
    BOOL LimitText(int nMaxChars);
    BOOL SetEditSel(int nStartChar, int nEndChar);
    // The hint that stands in an empty edit field; needs version 6 of the common controls.
    BOOL SetCueBanner(LPCTSTR lpszText);
    CString GetCueBanner() const;
    BOOL GetCueBanner(LPTSTR lpszText, int cchText) const;

    DWORD_PTR GetItemData(int nIndex) const;
    int SetItemData(int nIndex, DWORD_PTR dwItemData);
    void* GetItemDataPtr(int nIndex) const;
    int SetItemDataPtr(int nIndex, void* pData);
    // The buffer needs GetLBTextLen(nIndex) + 1 characters. Answers the length, CB_ERR for a bad index.
    int GetLBText(int nIndex, LPTSTR lpszText) const;
    // A bad index, and a list that keeps no strings, give the empty string.
    void GetLBText(int nIndex, CString& rString) const;
    int GetLBTextLen(int nIndex) const;
    // Item -1 is the selection field.
    int SetItemHeight(int nIndex, UINT cyItemHeight);
    int GetItemHeight(int nIndex) const;
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const;
    int SetExtendedUI(BOOL bExtended = TRUE);
    BOOL GetExtendedUI() const;
    // Screen coordinates.
    void GetDroppedControlRect(LPRECT lprect) const;
    BOOL GetDroppedState() const;
    int GetMinVisible() const;
    BOOL SetMinVisibleItems(int iMinVisible);

    void ShowDropDown(BOOL bShowIt = TRUE);
    int AddString(LPCTSTR lpszString);
    int DeleteString(UINT nIndex);
    int InsertString(int nIndex, LPCTSTR lpszString);
    void ResetContent();
    int Dir(UINT attr, LPCTSTR lpszWildCard);
    int FindString(int nStartAfter, LPCTSTR lpszString) const;
    int SelectString(int nStartAfter, LPCTSTR lpszString);
    void Clear();
    void Copy();
    void Cut();
    void Paste();

    // Owner-drawn lists. By default nothing is drawn or measured and all items compare equal.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct);
    virtual int CompareItem(LPCOMPAREITEMSTRUCT lpCompareItemStruct);
    virtual void DeleteItem(LPDELETEITEMSTRUCT lpDeleteItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

// An edit field of one or several lines. Characters and lines count from 0.
class AFX_SUBSET_API CEdit : public CWnd
{
    DECLARE_DYNAMIC(CEdit)

public:
    CEdit() = default;
    ~CEdit() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    BOOL CanUndo() const;
    int GetLineCount() const;
    BOOL GetModify() const;
    void SetModify(BOOL bModified = TRUE);
    void GetRect(LPRECT lpRect) const;
    // Start in the low word, end in the high word.
    DWORD GetSel() const;
    void GetSel(int& nStartChar, int& nEndChar) const;
    HLOCAL GetHandle() const;
    void SetHandle(HLOCAL hBuffer);
    // Left margin in the low word, right margin in the high word, in pixels.
    DWORD GetMargins() const;
    void SetMargins(UINT nLeft, UINT nRight);
    UINT GetLimitText() const;
    void SetLimitText(UINT nMax);
    CPoint PosFromChar(UINT nChar) const;
    // The character in the low word, its line in the high word.
    int CharFromPos(CPoint pt) const;

    // Copies the line without a terminator and answers the number of characters. The first word of the buffer
    // holds the buffer's size in characters.
    int GetLine(int nIndex, LPTSTR lpszBuffer) const;
    // The same; the size is nMaxLength, of which EM_GETLINE can use 65535. Below 1 nothing is copied.
    int GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const;
    TCHAR GetPasswordChar() const;
    void SetPasswordChar(TCHAR ch);
    int GetFirstVisibleLine() const;
    BOOL SetReadOnly(BOOL bReadOnly = TRUE);

    // The hint that stands in an empty field; needs version 6 of the common controls.
    BOOL SetCueBanner(LPCWSTR lpszText);
    BOOL SetCueBanner(LPCWSTR lpszText, BOOL fDrawWhenFocused);
    BOOL GetCueBanner(LPWSTR lpszText, int cchText) const;
    CString GetCueBanner() const;
    BOOL ShowBalloonTip(PEDITBALLOONTIP pEditBalloonTip);
    BOOL ShowBalloonTip(LPCWSTR lpszTitle, LPCWSTR lpszText, INT ttiIcon = TTI_NONE);
    BOOL HideBalloonTip();

    void EmptyUndoBuffer();
    BOOL FmtLines(BOOL bAddEOL);
    void LimitText(int nChars = 0);
    int LineFromChar(int nIndex = -1) const;
    int LineIndex(int nLine = -1) const;
    int LineLength(int nLine = -1) const;
    void LineScroll(int nLines, int nChars = 0);
    void ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo = FALSE);
    void SetRect(LPCRECT lpRect);
    void SetRectNP(LPCRECT lpRect);
    // Start in the low word, end in the high word. bNoScroll FALSE brings the caret into view.
    void SetSel(DWORD dwSelection, BOOL bNoScroll = FALSE);
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    // Tab stops in dialog units.
    BOOL SetTabStops(int nTabStops, LPINT rgTabStops);
    void SetTabStops();
    BOOL SetTabStops(const int& cxEachStop);

    BOOL Undo();
    void Clear();
    void Copy();
    void Cut();
    void Paste();
};

// A scroll bar control. The same operations for a window's own scroll bars are members of CWnd.
class AFX_SUBSET_API CScrollBar : public CWnd
{
    DECLARE_DYNAMIC(CScrollBar)

public:
    CScrollBar() = default;
    ~CScrollBar() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetScrollPos() const;
    int SetScrollPos(int nPos, BOOL bRedraw = TRUE);
    void GetScrollRange(LPINT lpMinPos, LPINT lpMaxPos) const;
    void SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw = TRUE);
    void ShowScrollBar(BOOL bShow = TRUE);
    BOOL EnableScrollBar(UINT nArrowFlags = ESB_ENABLE_BOTH);
    // cbSize is filled in. Null answers FALSE.
    BOOL SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE);
    BOOL GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL);
    BOOL GetScrollBarInfo(PSCROLLBARINFO pScrollInfo) const;
    // The greatest position that the user can reach: the maximum less the page.
    int GetScrollLimit();
};
