// The property list and the property grid with many rows, against a stock owner-drawn list box and a stock
// list control that show the same.
#include "vgui/composite/property_list.h"
#include "bench/bench.h"

#include <afxcmn.h>
#include <afxwin.h>
#include <memory>
#include <string>

namespace
{

constexpr int kScrolls = 300;
constexpr int kEdits = 100;
constexpr int kEditStride = 97; // from one edited row to the next
constexpr int kRowHeight = 20;
constexpr DWORD kChild = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL;
constexpr DWORD kListStyle = kChild | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT | LBS_NOTIFY;
constexpr DWORD kGridStyle = kChild | LVS_REPORT | LVS_EDITLABELS | LVS_SHOWSELALWAYS;
const CRect kPlace(0, 0, 300, 400);

CString RowText(LPCWSTR word, int row)
{
    CString text;
    text.Format(L"%s %d", word, row);
    return text;
}

// A list box that draws two cells for each row and is edited with an edit field of its own.
class StockList : public CListBox
{
public:
    BOOL Open(CWnd& parent)
    {
        if (!Create(kListStyle, kPlace, &parent, 1))
            return FALSE;
        SetItemHeight(0, kRowHeight);
        return m_edit.Create(WS_CHILD | WS_BORDER, CRect(0, 0, 1, 1), this, 1);
    }
    void AddRow(int row) { AddString(RowText(L"value", row)); }
    void Edit(int row)
    {
        CRect rect;
        GetItemRect(row, rect);
        rect.left = rect.CenterPoint().x;
        CString text;
        GetText(row, text);
        m_edit.ShowWindow(SW_HIDE);
        m_edit.MoveWindow(rect);
        m_edit.SetWindowText(text);
        m_edit.ShowWindow(SW_SHOW);
        m_edit.SetFocus();
        Invalidate();
    }
    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        if (item->itemID >= static_cast<UINT>(GetCount()))
            return;
        CDC& dc = *CDC::FromHandle(item->hDC);
        CString text;
        GetText(static_cast<int>(item->itemID), text);
        CRect cell = item->rcItem;
        const CRect row = cell;
        for (const int right : {row.CenterPoint().x, row.right}) {
            cell.right = right;
            dc.Draw3dRect(cell, RGB(208, 208, 191), RGB(208, 208, 191));
            dc.DrawText(text, cell, DT_VCENTER | DT_SINGLELINE);
            cell.left = right;
        }
    }

private:
    CEdit m_edit;
};

class OurList : public VPropertyList
{
public:
    BOOL Open(CWnd& parent) { return Create(kListStyle, kPlace, &parent, 1); }
    void AddRow(int row) { AddItem(RowText(L"name", row), RowText(L"value", row), L"", PIET_EDIT); }
    void Edit(int row) { StartEdit(row); }
};

template <class Base>
class Grid : public Base
{
public:
    BOOL Open(CWnd& parent)
    {
        if (!this->Create(kGridStyle, kPlace, &parent, 1))
            return FALSE;
        this->InsertColumn(0, L"name", LVCFMT_LEFT, 140);
        this->InsertColumn(1, L"value", LVCFMT_LEFT, 140);
        return TRUE;
    }
    void AddRow(int row)
    {
        this->InsertItem(row, RowText(L"name", row));
        this->SetItemText(row, 1, RowText(L"value", row));
    }
};

class StockGrid : public Grid<CListCtrl>
{
public:
    void Edit(int row)
    {
        SetFocus();
        EditLabel(row);
    }
};

class OurGrid : public Grid<VPropertyGrid>
{
public:
    void Edit(int row) { StartEdit(row, 0); }
};

// A list with rows, opened anew for each measurement of the opening.
template <class List>
class Bed
{
public:
    Bed(CWnd& parent, int rows) : m_parent(parent), m_rows(rows) { Fill(); }
    Bed(const Bed&) = delete;
    Bed& operator=(const Bed&) = delete;
    ~Bed() { m_list->DestroyWindow(); }

    bench::Work Opening()
    {
        return {[this] { Fill(); }, [this] { m_list->DestroyWindow(); }};
    }
    bench::Work Scrolling()
    {
        return {[this] {
            for (int i = 0; i < kScrolls; ++i) {
                m_list->SendMessage(WM_VSCROLL, i < kScrolls / 2 ? SB_LINEDOWN : SB_PAGEDOWN);
                m_list->UpdateWindow();
            }
            m_list->SendMessage(WM_VSCROLL, SB_TOP);
        }};
    }
    bench::Work Editing()
    {
        return {[this] {
            for (int i = 0; i < kEdits; ++i) {
                m_list->Edit(i * kEditStride % m_rows);
                m_list->UpdateWindow();
            }
        }};
    }

private:
    void Fill()
    {
        m_list = std::make_unique<List>();
        bench::Require(m_list->Open(m_parent), "creating a list");
        for (int row = 0; row < m_rows; ++row)
            m_list->AddRow(row);
        m_list->UpdateWindow();
    }

    CWnd& m_parent;
    int m_rows;
    std::unique_ptr<List> m_list;
};

template <class Stock, class Ours>
void Measure(CWnd& parent, int rows, const std::string& name, std::string_view yardstick)
{
    Bed<Stock> stock(parent, rows);
    Bed<Ours> ours(parent, rows);
    bench::Compare(name + ", opened", rows, "rows", ours.Opening(), {yardstick, stock.Opening()});
    bench::Compare(name + ", 300 steps of scrolling", rows, "rows", ours.Scrolling(),
                   {yardstick, stock.Scrolling()});
    bench::Compare(name + ", 100 rows edited in turn", rows, "rows", ours.Editing(),
                   {yardstick, stock.Editing()});
}

void Run()
{
    CWnd parent;
    bench::Require(parent.CreateEx(0, AfxRegisterWndClass(0), L"bench", WS_POPUP | WS_VISIBLE,
                                   CRect(50, 50, 700, 500), nullptr, 0),
                   "creating a window");
    parent.SetForegroundWindow();
    for (const int rows : bench::Sizes({100, 1000, 10000})) {
        Measure<StockList, OurList>(parent, rows, "VPropertyList", "owner-drawn list box of two cells a row");
        Measure<StockGrid, OurGrid>(parent, rows, "VPropertyGrid", "list control and its label editor");
    }
    parent.DestroyWindow();
}

const bench::Subject g_subject("property_list", &Run);

} // namespace
