// Tabs, progress bars, spin buttons, sliders and tool bars. Part of afxcmn.h.
#pragma once

// A row of tabs. Items count from 0; -1 answers a failure where an index is asked for.
class AFX_SUBSET_API CTabCtrl : public CWnd
{
    DECLARE_DYNAMIC(CTabCtrl)

public:
    CTabCtrl() = default;
    ~CTabCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    CImageList* GetImageList() const;
    // Answers the former list; the image list stays the caller's.
    CImageList* SetImageList(CImageList* pImageList);
    int GetItemCount() const;
    BOOL GetItem(int nItem, TCITEM* pTabCtrlItem) const;
    BOOL SetItem(int nItem, TCITEM* pTabCtrlItem);
    // Bytes that each item keeps for the program; only before the first item.
    BOOL SetItemExtra(int nBytes);
    BOOL GetItemRect(int nItem, LPRECT lpRect) const;
    int GetCurSel() const;
    // Answers the tab selected before. The parent is not told.
    int SetCurSel(int nItem);
    int GetCurFocus() const;
    void SetCurFocus(int nItem);
    // Answers the former size.
    CSize SetItemSize(CSize size);
    void SetPadding(CSize size);
    int GetRowCount() const;
    CToolTipCtrl* GetToolTips() const;
    void SetToolTips(CToolTipCtrl* pWndTip);
    DWORD GetItemState(int nItem, DWORD dwMask) const;
    BOOL SetItemState(int nItem, DWORD dwMask, DWORD dwState);
    DWORD GetExtendedStyle();
    DWORD SetExtendedStyle(DWORD dwNewStyle, DWORD dwExMask = 0);
    int SetMinTabWidth(int cx);

    LONG InsertItem(int nItem, TCITEM* pTabCtrlItem);
    LONG InsertItem(int nItem, LPCTSTR lpszItem);
    LONG InsertItem(int nItem, LPCTSTR lpszItem, int nImage);
    LONG InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, int nImage, LPARAM lParam);
    LONG InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, int nImage, LPARAM lParam, DWORD dwState,
                    DWORD dwStateMask);
    BOOL DeleteItem(int nItem);
    BOOL DeleteAllItems();
    // Between the control's rectangle and that of its pages: bLarger TRUE from page to control.
    void AdjustRect(BOOL bLarger, LPRECT lpRect);
    void RemoveImage(int nImage);
    int HitTest(TCHITTESTINFO* pHitTestInfo) const;
    void DeselectAll(BOOL fExcludeFocus);
    BOOL HighlightItem(int idItem, BOOL fHighlight = TRUE);

    // Draws a tab of style TCS_OWNERDRAWFIXED; nothing by default.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

// A progress bar.
class AFX_SUBSET_API CProgressCtrl : public CWnd
{
    DECLARE_DYNAMIC(CProgressCtrl)

public:
    CProgressCtrl() = default;
    ~CProgressCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    void SetRange(short nLower, short nUpper);
    void SetRange32(int nLower, int nUpper);
    void GetRange(int& nLower, int& nUpper);
    int GetPos();
    // These answer the former position or step.
    int SetPos(int nPos);
    int OffsetPos(int nPos);
    int SetStep(int nStep);
    int StepIt();
    int GetStep() const;
    COLORREF SetBkColor(COLORREF clrNew);
    COLORREF GetBkColor() const;
    COLORREF SetBarColor(COLORREF clrBar);
    COLORREF GetBarColor() const;
    // Needs PBS_MARQUEE; nInterval in milliseconds.
    BOOL SetMarquee(BOOL fMarqueeMode, int nInterval);
    int GetState() const;
    int SetState(int iState);
};

