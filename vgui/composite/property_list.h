// Two controls for name and value pairs that are edited in place: a list of properties and a grid of cells.
//
// Both are attached to a dialog's control by subclassing, or created, and move their editor from row to row
// with the keyboard. All coordinates are client coordinates in pixels; rows and columns count from 0.
#pragma once

#include "vgui/controls/themed_controls.h"
#include "vgui/export.h"

#include <afxtempl.h>
#include <array>

// A list box of properties: each row a name and a value, which is edited in place with an edit field, an
// editable combo box or a drop-down list, or the header of a group.
//
// The list box must be owner-drawn with items of one height (LBS_OWNERDRAWFIXED), of a single column and
// unsorted, and must notify (LBS_NOTIFY). A skinned dialog attaches it before VGuiDlg::OnInitDialog or in its
// data exchange: afterwards the list box is a plain VListBox. A row is opened by selecting it or with the
// keyboard: Return, Tab and Down store the value and go to the next row, Up to the one before. Headers stop
// the keyboard. Return and Tab on the last row move the focus out of the list; the editor stays open, as does
// one that loses the focus otherwise.
//
// Each row has one item in the list box, with an empty text; the texts are the control's. LB_RESETCONTENT and
// LB_DELETESTRING remove rows, which closes an open editor without storing its text.
class VGUI_API VPropertyList : public VListBox
{
    DECLARE_DYNAMIC(VPropertyList)

public:
    // Posted to the parent when a row's value has been stored, even an unchanged one: wParam is the row,
    // lParam 0.
    static constexpr UINT kValueStored = WM_USER + 119;
    // Posted to the parent when an editor has been opened: wParam is the row, lParam the row of an earlier
    // editor that could not be closed, normally -1.
    static constexpr UINT kEditStarted = WM_USER + 120;

    // What a row is, and how its value is edited.
    enum PIET {
        PIET_COMBO = 0,    // free text, or one of the choices
        PIET_DROPLIST = 1, // one of the choices only
        PIET_EDIT = 2,     // free text
        PIET_GROUP = 3,    // the header of a group; never edited
    };

    // One row.
    struct PropertyItem {
        CString name;          // left column, or the header's text
        CString value;         // right column
        CString choices;       // of the combo boxes, separated by "|"
        PIET kind = PIET_EDIT; // how the value is edited
    };

    VPropertyList() = default;

    // Adds a row at the end; an unknown kind adds nothing. Rows added before there is a window appear with
    // it.
    void AddItem(const CString& name, const CString& value, const CString& choices, PIET kind);

    // The name of a row, empty when there is no such row.
    CString GetItemName(int index) const;
    // The stored value of a row, empty when there is no such row.
    CString GetItemValue(int index) const;
    // Sets the name and repaints; nothing happens when there is no such row.
    void SetItemName(int index, const CString& name);
    // Sets the value and repaints; nothing happens when there is no such row. An open editor keeps its own
    // text, which replaces the value when it is stored.
    void SetItemValue(int index, const CString& value);
    // Sets both. The value comes first, unlike in AddItem; this is intended.
    void SetItem(int index, const CString& value, const CString& name);

    // The value of the first row with this name (case matters), empty when there is none.
    CString FindItemValue(const CString& name) const;
    // The index of the first row with this name (case matters), -1 when there is none.
    int FindItemIndex(const CString& name) const;

    // The widths of the columns in percent of the row's, 50 each at first. Does not repaint.
    void SetPercent(int name, int value);

    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;
    void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void PreSubclassWindow() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Opens the row's editor after storing what is being edited. A header leaves everything as it is. Throws
    // CInvalidArgException* when there is no such row.
    void StartEdit(int index);
    // Stores the editor's text and closes the editor, if one is visible. A drop-down list without a selection
    // leaves the value as it was.
    void EndEdit(bool notify);
    // Scrolls line by line until the row is in the client area.
    void EnsureVisible(int index);
    // Adds the parts of a text between its "|" to a combo box, empty ones included.
    void AddStrToComboList(CComboBox* combo, const CString& choices);
    // Whether there is such a row.
    [[nodiscard]] bool IsValidIndex(int index) const;

