// A combo box that drops down a tree.
#pragma once

#include "vgui/composite/combo_tree_list.h"
#include "vgui/controls/buttons.h"
#include "vgui/controls/themed_controls.h"

// Sent like the ordinary CBN_ codes, after a check state was changed by the user or by SetCheck.
inline constexpr UINT CBN_CHECKCHANGE = 35059;

class ComboTree;

// The text field. A key that the combo box has acted on is no dialog key any more: Escape, Enter and Tab do
// not close a dialog or move the focus a second time.
class VGUI_API ComboTreeEdit : public VEdit
{
    DECLARE_DYNAMIC(ComboTreeEdit)

protected:
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg UINT OnGetDlgCode();
    DECLARE_MESSAGE_MAP()
};

// The drop button.
class VGUI_API ComboTreeButton : public VButton
{
    DECLARE_DYNAMIC(ComboTreeButton)

public:
    // Fills the whole item.
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    // Unlike other buttons it moves the focus nowhere when it is disabled.
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg UINT OnGetDlgCode();
    DECLARE_MESSAGE_MAP()
};

// Watches the combo box's parent while the tree is down: what moves the parent, or is meant for other
// controls, cancels the drop-down, and the mouse wheel turns the tree.
class VGUI_API ComboTreeHook : public CComboSubclassWnd
{
public:
    // Sets whom to tell, and the window to hook later on. Until then messages are only passed on.
    void Prepare(ComboTree* pCombo, HWND hWatched);
    // Hooks the window that Prepare was given; FALSE as HookWindow.
    BOOL Hook() { return HookWindow(m_hWatched); }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    ComboTree* m_pCombo = nullptr; // whom to tell, not owned
    HWND m_hWatched = nullptr;     // the window to hook

private:
    [[nodiscard]] bool Cancels(UINT message, WPARAM wParam, LPARAM lParam) const;
};

// An edit field, a drop button and a tree, which is a popup while it is shown. To its parent it is a combo
// box: it sends CBN_SELCHANGE, CBN_DBLCLK, CBN_SETFOCUS, CBN_KILLFOCUS, CBN_EDITCHANGE, CBN_DROPDOWN,
// CBN_SELENDOK, CBN_SELENDCANCEL and CBN_CHECKCHANGE as WM_COMMAND, but never CBN_CLOSEUP. A handler may
// destroy the control's window and delete the object.
//
// Items are addressed by paths: labels joined by a delimiter, "/" at first, compared exactly. The tree may
// have three-state check boxes: what is above and below an item follows it.
//
// Item functions are safe with null items and before there is a window: they answer null, FALSE, -1 or an
// empty text. A handle of a deleted item is the host's mistake: the tree may have given it to another item.
// Null texts count as empty ones. Sizes are in pixels.
class VGUI_API ComboTree : public CWnd
{
    DECLARE_DYNAMIC(ComboTree)

public:
    ComboTree();
    ComboTree(const ComboTree&) = delete;
    ComboTree& operator=(const ComboTree&) = delete;
    ~ComboTree() override;

    // Creates the control, visible, at a place in the parent's client coordinates. FALSE without a parent,
    // when it has a window already, and when one of its parts cannot be created.
    BOOL Create(const RECT& rect, int droppedWidth, int droppedHeight, CWnd* parent, UINT id);
    // Puts the control in the place of a dialog's combo box, which is destroyed: same id, place, tab order
    // and dropped size. FALSE when there is no such item, or Create fails.
    BOOL SubclassDlgItem(UINT id, CWnd* parent);

    // The tree. It lives as long as this object, like the other parts.
    ComboTreeDropList& GetTree() { return m_tree; }
    // The edit field.
    ComboTreeEdit& GetEdit() { return m_edit; }
    // The drop button.
    ComboTreeButton& GetDropDownButton() { return m_button; }

