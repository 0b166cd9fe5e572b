// The tree that a tree combo box drops down.
#pragma once

#include "vgui/composite/combo_tree_tip.h"
#include "vgui/export.h"

#include <afxcmn.h>
#include <memory>
#include <string>

class ComboTree;
class ComboTreeLabels;

// Check states of an item: the indices of its state image.
inline constexpr int ComboTreeNoCheck = 0;
inline constexpr int ComboTreeUnchecked = 1;
inline constexpr int ComboTreeChecked = 2;
inline constexpr int ComboTreePartlyChecked = 3; // some, but not all, of its children are checked

// What ComboTreeDropList::SetCheckState does.
enum ComboTreeCheckOp {
    ComboTreeCheck = 0,
    ComboTreeUncheck = 1,
    ComboTreeToggle = 2,  // a partly checked item becomes unchecked
    ComboTreeReapply = 3, // the state stays and is given to descendants and ancestors; nobody is told
};

// A host may use the tree as any other: insert, rename, sort and delete items, set their images. It is a
// top-level popup, so its TVN_ notifications reach nobody; the combo box tells its parent. Walks through the
// tree need no call stack, so that its depth does not matter.
//
// Item functions are safe with null items and before there is a window: the answer is null or FALSE. A
// handle of a deleted item is the host's mistake: the tree may have given it to another item.
class VGUI_API ComboTreeDropList : public CTreeCtrl
{
    DECLARE_DYNAMIC(ComboTreeDropList)

public:
    ComboTreeDropList();
    ~ComboTreeDropList() override;
    ComboTreeDropList(const ComboTreeDropList&) = delete;
    ComboTreeDropList& operator=(const ComboTreeDropList&) = delete;

    BOOL DestroyWindow() override;

    // Changes a check state, keeps descendants and ancestors consistent with it and tells the combo's parent.
    // FALSE without check boxes, without a combo box, for an unknown operation and for a missing item.
    BOOL SetCheckState(HTREEITEM item, int op);
    // The item's state image, ComboTreeNoCheck for a missing one.
    [[nodiscard]] int GetCheckState(HTREEITEM item) const;
    // Whether the user may choose the item: any with check boxes, else items with children only if those may
    // be selected. False for a missing item.
    [[nodiscard]] bool IsChoosable(HTREEITEM item) const;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnDestroy();
    afx_msg void OnClose();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    // A character may find an item by its label.
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnActivateApp(BOOL bActive, DWORD dwThreadID);
    afx_msg UINT OnGetDlgCode();
    DECLARE_MESSAGE_MAP()

    ComboTree* m_pCombo = nullptr; // set by the combo box whose member this is
    ComboTreeTip m_tip;            // shows labels that are cut off
    CImageList m_checkImages;      // by check state
    BOOL m_bSelectParent = TRUE;   // items with children may be chosen
    wchar_t m_chDelimiter = L'/';  // between the labels of a path

private:
    friend class ComboTree;
    friend class ComboTreeLabels;

    // Keys that the combo box and its tree want for themselves.
    static constexpr UINT kDlgCode = DLGC_WANTARROWS | DLGC_WANTALLKEYS | DLGC_WANTCHARS;

    [[nodiscard]] bool HasCheckBoxes() const;
    bool LoadCheckImages();
    void HighlightSelection(CDC& dc, const CRect& client);
    [[nodiscard]] HTREEITEM ItemAt(CPoint point, UINT hitFlags) const;
    bool ToggleBoxAt(CPoint point);
    bool TellIfMovedFrom(HTREEITEM before);

    // Item links.
    LRESULT Ask(UINT message, WPARAM wParam, LPARAM lParam) const;
    [[nodiscard]] HTREEITEM LinkOf(HTREEITEM item, UINT link) const;
    [[nodiscard]] HTREEITEM FirstChildOf(HTREEITEM parent) const;
    [[nodiscard]] HTREEITEM NextInTree(HTREEITEM item) const;
    [[nodiscard]] HTREEITEM NextPast(HTREEITEM item, HTREEITEM top) const;
    [[nodiscard]] HTREEITEM NextWithin(HTREEITEM item, HTREEITEM top) const;
    [[nodiscard]] HTREEITEM PreviousInTree(HTREEITEM item) const;
    [[nodiscard]] HTREEITEM LastInTree(HTREEITEM item) const;
    [[nodiscard]] HTREEITEM LastSiblingOf(HTREEITEM item) const;
    void ExpandOrCollapseBranch(HTREEITEM item, UINT code);

    // Check states.
    bool ReadState(HTREEITEM item, int& state) const;
    void ShowState(HTREEITEM item, int shown, int state);
    void PushState(HTREEITEM item, int state);
    void UpdateAncestors(HTREEITEM item, int state);
    [[nodiscard]] int StateOfFamily(HTREEITEM child, int childState) const;
    void ChangeState(HTREEITEM item, int shown, int op);
    [[nodiscard]] HTREEITEM FirstCheckedFrom(HTREEITEM item) const;
    [[nodiscard]] HTREEITEM PreviousChecked(HTREEITEM item) const;

    // Paths.
    [[nodiscard]] HTREEITEM FindPath(LPCWSTR path, HTREEITEM parent) const;
    HTREEITEM AddPath(LPCWSTR path);
    HTREEITEM AddLabel(const std::wstring& label, HTREEITEM parent);
    [[nodiscard]] CString PathOf(HTREEITEM item) const;
    [[nodiscard]] HTREEITEM FindLabel(LPCWSTR label, HTREEITEM parent) const;
    [[nodiscard]] HTREEITEM FindData(DWORD data, HTREEITEM parent) const;

    std::unique_ptr<ComboTreeLabels> m_labels;
};
