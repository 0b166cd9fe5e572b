// Check states in trees, against the least that must be done: visiting every item of a stock tree and setting
// its images.
#include "bench/bench.h"
#include "vgui/controls/tree_controls.h"

#include <string>
#include <vector>

namespace
{

constexpr DWORD kStyle = WS_POPUP | TVS_HASLINES | TVS_HASBUTTONS;
constexpr int kChildren = 10; // of every item that has any

// The first item has ten children, these have ten each, and so on.
template <class Tree>
std::vector<HTREEITEM> Fill(Tree& tree, int count)
{
    bench::Require(tree.CreateEx(0, kStyle, CRect(0, 0, 200, 200), nullptr, 0), "creating a tree");
    std::vector<HTREEITEM> items{tree.InsertItem(L"root")};
    for (int i = 1; i < count; ++i)
        items.push_back(tree.InsertItem((L"item " + std::to_wstring(i)).c_str(),
                                        items[static_cast<size_t>((i - 1) / kChildren)]));
    return items;
}

void VisitAll(CTreeCtrl& tree, HTREEITEM item, int image)
{
    for (; item != nullptr; item = tree.GetNextSiblingItem(item)) {
        tree.SetItemImage(item, image, image);
        VisitAll(tree, tree.GetChildItem(item), image);
    }
}

void Run()
{
    for (const int count : bench::Sizes({1000, 10000, 100000})) {
        CTreeCtrl stock;
        VCheckTreeCtrl ours;
        Fill(stock, count);
        const std::vector<HTREEITEM> items = Fill(ours, count);
        int image = 0;
        const bench::Yardstick visit{"stock tree: every item's images set",
                                     {[&] { VisitAll(stock, stock.GetRootItem(), image = 1 - image); }}};
        bool check = false;
        const auto compare = [&](const char* what, const std::function<void()>& body) {
            bench::Compare(what, count, "items", {body}, visit);
        };
        compare("the root checked or unchecked", [&] {
            check = !check;
            check ? ours.Check(items.front()) : ours.Uncheck(items.front());
        });
        compare("all reversed", [&] { ours.ReverseAll(); });
        compare("states taken from the leaves", [&] { AdjustTreeCtrlCheckState(ours); });
        // Ten leaves all over the tree, their parents with them.
        compare("ten leaves checked or unchecked", [&] {
            check = !check;
            for (size_t i = 0; i < 10; ++i) {
                const HTREEITEM leaf = items[items.size() - 1 - i * items.size() / 20];
                check ? ours.Check(leaf) : ours.Uncheck(leaf);
            }
        });
        ours.DestroyWindow();
        stock.DestroyWindow();
    }
}

const bench::Subject g_subject("check_tree", &Run);

} // namespace