    // Whether there are check boxes; not at first. To be called before Create: afterwards FALSE, unless
    // nothing would change.
    BOOL SetHasCheckboxes(BOOL has);
    // As set by SetHasCheckboxes.
    BOOL GetHasCheckboxes() const { return m_bHasCheckboxes; }
    // Whether items with children may be chosen; at first they may, and with check boxes always.
    void SetEnableSelectParent(BOOL enable);
    // The character between the labels of a path.
    wchar_t GetPathDelimiter() const;
    // Sets it, for all calls from now on.
    void SetPathDelimiter(wchar_t delimiter);

    // Adds what is missing of a path and returns its last item; null, and nothing added, when the whole path
    // was there already or is empty. With check boxes new items are unchecked.
    HTREEITEM AddString(LPCWSTR path);
    // The item at a path below parent; a null parent stands for the root here and below.
    HTREEITEM FindString(LPCWSTR path, HTREEITEM parent);
    // The same; the tree selects the item that was found.
    HTREEITEM SelectString(LPCWSTR path, HTREEITEM parent);
    // The first child of parent with a label, null when there is none.
    HTREEITEM FindChildItem(LPCWSTR label, HTREEITEM parent);
    // The first child of parent with these low 32 bits of its item data, null when there is none.
    HTREEITEM FindChildItemData(DWORD data, HTREEITEM parent);
    // Deletes an item with all below it: 0, or -1 when the tree refuses. If it was the selected one the edit
    // field takes the label of the next selection (CBN_SELCHANGE is sent), or is emptied.
    int DeleteString(HTREEITEM item);
    // Deletes all items; the edit field keeps its text.
    void ResetContent();

    // The item that is selected in the tree, null for none.
    HTREEITEM GetCurSel() const;
    // Takes the item's label: 0, or -1 when that is empty.
    int GetLBText(HTREEITEM item, CString& text) const;
    // Sets the value that the host keeps with an item: 0, or -1 on failure.
    int SetItemData(HTREEITEM item, DWORD_PTR data);
    // The value that the host keeps with an item, 0 at first and for a null item.
    DWORD_PTR GetItemData(HTREEITEM item) const;
    // The labels from the root down to the item, joined by the delimiter.
    CString GetTreePath(HTREEITEM item) const;
    // The path of the selected item.
    CString GetCurrentTreePath() const;
    // The label of the selected item.
    CString GetCurrentTreeItem() const;

    // Sets the edit field's text; the selection stays, and nobody is told.
    void SetWindowText(LPCWSTR text);
    // The edit field's text.
    CString GetWindowText() const;

    // Checks or unchecks an item; the items below and above follow it. One that is partly checked and is to
    // be unchecked stays partly checked; this is intended. CBN_CHECKCHANGE is sent when the state changes.
    // When it does not, nobody is told, but the items below and above are made to agree with it again. FALSE
    // without check boxes and for a null item, TRUE otherwise, also when nothing has changed.
    BOOL SetCheck(HTREEITEM item, BOOL check);
    // Partly checked does not count as checked, here and in the walks.
    BOOL IsItemChecked(HTREEITEM item) const;
    // The first checked item in the tree's order, null when there is none, and without check boxes. The walks
    // forward do not look below items that are unchecked as long as those have a next sibling.
    HTREEITEM GetFirstCheckedItem() const;
    // The next checked item after this one, null after the last.
    HTREEITEM GetNextCheckedItem(HTREEITEM item) const;
    // The checked item before this one, null before the first.
    HTREEITEM GetPrevCheckedItem(HTREEITEM item) const;

    // The item after this one in the order in which a fully expanded tree shows them, null after the last.
    HTREEITEM GetNextItem(HTREEITEM item) const;
    // The item before this one in that order, null before the first.
    HTREEITEM GetPrevItem(HTREEITEM item) const;
    // The last item below this one, itself when it has no children; for null the last one of the tree.
    HTREEITEM GetLastItem(HTREEITEM item) const;
    // The next sibling, or the tree's first item when there is none. The name misleads; this is intended.
    HTREEITEM GetLastSibling(HTREEITEM item) const;

    // Expands an item and all below it, and scrolls the selected item into view.
    void ExpandBranch(HTREEITEM item);
    // Collapses an item and all below it.
    void CollapseBranch(HTREEITEM item);
    // Collapses the item's siblings.
    void CollapseAllSiblings(HTREEITEM item);

