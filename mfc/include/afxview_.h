// Trees, lists and their column headings. Part of afxcmn.h.
#pragma once

class CHeaderCtrl;

// A tree of items.
class AFX_SUBSET_API CTreeCtrl : public CWnd
{
    DECLARE_DYNAMIC(CTreeCtrl)

public:
    CTreeCtrl() = default;
    ~CTreeCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    UINT GetCount() const;
    UINT GetIndent() const;
    void SetIndent(UINT nIndent);
    // SetImageList answers the former list; the image list stays the caller's.
    CImageList* GetImageList(UINT nImageList) const;
    CImageList* SetImageList(CImageList* pImageList, int nImageListType);

    // Null when there is no such item.
    HTREEITEM GetNextItem(HTREEITEM hItem, UINT nCode) const;
    HTREEITEM GetChildItem(HTREEITEM hItem) const;
    HTREEITEM GetNextSiblingItem(HTREEITEM hItem) const;
    HTREEITEM GetPrevSiblingItem(HTREEITEM hItem) const;
    HTREEITEM GetParentItem(HTREEITEM hItem) const;
    HTREEITEM GetFirstVisibleItem() const;
    HTREEITEM GetLastVisibleItem() const;
    HTREEITEM GetNextVisibleItem(HTREEITEM hItem) const;
    HTREEITEM GetPrevVisibleItem(HTREEITEM hItem) const;
    HTREEITEM GetSelectedItem() const;
    HTREEITEM GetDropHilightItem() const;
    HTREEITEM GetRootItem() const;

    BOOL GetItem(TVITEM* pItem) const;
    BOOL SetItem(TVITEM* pItem);
    BOOL SetItem(HTREEITEM hItem, UINT nMask, LPCTSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                 UINT nStateMask, LPARAM lParam);
    UINT GetItemState(HTREEITEM hItem, UINT nStateMask) const;
    BOOL SetItemState(HTREEITEM hItem, UINT nState, UINT nStateMask);
    BOOL GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const;
    BOOL SetItemImage(HTREEITEM hItem, int nImage, int nSelectedImage);
    CString GetItemText(HTREEITEM hItem) const;
    BOOL SetItemText(HTREEITEM hItem, LPCTSTR lpszItem);
    // 0 for an item that does not exist.
    DWORD_PTR GetItemData(HTREEITEM hItem) const;
    BOOL SetItemData(HTREEITEM hItem, DWORD_PTR dwData);
    BOOL ItemHasChildren(HTREEITEM hItem) const;
    // Check boxes of style TVS_CHECKBOXES: state image 1 is unchecked, 2 is checked.
    BOOL GetCheck(HTREEITEM hItem) const;
    BOOL SetCheck(HTREEITEM hItem, BOOL fCheck = TRUE);

    // FALSE for an item that is not visible, because an ancestor is collapsed; lpRect is undefined then.
    BOOL GetItemRect(HTREEITEM hItem, LPRECT lpRect, BOOL bTextOnly) const;
    CEdit* GetEditControl() const;
    UINT GetVisibleCount() const;
    CToolTipCtrl* GetToolTips() const;
    CToolTipCtrl* SetToolTips(CToolTipCtrl* pWndTip);
    COLORREF GetBkColor() const;
    COLORREF SetBkColor(COLORREF clr);
    SHORT GetItemHeight() const;
    SHORT SetItemHeight(SHORT cyHeight);
    COLORREF GetTextColor() const;
    COLORREF SetTextColor(COLORREF clr);
    COLORREF GetLineColor() const;
    COLORREF SetLineColor(COLORREF clrNew = CLR_DEFAULT);
    COLORREF GetInsertMarkColor() const;
    COLORREF SetInsertMarkColor(COLORREF clrNew);
    BOOL SetInsertMark(HTREEITEM hItem, BOOL fAfter = TRUE);
    // Milliseconds.
    UINT GetScrollTime() const;
    UINT SetScrollTime(UINT uScrollTime);
    DWORD GetExtendedStyle() const;
    DWORD SetExtendedStyle(DWORD dwExMask, DWORD dwExStyles);