// A pair of arrows that changes a number, often shown in a buddy window beside it.
class AFX_SUBSET_API CSpinButtonCtrl : public CWnd
{
    DECLARE_DYNAMIC(CSpinButtonCtrl)

public:
    CSpinButtonCtrl() = default;
    ~CSpinButtonCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    BOOL SetAccel(int nAccel, UDACCEL* pAccel);
    UINT GetAccel(int nAccel, UDACCEL* pAccel) const;
    // 10 or 16. SetBase answers the former base, 0 when the new one is neither.
    int SetBase(int nBase);
    UINT GetBase() const;
    CWnd* SetBuddy(CWnd* pWndBuddy);
    CWnd* GetBuddy() const;
    // GetPos: the 16-bit position in the low word; the high word is not 0 after an error.
    int SetPos(int nPos);
    int GetPos() const;
    int SetPos32(int nPos);
    int GetPos32(LPBOOL lpbError = nullptr) const;
    // The 16-bit range: upper limit in the low word, lower limit in the high word.
    void SetRange(short nLower, short nUpper);
    DWORD GetRange() const;
    void GetRange(int& lower, int& upper) const;
    void SetRange32(int nLower, int nUpper);
    void GetRange32(int& lower, int& upper) const;
};

// A slider with tick marks and an optional marked selection.
class AFX_SUBSET_API CSliderCtrl : public CWnd
{
    DECLARE_DYNAMIC(CSliderCtrl)

public:
    CSliderCtrl() = default;
    ~CSliderCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetLineSize() const;
    int SetLineSize(int nSize);
    int GetPageSize() const;
    int SetPageSize(int nSize);
    int GetRangeMax() const;
    int GetRangeMin() const;
    void GetRange(int& nMin, int& nMax) const;
    void SetRange(int nMin, int nMax, BOOL bRedraw = FALSE);
    void SetRangeMin(int nMin, BOOL bRedraw = FALSE);
    void SetRangeMax(int nMax, BOOL bRedraw = FALSE);
    void GetSelection(int& nMin, int& nMax) const;
    void SetSelection(int nMin, int nMax);
    void GetChannelRect(LPRECT lprc) const;
    void GetThumbRect(LPRECT lprc) const;
    int GetPos() const;
    void SetPos(int nPos);
    // With the two ends. The array holds two fewer and is the control's; it changes with the next tick mark.
    UINT GetNumTics() const;
    DWORD* GetTicArray() const;
    int GetTic(int nTic) const;
    // Client coordinates; -1 for a tick mark that does not exist.
    int GetTicPos(int nTic) const;
    BOOL SetTic(int nTic);
    void SetTicFreq(int nFreq);
    int GetThumbLength() const;
    void SetThumbLength(int nLength);
    // fLocation TRUE: the buddy left of or above the slider.
    CWnd* GetBuddy(BOOL fLocation = TRUE) const;
    CWnd* SetBuddy(CWnd* pWndBuddy, BOOL fLocation = TRUE);
    CToolTipCtrl* GetToolTips() const;
    void SetToolTips(CToolTipCtrl* pWndTip);
    int SetTipSide(int nLocation);
    void ClearSel(BOOL bRedraw = FALSE);
    void ClearTics(BOOL bRedraw = FALSE);
};