    // Opens or closes the drop-down unless it is so already. Closing tells nobody.
    void ShowDropDown(BOOL show);
    // Opens it (CBN_DROPDOWN) with the focus in the edit field.
    void ShowTree();
    // Closes it; nobody is told.
    void HideTree();
    // Whether the tree is down.
    BOOL GetDroppedState() const { return m_bDropped; }
    // Sets the width of the drop-down, 200 at first; a tree that is down is placed anew. Always 0.
    int SetDroppedWidth(UINT width);
    // The same for its height, 200 at first.
    int SetDroppedHeight(UINT height);
    // The width of the drop-down.
    int GetDroppedWidth() const { return m_nDroppedWidth; }
    // The height of the drop-down.
    int GetDroppedHeight() const { return m_nDroppedHeight; }
    // Where the tree would be now, in screen coordinates. A null pointer, or no window: nothing.
    void GetDroppedControlRect(RECT* rect) const;

    // Enables or disables the control with its parts. Whether the control was disabled before.
    BOOL EnableWindow(BOOL enable);

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    // Creates the tree, hidden. False when it cannot be.
    bool CreateTree();
    // Creates the drop button at the right edge. False when it cannot be.
    bool CreateButton();
    // Creates the edit field left of the button. False when it cannot be.
    bool CreateEdit();
    // Below the control and aligned with its left edge; above it, or aligned with its right edge, where the
    // main screen ends. Screen coordinates.
    void CalculateDroppedRect(RECT* rect) const;
    // Shows the tree and remembers what is selected.
    void DisplayTree();
    // Takes the selected item (CBN_SELENDOK) and closes the drop-down. An item that may not be chosen only
    // closes.
    void OnSelection();
    // Restores the selection (CBN_SELENDCANCEL) and closes the drop-down; the edit field keeps its text.
    void OnCancel();
    // Acts on a key message while the drop-down is open. Whether it did.
    bool OnKeyDropdownActive(UINT msg, WPARAM key);
    // The same while the drop-down is not open.
    bool OnKeyDropdownInactive(UINT msg, WPARAM key);
    // Sends a CBN_ code to the parent. False when the control's window is gone afterwards.
    bool SendParentComboMessage(UINT code);
    // Sends a message to the tree. The tree's answer, 0 when it has no window.
    LRESULT SendTreeMessage(UINT msg, WPARAM wParam, LPARAM lParam) const;
    // Notes whether the tree is down; shows and hides nothing.
    void SetDroppedState(BOOL dropped) { m_bDropped = dropped; }
    // Whether the mouse is over the drop button.
    bool IsMouseOnButton() const;
    // Whether the mouse is over the edit field.
    bool IsMouseOnEdit() const;
    // Whether the focus is on the control, its edit field or its button.
    bool IsEditHighlightOn() const;

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnDestroy();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    // Hands the focus on to the edit field.
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnDropdownButton();
    afx_msg void OnKillfocusEdit();
    afx_msg void OnSetfocusEdit();
    DECLARE_MESSAGE_MAP()

    ComboTreeDropList m_tree;      // hidden unless it is down
    ComboTreeEdit m_edit;          // the text field
    ComboTreeButton m_button;      // the drop button
    CString m_strSavedPath;        // of the selection when the tree was displayed
    int m_nDroppedWidth = 200;     // of the tree, pixels
    int m_nDroppedHeight = 200;    // of the tree, pixels
    BOOL m_bDropped = FALSE;       // the tree is down
    BOOL m_bHasCheckboxes = FALSE; // see SetHasCheckboxes
    ComboTreeHook m_hook;          // on the parent while the tree is down

private:
    friend class ComboTreeDropList;
    friend class ComboTreeEdit;
    friend class ComboTreeButton;
    friend class ComboTreeHook;

    void PlaceTree(UINT flags);
    void OnTreeDestroyed();
    bool SendEnding(UINT code);
    void RepaintParts();
    void MoveFocusToNextControl();

    WPARAM m_takenKey = 0;  // of the key message on its way if it has been acted on, else 0
    bool m_bEnding = false; // the parent is being told of a choice or a cancellation
};
