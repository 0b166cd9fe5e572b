// The property list and the property grid with many rows, against a stock owner-drawn list box and a stock
// list control that show the same.
#include "vgui/composite/property_list.h"
#include "bench/bench.h"

#include <afxcmn.h>
#include <afxwin.h>
#include <memory>

namespace
{

constexpr int kRows = 10000;
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

struct Times {
    double open, scroll, edit;
};

template <class List>
Times Measure(CWnd& parent)
{
    std::unique_ptr<List> list;
    const auto create = [&] {
        list.reset();
        list = std::make_unique<List>();
        list->Open(parent);
    };
    Times times{};
    times.open = bench::Fastest(create, [&] {
        for (int row = 0; row < kRows; ++row)
            list->AddRow(row);
        list->UpdateWindow();
    });
    times.scroll = bench::Fastest([&] {
        for (int i = 0; i < kScrolls; ++i) {
            list->SendMessage(WM_VSCROLL, i < kScrolls / 2 ? SB_LINEDOWN : SB_PAGEDOWN);
            list->UpdateWindow();
        }
        list->SendMessage(WM_VSCROLL, SB_TOP);
    });
    times.edit = bench::Fastest([&] {
        for (int i = 0; i < kEdits; ++i) {
            list->Edit(i * kEditStride % kRows);
            list->UpdateWindow();
        }
    });
    list->DestroyWindow();
    return times;
}

void Print(const char* title, const Times& stock, const Times& ours)
{
    char heading[80];
    wsprintfA(heading, "%s, %d rows: opening", title, kRows);
    bench::PrintHeading(heading, "the stock control", stock.open);
    bench::PrintRow("ours", ours.open, stock.open);
    wsprintfA(heading, "%s: %d steps of scrolling", title, kScrolls);
    bench::PrintHeading(heading, "the stock control", stock.scroll);
    bench::PrintRow("ours", ours.scroll, stock.scroll);
    wsprintfA(heading, "%s: %d times editing another row", title, kEdits);
    bench::PrintHeading(heading, "the stock control", stock.edit);
    bench::PrintRow("ours", ours.edit, stock.edit);
}

void Run()
{
    CWnd parent;
    if (!parent.CreateEx(0, AfxRegisterWndClass(0), L"bench", WS_POPUP | WS_VISIBLE, CRect(50, 50, 400, 500),
                         nullptr, 0))
        return;
    parent.SetForegroundWindow();
    Print("Property list", Measure<StockList>(parent), Measure<OurList>(parent));
    Print("Property grid", Measure<StockGrid>(parent), Measure<OurGrid>(parent));
    parent.DestroyWindow();
}

const bench::Subject g_subject("property_list", &Run);

} // namespace
