// The tree combo box: adding and finding paths, and check states, against a stock tree that has the same
// items inserted and walked.
#include "vgui/composite/combo_tree.h"
#include "bench/bench.h"

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
    bench::Require(stock.Open() && combo.Create(CRect(0, 0, 100, 24), 200, 200, &host, 1), "creating a tree");
    const auto compare = [count](const char* what, const bench::Work& ours,
                                 const bench::Yardstick& yardstick) {
        bench::Compare(what, count, "paths", ours, yardstick);
    };
    const auto addAll = [&] {
        for (const std::wstring& path : paths)
            combo.AddString(path.c_str());
    };
    compare("every path added", {addAll, [&] { combo.ResetContent(); }},
            {"stock tree: items inserted", {[&] { stock.Fill(paths); }, [&] { stock.DeleteAllItems(); }}});
    const auto findAll = [&] {
        for (const std::wstring& path : paths)
            combo.FindString(path.c_str(), nullptr);
    };
    compare("every path found", {findAll}, {"stock tree: all labels read", {[&] { stock.Read(); }}});

    int state = 1;
    const bench::Yardstick walk{"stock tree: all states set", {[&] { stock.Walk(state = 3 - state); }}};
    const HTREEITEM parent = combo.FindString(L"parent", nullptr);
    BOOL check = FALSE;
    compare("their parent checked or unchecked", {[&] { combo.SetCheck(parent, check = !check); }}, walk);
    const auto checkEach = [&, first = combo.GetNextItem(parent)] {
        for (HTREEITEM item = first; item != nullptr; item = combo.GetNextItem(item))
            combo.SetCheck(item, TRUE);
    };
    compare("checked one after the other", {checkEach, [&] { combo.SetCheck(parent, FALSE); }}, walk);
    combo.DestroyWindow();
    stock.DestroyWindow();
}

void Run()
{
    CWnd host;
    bench::Require(
        host.CreateEx(0, AfxRegisterWndClass(0), L"bench", WS_POPUP, CRect(50, 50, 400, 500), nullptr, 0),
        "creating a window");
    for (const int count : bench::Sizes({100, 1000, 10000}))
        Measure(host, count);
    host.DestroyWindow();
}

const bench::Subject g_subject("combo_tree", &Run);

} // namespace
