// The tree combo box: adding and finding paths, and check states, against a stock tree that has the same
// items inserted and walked.
#include "vgui/composite/combo_tree.h"
#include "bench/bench.h"

#include <cstdio>
#include <string>
#include <vector>

namespace
{

// Paths below one parent.
std::vector<std::wstring> Paths(int count)
{
    std::vector<std::wstring> paths;
    for (int i = 0; i < count; ++i)
        paths.push_back(L"parent/item " + std::to_wstring(i));
    return paths;
}

// A stock tree with the same style and state as the dropped one, closed.
class StockTree : public CTreeCtrl
{
public:
    BOOL Open()
    {
        return CreateEx(WS_EX_TOOLWINDOW,
                        WS_POPUP | WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                            TVS_NOTOOLTIPS,
                        CRect(0, 0, 200, 200), nullptr, 0);
    }
    void Fill(const std::vector<std::wstring>& paths)
    {
        const HTREEITEM parent = InsertItem(L"parent");
        for (const std::wstring& path : paths)
            InsertItem(path.c_str() + wcslen(L"parent/"), parent);
    }
    // Visits all children and changes their state.
    void Walk(int state)
    {
        HTREEITEM item = GetChildItem(GetRootItem());
        for (; item != nullptr; item = GetNextSiblingItem(item))
            SetItemState(item, INDEXTOSTATEIMAGEMASK(state), TVIS_STATEIMAGEMASK);
    }
    // Asks for the text of every child, as whoever searches it must.
    int Read()
    {
        int length = 0;
        HTREEITEM item = GetChildItem(GetRootItem());
        for (; item != nullptr; item = GetNextSiblingItem(item))
            length += GetItemText(item).GetLength();
        return length;
    }
};

void Measure(CWnd& host, int count)
{
    const std::vector<std::wstring> paths = Paths(count);
    StockTree stock;
    ComboTree combo;
    combo.SetHasCheckboxes(TRUE);
    if (!stock.Open() || !combo.Create(CRect(0, 0, 100, 24), 200, 200, &host, 1))
        return;
    const double inserted = bench::Fastest([&] { stock.DeleteAllItems(); }, [&] { stock.Fill(paths); });
    const double added = bench::Fastest([&] { combo.ResetContent(); },
                                        [&] {
                                            for (const std::wstring& path : paths)
                                                combo.AddString(path.c_str());
                                        });
    const double read = bench::Fastest([&] { stock.Read(); });
    const double found = bench::Fastest([&] {
        for (const std::wstring& path : paths)
            combo.FindString(path.c_str(), nullptr);
    });
    int state = 1;
    const double walked = bench::Fastest([&] { stock.Walk(state = 3 - state); });
    const HTREEITEM parent = combo.FindString(L"parent", nullptr);
    BOOL check = FALSE;
    const double pushed = bench::Fastest([&] { combo.SetCheck(parent, check = !check); });
    const HTREEITEM first = combo.GetNextItem(parent);
    const double oneByOne = bench::Fastest([&] { combo.SetCheck(parent, FALSE); },
                                           [&] {
                                               HTREEITEM item = first;
                                               for (; item != nullptr; item = combo.GetNextItem(item))
                                                   combo.SetCheck(item, TRUE);
                                           });

    char title[80];
    const auto head = [&](const char* what, const char* yardstick, double seconds) {
        std::snprintf(title, sizeof(title), "Tree combo box, %d items below one parent: %s", count, what);
        bench::PrintHeading(title, yardstick, seconds);
    };
    head("adding paths", "stock tree: insertions", inserted);
    bench::PrintRow("adding every path", added, inserted);
    head("finding paths", "stock tree: reading all labels", read);
    bench::PrintRow("finding every path", found, read);
    head("check boxes", "stock tree: setting all states", walked);
    bench::PrintRow("checking the parent", pushed, walked);
    bench::PrintRow("checking one after the other", oneByOne, walked);
    combo.DestroyWindow();
    stock.DestroyWindow();
}

void Run()
{
    CWnd host;
    if (!host.CreateEx(0, AfxRegisterWndClass(0), L"bench", WS_POPUP, CRect(50, 50, 400, 500), nullptr, 0))
        return;
    for (const int count : {10, 100, 1000, 10000})
        Measure(host, count);
    host.DestroyWindow();
}

const bench::Subject g_subject("combo_tree", &Run);

} // namespace