// A row of buttons. Buttons are named by their command, or by an index that counts from 0. Create tells the
// control the size of TBBUTTON, so SetButtonStructSize is needed only for a control made otherwise.
class AFX_SUBSET_API CToolBarCtrl : public CWnd
{
    DECLARE_DYNAMIC(CToolBarCtrl)

public:
    CToolBarCtrl() = default;
    ~CToolBarCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    BOOL IsButtonEnabled(int nID) const;
    BOOL IsButtonChecked(int nID) const;
    BOOL IsButtonPressed(int nID) const;
    BOOL IsButtonHidden(int nID) const;
    BOOL IsButtonIndeterminate(int nID) const;
    BOOL IsButtonHighlighted(int nID) const;
    // TBSTATE_ flags; GetState answers -1 for a missing button.
    int GetState(int nID) const;
    BOOL SetState(int nID, UINT nState);
    BOOL GetButton(int nIndex, LPTBBUTTON lpButton) const;
    int GetButtonCount() const;
    int GetButtonInfo(int nID, TBBUTTONINFO* ptbbi) const;
    BOOL SetButtonInfo(int nID, TBBUTTONINFO* ptbbi);
    BOOL GetItemRect(int nIndex, LPRECT lpRect) const;
    BOOL GetRect(int nID, LPRECT lpRect) const;
    UINT CommandToIndex(UINT nID) const;
    // Empty for a missing button and for one without a text.
    CString GetButtonText(int idButton) const;
    int GetBitmap(int nID) const;
    // Sizes in pixels; width in the low word, height in the high word.
    DWORD GetButtonSize() const;
    BOOL SetButtonSize(CSize size);
    // Only before the first bitmap.
    BOOL SetBitmapSize(CSize size);
    BOOL SetButtonWidth(int cxMin, int cxMax);
    BOOL GetMaxSize(LPSIZE pSize) const;
    BOOL SetIndent(int iIndent);
    int GetRows() const;
    void SetRows(int nRows, BOOL bLarger, LPRECT lpRect);
    BOOL SetMaxTextRows(int iMaxRows);
    int GetMaxTextRows() const;
    // TBSTYLE_ flags and TBSTYLE_EX_ flags.
    DWORD GetStyle() const;
    void SetStyle(DWORD dwStyle);
    DWORD GetExtendedStyle() const;
    DWORD SetExtendedStyle(DWORD dwExStyle);
    // The image lists stay the caller's. The setters answer the former list.
    CImageList* GetImageList() const;
    CImageList* SetImageList(CImageList* pImageList);
    CImageList* GetHotImageList() const;
    CImageList* SetHotImageList(CImageList* pImageList);
    CImageList* GetDisabledImageList() const;
    CImageList* SetDisabledImageList(CImageList* pImageList);
    CToolTipCtrl* GetToolTips() const;
    void SetToolTips(CToolTipCtrl* pTip);
    // The window that gets the bar's messages.
    void SetOwner(CWnd* pWnd);
    int GetHotItem() const;
    int SetHotItem(int nHot);
    BOOL GetAnchorHighlight() const;
    BOOL SetAnchorHighlight(BOOL fAnchor = TRUE);
    BOOL SetCmdID(int nIndex, UINT nID);
    void SetButtonStructSize(int nSize);
    DWORD SetDrawTextFlags(DWORD dwMask, DWORD dwDTFlags);

    BOOL EnableButton(int nID, BOOL bEnable = TRUE);
    BOOL CheckButton(int nID, BOOL bCheck = TRUE);
    BOOL PressButton(int nID, BOOL bPress = TRUE);
    BOOL HideButton(int nID, BOOL bHide = TRUE);
    BOOL Indeterminate(int nID, BOOL bIndeterminate = TRUE);
    BOOL MarkButton(int nID, BOOL fHighlight = TRUE);
    BOOL ChangeBitmap(int idButton, int iBitmap);
    BOOL AddButtons(int nNumButtons, LPTBBUTTON lpButtons);
    BOOL InsertButton(int nIndex, LPTBBUTTON lpButton);
    BOOL DeleteButton(int nIndex);
    BOOL MoveButton(UINT nOldPos, UINT nNewPos);
    // The index of the first new image, -1 on failure. The bitmap must outlive the control.
    int AddBitmap(int nNumButtons, UINT nBitmapID);
    int AddBitmap(int nNumButtons, CBitmap* pBitmap);
    // The index of the first new string, -1 on failure.
    int AddString(UINT nStringID);
    // Several strings, each with its terminator, and one terminator more at the end.
    int AddStrings(LPCTSTR lpszStrings);
    void AutoSize();
    // The button's index; below 0 for a place between or outside the buttons.
    int HitTest(LPPOINT ppt) const;
    BOOL MapAccelerator(TCHAR chAccel, UINT* pIDBtn);

private:
    CImageList* ExchangeImages(UINT message, CImageList* images);
};