    // Null when the item could not be made.
    HTREEITEM InsertItem(LPTVINSERTSTRUCT lpInsertStruct);
    HTREEITEM InsertItem(UINT nMask, LPCTSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                         UINT nStateMask, LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter);
    HTREEITEM InsertItem(LPCTSTR lpszItem, HTREEITEM hParent = TVI_ROOT, HTREEITEM hInsertAfter = TVI_LAST);
    HTREEITEM InsertItem(LPCTSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent = TVI_ROOT,
                         HTREEITEM hInsertAfter = TVI_LAST);
    BOOL DeleteItem(HTREEITEM hItem);
    BOOL DeleteAllItems();
    BOOL Expand(HTREEITEM hItem, UINT nCode);
    BOOL Select(HTREEITEM hItem, UINT nCode);
    BOOL SelectItem(HTREEITEM hItem);
    BOOL SelectDropTarget(HTREEITEM hItem);
    BOOL SelectSetFirstVisible(HTREEITEM hItem);
    // The control must have the focus. The edit control is the tree's.
    CEdit* EditLabel(HTREEITEM hItem);
    BOOL EndEditLabelNow(BOOL fCancelWithoutSave);
    // pFlags receives TVHT_ flags.
    HTREEITEM HitTest(CPoint pt, UINT* pFlags = nullptr) const;
    HTREEITEM HitTest(TVHITTESTINFO* pHitTestInfo) const;
    // The caller deletes the answer; null on failure.
    CImageList* CreateDragImage(HTREEITEM hItem);
    BOOL SortChildren(HTREEITEM hItem);
    BOOL EnsureVisible(HTREEITEM hItem);
    BOOL SortChildrenCB(LPTVSORTCB pSort);
    void ShowInfoTip(HTREEITEM hItem);
};

// A list view. Items and columns count from 0; -1 answers a failure where an index is asked for.
class AFX_SUBSET_API CListCtrl : public CWnd
{
    DECLARE_DYNAMIC(CListCtrl)

public:
    CListCtrl() = default;
    ~CListCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    COLORREF GetBkColor() const;
    BOOL SetBkColor(COLORREF cr);
    COLORREF GetTextColor() const;
    BOOL SetTextColor(COLORREF cr);
    COLORREF GetTextBkColor() const;
    BOOL SetTextBkColor(COLORREF cr);
    // SetImageList answers the former list; the image list stays the caller's only with LVS_SHAREIMAGELISTS,
    // else the control destroys it with itself.
    CImageList* GetImageList(int nImageList) const;
    CImageList* SetImageList(CImageList* pImageList, int nImageListType);
    int GetItemCount() const;
    void SetItemCount(int nItems);
    BOOL SetItemCountEx(int iCount, DWORD dwFlags = LVSICF_NOINVALIDATEALL);

    BOOL GetItem(LVITEM* pItem) const;
    BOOL SetItem(const LVITEM* pItem);
    BOOL SetItem(int nItem, int nSubItem, UINT nMask, LPCTSTR lpszItem, int nImage, UINT nState,
                 UINT nStateMask, LPARAM lParam);
    BOOL SetItem(int nItem, int nSubItem, UINT nMask, LPCTSTR lpszItem, int nImage, UINT nState,
                 UINT nStateMask, LPARAM lParam, int nIndent);
    UINT GetCallbackMask() const;
    BOOL SetCallbackMask(UINT nMask);
    int GetNextItem(int nItem, int nFlags) const;
    // Null when nothing is selected. GetNextSelectedItem answers the item at the position, -1 for a null one,
    // and moves the position on; it is null after the last item.
    POSITION GetFirstSelectedItemPosition() const;
    int GetNextSelectedItem(POSITION& pos) const;
    UINT GetSelectedCount() const;
    int GetSelectionMark();
    int SetSelectionMark(int iIndex);
    // Rectangles by LVIR_ constant. FALSE and an empty rectangle for a missing item.
    BOOL GetItemRect(int nItem, LPRECT lpRect, UINT nCode) const;
    BOOL GetSubItemRect(int iItem, int iSubItem, int nArea, CRect& ref);
    // List view coordinates (see GetOrigin).
    BOOL GetItemPosition(int nItem, LPPOINT lpPoint) const;
    BOOL SetItemPosition(int nItem, POINT pt);
    UINT GetItemState(int nItem, UINT nMask) const;
    // Item -1 stands for all items.
    BOOL SetItemState(int nItem, LVITEM* pItem);
    BOOL SetItemState(int nItem, UINT nState, UINT nMask);
    CString GetItemText(int nItem, int nSubItem) const;
    // nLen counts characters with the terminator; a longer text is cut. Answers the length.
    int GetItemText(int nItem, int nSubItem, LPTSTR lpszText, int nLen) const;
    BOOL SetItemText(int nItem, int nSubItem, LPCTSTR lpszText);
    // 0 for an item that does not exist.
    DWORD_PTR GetItemData(int nItem) const;
    BOOL SetItemData(int nItem, DWORD_PTR dwData);
    // Check boxes of LVS_EX_CHECKBOXES.
    BOOL GetCheck(int nItem) const;
    BOOL SetCheck(int nItem, BOOL fCheck = TRUE);
    DWORD GetExtendedStyle();
    // Answers the former style.
    DWORD SetExtendedStyle(DWORD dwNewStyle);
    DWORD GetView() const;
    DWORD SetView(int iView);
    BOOL GetViewRect(LPRECT lpRect) const;
    BOOL GetOrigin(LPPOINT lpPoint) const;
    BOOL GetItemSpacing(BOOL fSmall, int* pnHorzSpacing, int* pnVertSpacing) const;
    CSize SetIconSpacing(int cx, int cy);
    CSize SetIconSpacing(CSize size);
    int GetHotItem();
    int SetHotItem(int iIndex);
    HCURSOR GetHotCursor();
    HCURSOR SetHotCursor(HCURSOR hc);
    // Milliseconds; -1 stands for the system's own time.
    DWORD GetHoverTime() const;
    DWORD SetHoverTime(DWORD dwHoverTime = static_cast<DWORD>(-1));
    int GetTopIndex() const;
    int GetCountPerPage() const;
    // Pixels.
    int GetStringWidth(LPCTSTR lpsz) const;
    CSize ApproximateViewRect(CSize sz = CSize(-1, -1), int iCount = -1) const;
    CEdit* GetEditControl() const;
    CToolTipCtrl* GetToolTips() const;
    CToolTipCtrl* SetToolTips(CToolTipCtrl* pWndTip);