    afx_msg BOOL OnSelchange();
    // An editor that loses the focus stays as it is.
    afx_msg void OnKillfocusCmbBox();
    afx_msg void OnKillfocusEditBox();
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()

    CArray<PropertyItem> m_items; // the list box's items, in their order
    VComboBox m_combo;            // of PIET_COMBO
    VComboBox m_dropList;         // of PIET_DROPLIST
    VEdit m_edit;                 // of PIET_EDIT
    int m_nNameIndent = 0;        // of the names, pixels; any header that is drawn sets it for good
    int m_nNamePercent = 50;      // of the row's width
    int m_nValuePercent = 50;     // of the row's width
    int m_nEditIndex = -1;        // the row whose editor is open

private:
    static constexpr int kNoRow = -1;
    static constexpr UINT kEditId = 1;
    static constexpr UINT kComboId = 2; // of both combo boxes

    struct Cells {
        CRect name;
        CRect value;
    };

    static int ColumnWidth(int rowWidth, int percent);
    [[nodiscard]] Cells CellsOf(CRect row) const;
    void DrawRow(CDC& dc, const PropertyItem& item, const Cells& cells, bool edited);
    void DrawHeader(CDC& dc, const PropertyItem& item, CRect row);
    void Repaint();

    void PrepareControl();
    void CreateEditors();
    void SetEditorFonts();
    std::array<CWnd*, 3> Editors(); // in the order of the kinds
    [[nodiscard]] bool HasVisibleEditor() const;
    void PlaceEditor(int index);
    void OpenEditor(const PropertyItem& item);
    void TellParent(UINT message, int row, int detail);
    void ReadEditor(PropertyItem& item);
    void CloseEditor();
    bool EditRow(int index);
    void LeaveList();
};

// A list control in report view whose cells are edited in place with one edit field.
//
// A cell is opened by a double click, or a single one if that is wished. Tab goes to the next editable
// column, Up and Down to the row before or after; Return and Escape store the text and close the editor:
// Escape keeps what was typed, which is intended. Scrolling and a click in the list close the editor and
// store its text; losing the focus does not, nor does a change of the list's size or font, which it follows.
// Nothing is notified but what a list control notifies of itself.
//
// The first 24 columns can be edited. Every column is edited with the alignment that column 0 had when the
// control was attached.
class VGUI_API VPropertyGrid : public VListCtrl
{
    DECLARE_DYNAMIC(VPropertyGrid)

public:
    static constexpr int kMaxEditableColumns = 24; // columns from there on are never edited

    // All columns can be edited, by a double click.
    VPropertyGrid();

    // Whether a column's cells can be edited, as all can at first. Nothing happens unless there is such a
    // column among the first 24.
    void SetEditable(int column, bool editable);
    // Whether one click opens an editor; at first it takes two.
    void SetSingleClickStartEdit(bool singleClick);

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void PreSubclassWindow() override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Opens the editor on a cell, scrolled into view, after storing what is being edited. Nothing happens
    // when there is no such cell or its column cannot be edited.
    void StartEdit(int row, int column);
    // Closes the editor; save says whether its text goes to the cell.
    void EndEdit(bool save);
    // Whether a cell is being edited.
    [[nodiscard]] bool IsEditCtrlVisible() const;
    // The number of columns, 0 without a header.
    int GetColumnCount() const;
    // ES_LEFT, ES_CENTER or ES_RIGHT, as the column's header is aligned; ES_LEFT when there is none.
    int GetHeaderTextFormat(int column) const;

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    CEdit m_edit;                                     // the editor, a child of the list
    int m_nEditRow = -1;                              // of the cell being edited, -1 for none
    int m_nEditColumn = -1;                           // of the cell being edited, -1 for none
    bool m_bSingleClickStartEdit = false;             // one click opens the editor
    std::array<bool, kMaxEditableColumns> m_editable; // by column

private:
    void PrepareControl();
    bool CreateEditor();
    bool IsEditable(int column) const;
    void ScrollToColumn(int row, int column);
    void PlaceEditor();
    void StartEditAt(CPoint point);
    void EditNextColumn();
};
