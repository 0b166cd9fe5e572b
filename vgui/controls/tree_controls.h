// The library's tree, the tree of three-state check boxes, and helpers for any tree control.
//
// A null item is safe everywhere: nothing is done with it. Other handles must be those of the tree's items:
// the control itself follows them unseen. Walks through a tree need no call stack, so that its depth does not
// matter, and take time in proportion to the number of items, apart from what the control itself needs to
// find an item by its handle.
#pragma once

#include "vgui/export.h"

#include <afxcmn.h>

// Check states: the item's image and selected image are the state.
enum CTC_CHECKSTAT {
    CtcInvalid = -1, // any other image
    CtcUnchecked = 0,
    CtcChecked = 1,
    CtcPartial = 2,
};

// What VCheckTreeCtrl posts to its parent after each toggle by mouse. wParam: the HTREEITEM; lParam: its
// CTC_CHECKSTAT before the click.
inline constexpr UINT VGTreeCheckClicked = 3324;

// Commands (WM_COMMAND) that VCheckTreeCtrl carries out itself, for a host's menus.
inline constexpr UINT VGTreeCheckAll = 32771;
inline constexpr UINT VGTreeUncheckAll = 32772;
inline constexpr UINT VGTreeReverseAll = 32773;

// A tree with the shared look: the library's frame round a tree that has a border, the selection in the
// system's colours with the focus and in a light blue without it (with TVS_SHOWSELALWAYS), an orange outline
// round the item under the mouse, grey text while disabled. It paints through one buffered copy. Keyboard and
// accessibility are the stock control's. The colours come from NM_CUSTOMDRAW, which therefore does not reach
// the parent; a derived class may put its own ON_NOTIFY_REFLECT there.
class VGUI_API VTreeCtrl : public CTreeCtrl
{
    DECLARE_DYNAMIC(VTreeCtrl)

protected:
    void PreSubclassWindow() override;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnNcPaint();
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg void OnCustomDraw(NMHDR* pNMHDR, LRESULT* pResult);
    DECLARE_MESSAGE_MAP()

    HTREEITEM m_hHot = nullptr; // under the mouse
    bool m_bTracking = false;   // WM_MOUSELEAVE has been asked for

private:
    void SetHotItem(HTREEITEM item);
    void InvalidateLabel(HTREEITEM item);
    void ChooseColors(NMTVCUSTOMDRAW& draw) const;
};

// A tree whose items carry check boxes, kept consistent up and down: an item's children follow it, and an
// item with children is checked, unchecked or partly checked as they are. The normal images are the boxes, so
// a host inserts items without images of its own; new items are unchecked. Clicking a box toggles it; a click
// on a box or label also selects. A click on an item's button expands it, and collapses it only where the
// control reports the expanded state unasked; a double click and the keyboard always do both. There is no
// context menu: WM_CONTEXTMENU ends here.
//
// The object must live as long as its window shows the check images.
class VGUI_API VCheckTreeCtrl : public VTreeCtrl
{
    DECLARE_DYNAMIC(VCheckTreeCtrl)

public:
    // The state of an item, CtcInvalid for null and an item with an image that is no check box.
    [[nodiscard]] CTC_CHECKSTAT GetNodeCheckStat(const HTREEITEM& item) const;

    // Checks the item, all below it and, as its siblings are, all above it.
    void Check(HTREEITEM item);
    // The same, unchecking.
    void Uncheck(HTREEITEM item);
    // Checks all items.
    void CheckAll();
    // Unchecks all items.
    void UncheckAll();
    // Toggles each item of the first level, then each of their children, which follow at once what is above
    // them, and so on. The outcome is: the first level's boxes decide, leaves one level deeper come out the
    // other way round with each level, and what has children follows them.
    void ReverseAll();

    // Whether all items of the first level are checked. False for an empty tree.
    [[nodiscard]] bool IsAllChecked() const;
    // Whether all items of the first level are unchecked. False for an empty tree.
    [[nodiscard]] bool IsNoneChecked() const;

    // Shows or takes away the check boxes; they are there at first. The states stay.
    void SetUseCheck(bool use);
    // As set by SetUseCheck.
    [[nodiscard]] bool GetUseCheck() const { return useCheck; }
    // Whether a click on an item's text toggles it, too; not at first.
    void SetClickOnTextCheck(bool use) { clickOnTextCheck = use; }
    // As set by SetClickOnTextCheck.
    [[nodiscard]] bool GetclickOnTextCheck() const { return clickOnTextCheck; }

protected:
    void PreSubclassWindow() override;

    // Sets this item alone. CtcInvalid has no image and changes nothing.
    void SetNodeCheckStat(const HTREEITEM& item, CTC_CHECKSTAT stat);
    // Gives the item's state to everything below it.
    void UpdateChildStat(HTREEITEM item);
    // Gives everything above the item the state that follows from the children there.
    void UpdateParentStat(HTREEITEM item);

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint point);
    DECLARE_MESSAGE_MAP()

    CImageList checkImages;        // the boxes, by CTC_CHECKSTAT
    bool useCheck = true;          // the boxes are shown
    bool clickOnTextCheck = false; // a click on the text toggles, too

private:
    void LoadCheckImages();
    void ShowCheckImages();
    void SetSubtree(HTREEITEM item, CTC_CHECKSTAT stat);
    void ToggleExpanded(HTREEITEM item);
    void ToggleByMouse(HTREEITEM item);
    [[nodiscard]] CTC_CHECKSTAT StatOfChildren(HTREEITEM parent) const;
    [[nodiscard]] bool AreRoots(CTC_CHECKSTAT stat) const;
};

// Computes the states of all items with children from the leaves: unchecked when all children are, checked
// when none is (even if some are partly checked; this is intended), else partly checked. False for an empty
// tree.
VGUI_API bool AdjustTreeCtrlCheckState(VCheckTreeCtrl& tree);

// Appends copies of srcParent's children, with all below them, to destParent's children. Text and item data
// are copied, images and states are not. TVI_ROOT stands for the whole tree. What is copied is what there was
// before the call, so destParent may lie below srcParent. False, with nothing or only a part copied, when the
// tree has no window, when an item is null, or when there is no memory for more.
VGUI_API bool CopyTreeChildNode(CTreeCtrl& tree, HTREEITEM destParent, HTREEITEM srcParent);

// Expands the whole tree. Items that the host inserts while they are being expanded take part, here and
// below. A tree that is null or has no window is left alone.
VGUI_API void ExpandTree(CTreeCtrl* tree);
// Expands an item and all below it.
VGUI_API void ExpandTreeItem(CTreeCtrl* tree, HTREEITEM item);
// Expands an item and the siblings after it, one level only.
VGUI_API void ExpandTreeLevel(CTreeCtrl* tree, HTREEITEM item);
// Collapses the items of the first level and repaints.
VGUI_API void CollapseTreeAtRoot(CTreeCtrl* tree);