    // Columns of the report view. Widths are in pixels or LVSCW_ constants.
    CHeaderCtrl* GetHeaderCtrl();
    BOOL GetColumn(int nCol, LVCOLUMN* pColumn) const;
    BOOL SetColumn(int nCol, const LVCOLUMN* pColumn);
    int GetColumnWidth(int nCol) const;
    BOOL SetColumnWidth(int nCol, int cx);
    // iCount -1 asks for all columns. A greater count than there are columns answers FALSE.
    BOOL GetColumnOrderArray(LPINT piArray, int iCount = -1);
    BOOL SetColumnOrderArray(int iCount, LPINT piArray);
    int InsertColumn(int nCol, const LVCOLUMN* pColumn);
    // A width or sub-item of -1 is left out.
    int InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1,
                     int nSubItem = -1);
    BOOL DeleteColumn(int nCol);
    UINT GetSelectedColumn() const;
    LRESULT SetSelectedColumn(int iCol);

    int InsertItem(const LVITEM* pItem);
    int InsertItem(int nItem, LPCTSTR lpszItem);
    int InsertItem(int nItem, LPCTSTR lpszItem, int nImage);
    int InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, UINT nState, UINT nStateMask, int nImage,
                   LPARAM lParam);
    BOOL DeleteItem(int nItem);
    BOOL DeleteAllItems();
    int FindItem(LVFINDINFO* pFindInfo, int nStart = -1) const;
    int HitTest(LVHITTESTINFO* pHitTestInfo) const;
    // pFlags receives LVHT_ flags.
    int HitTest(CPoint pt, UINT* pFlags = nullptr) const;
    // Fills in item and sub-item and answers the item.
    int SubItemHitTest(LPLVHITTESTINFO pInfo);
    BOOL EnsureVisible(int nItem, BOOL bPartialOK);
    BOOL IsItemVisible(int index) const;
    BOOL Scroll(CSize size);
    BOOL RedrawItems(int nFirst, int nLast);
    BOOL Arrange(UINT nCode);
    // The control must have the focus. The edit control is the list's.
    CEdit* EditLabel(int nItem);
    void CancelEditLabel();
    // The caller deletes the answer; null on failure. lpPoint receives the image's place, in view
    // coordinates.
    CImageList* CreateDragImage(int nItem, LPPOINT lpPoint);
    BOOL Update(int nItem);
    // The comparison gets the items' data; in SortItemsEx it gets their indices.
    BOOL SortItems(PFNLVCOMPARE pfnCompare, DWORD_PTR dwData);
    BOOL SortItemsEx(PFNLVCOMPARE pfnCompare, DWORD_PTR dwData);

    // Draws an item of style LVS_OWNERDRAWFIXED; nothing by default.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

// The column headings of a list. Items count from 0; -1 answers a failure where an index is asked for.
class AFX_SUBSET_API CHeaderCtrl : public CWnd
{
    DECLARE_DYNAMIC(CHeaderCtrl)

public:
    CHeaderCtrl() = default;
    ~CHeaderCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetItemCount() const;
    BOOL GetItem(int nPos, HDITEM* pHeaderItem) const;
    BOOL SetItem(int nPos, HDITEM* pHeaderItem);
    BOOL GetItemRect(int nIndex, LPRECT lpRect) const;
    // iCount is the number of items; a greater one answers FALSE.
    BOOL GetOrderArray(LPINT piArray, int iCount);
    BOOL SetOrderArray(int iCount, LPINT piArray);
    int OrderToIndex(int nOrder) const;
    CImageList* GetImageList() const;
    // Answers the former list; the image list stays the caller's.
    CImageList* SetImageList(CImageList* pImageList);
    // Pixels.
    int GetBitmapMargin() const;
    int SetBitmapMargin(int nWidth);
    int SetHotDivider(CPoint pt);
    int SetHotDivider(int nIndex);

    int InsertItem(int nPos, HDITEM* phdi);
    BOOL DeleteItem(int nPos);
    BOOL Layout(HDLAYOUT* pHeaderLayout);
    int HitTest(LPHDHITTESTINFO phdhti);
    // The caller deletes the answer; null on failure.
    CImageList* CreateDragImage(int nIndex);

    // Draws an item of format HDF_OWNERDRAW; nothing by default.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};
