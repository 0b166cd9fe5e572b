#include "tests/composite/combo_tree_fixture.h"

#include <random>
#include <string_view>

using namespace support;

namespace
{

class ComboTreePaths : public ComboTreeTest
{
protected:
    // The labels of an item's children, each with its own in brackets.
    [[nodiscard]] std::wstring Outline(HTREEITEM parent = nullptr) const
    {
        std::wstring text;
        HTREEITEM child = parent != nullptr ? tree.GetChildItem(parent) : tree.GetRootItem();
        for (; child != nullptr; child = tree.GetNextSiblingItem(child)) {
            text += std::wstring_view(tree.GetItemText(child));
            if (tree.GetChildItem(child) != nullptr)
                text += L"(" + Outline(child) + L")";
            text += L" ";
        }
        return text;
    }
    // The slow and obvious search.
    [[nodiscard]] HTREEITEM PlainFind(const CString& label, HTREEITEM parent) const
    {
        HTREEITEM child = parent != nullptr ? tree.GetChildItem(parent) : tree.GetRootItem();
        while (child != nullptr && tree.GetItemText(child) != label)
            child = tree.GetNextSiblingItem(child);
        return child;
    }
    [[nodiscard]] HTREEITEM AnyItem()
    {
        HTREEITEM item = tree.GetRootItem();
        for (UINT steps = tree.GetCount() > 0 ? random() % tree.GetCount() : 0; steps > 0; --steps)
            item = combo.GetNextItem(item);
        return item;
    }
    [[nodiscard]] std::wstring AnyLabel() { return std::wstring(1, L"abcABC"[random() % 6]); }
    void ChangeByHost();

    std::mt19937 random{4711};
};

int CALLBACK CompareBackwards(LPARAM one, LPARAM other, LPARAM)
{
    return one < other ? 1 : one > other ? -1 : 0;
}

void ComboTreePaths::ChangeByHost()
{
    const HTREEITEM item = AnyItem();
    const HTREEITEM parent = item != nullptr && random() % 4 != 0 ? item : TVI_ROOT;
    const std::wstring label = AnyLabel();
    switch (random() % 10) {
    case 0:
    case 1:
    case 2: {
        const HTREEITEM first = parent == TVI_ROOT ? tree.GetRootItem() : tree.GetChildItem(parent);
        const HTREEITEM places[]{TVI_FIRST, TVI_LAST, TVI_SORT, first != nullptr ? first : TVI_LAST};
        const HTREEITEM made = tree.InsertItem(label.c_str(), parent, places[random() % 4]);
        tree.SetItemData(made, random() % 9);
        break;
    }
    case 3: {
        TVINSERTSTRUCTA narrow{};
        narrow.hParent = parent;
        narrow.hInsertAfter = TVI_FIRST;
        narrow.item.mask = TVIF_TEXT;
        char text[] = "a";
        narrow.item.pszText = text;
        tree.SendMessage(TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&narrow));
        break;
    }
    case 4:
    case 5:
        tree.SetItemText(item, label.c_str());
        break;
    case 6:
        if (item != nullptr && (tree.GetCount() > 30 || tree.GetChildItem(item) == nullptr))
            tree.DeleteItem(item);
        break;
    case 7:
        tree.SortChildren(parent);
        break;
    case 8: {
        TVSORTCB sort{parent, &CompareBackwards, 0};
        tree.SortChildrenCB(&sort);
        break;
    }
    default:
        combo.AddString((label + L"/" + AnyLabel() + L"/" + AnyLabel()).c_str());
        break;
    }
}

} // namespace

TEST_F(ComboTreePaths, AddsWhatIsMissing)
{
    Open();
    struct Case {
        LPCWSTR path, returned, outline;
    };
    for (const Case& added :
         {Case{nullptr, nullptr, L""}, Case{L"", nullptr, L""}, Case{L"A/B/C", L"C", L"A(B(C ) ) "},
          Case{L"A/B/D", L"D", L"A(B(C D ) ) "}, Case{L"A/B", nullptr, L"A(B(C D ) ) "},
          Case{L"A/", nullptr, L"A(B(C D ) ) "}, Case{L"a", L"a", L"A(B(C D ) ) a "},
          Case{L"a//x", L"x", L"A(B(C D ) ) a((x ) ) "}, Case{L"a//x", nullptr, L"A(B(C D ) ) a((x ) ) "},
          Case{L"/q", L"q", L"A(B(C D ) ) a((x ) ) (q ) "}}) {
        const HTREEITEM item = combo.AddString(added.path);
        ASSERT_EQ(item != nullptr, added.returned != nullptr);
        EXPECT_EQ(tree.GetItemText(item), added.returned != nullptr ? added.returned : L"");
        EXPECT_EQ(Outline(), added.outline);
    }
    EXPECT_EQ(tree.GetCheckState(Find(L"A/B")), ComboTreeNoCheck);
    EXPECT_EQ(Told(), Codes{});
}

TEST_F(ComboTreePaths, FindsExactlyTheFirst)
{
    Open(true);
    EXPECT_EQ(combo.FindChildItem(L"A", nullptr), nullptr);
    const HTREEITEM a = tree.InsertItem(L"A");
    const HTREEITEM b = tree.InsertItem(L"B", a);
    tree.InsertItem(L"C", tree.InsertItem(L"A")); // a second A
    const HTREEITEM c = combo.AddString(L"A/B/C");
    EXPECT_EQ(tree.GetCheckState(c), ComboTreeUnchecked);
    for (const auto& [path, parent, item] : {std::tuple<LPCWSTR, HTREEITEM, HTREEITEM>{L"A", nullptr, a},
                                             {L"A/B", nullptr, b},
                                             {L"A/B/C", nullptr, c},
                                             {L"A/B/", nullptr, b},
                                             {L"B/C", a, c},
                                             {L"C", b, c},
                                             {L"A/C", nullptr, nullptr},
                                             {L"a", nullptr, nullptr},
                                             {L"A/B/C/D", nullptr, nullptr},
                                             {L"/A", nullptr, nullptr},
                                             {L"", nullptr, nullptr},
                                             {nullptr, nullptr, nullptr},
                                             {L"B", nullptr, nullptr},
                                             {L"x", c, nullptr}}) {
        EXPECT_EQ(combo.FindString(path, parent), item);
        tree.SelectItem(nullptr);
        EXPECT_EQ(combo.SelectString(path, parent), item);
        EXPECT_EQ(combo.GetCurSel(), item);
    }
    EXPECT_EQ(combo.GetTreePath(c), L"A/B/C");
    EXPECT_EQ(combo.GetTreePath(nullptr), L"");
    tree.SelectItem(c);
    EXPECT_EQ(combo.GetCurrentTreePath(), L"A/B/C");
    EXPECT_EQ(combo.GetCurrentTreeItem(), L"C");
    combo.SetPathDelimiter(L'\\');
    EXPECT_EQ(combo.GetPathDelimiter(), L'\\');
    EXPECT_EQ(combo.FindString(L"A\\B\\C", nullptr), c);
    EXPECT_EQ(combo.FindString(L"A/B/C", nullptr), nullptr);
    EXPECT_EQ(combo.GetTreePath(c), L"A\\B\\C");
    combo.SetPathDelimiter(0);
    EXPECT_EQ(combo.FindString(L"A", nullptr), a);
}

TEST_F(ComboTreePaths, ItemTextsAndData)
{
    Open();
    const HTREEITEM a = combo.AddString(L"a/b");
    const HTREEITEM empty = tree.InsertItem(L"");
    CString text(L"old");
    EXPECT_EQ(combo.GetLBText(a, text), 0);
    EXPECT_EQ(text, L"b");
    for (const HTREEITEM none : {empty, HTREEITEM{}}) {
        EXPECT_EQ(combo.GetLBText(none, text), -1);
        EXPECT_EQ(text, L"");
    }
    constexpr DWORD_PTR kData = 0x100000007;
    EXPECT_EQ(combo.SetItemData(a, kData), 0);
    EXPECT_EQ(combo.SetItemData(nullptr, 1), -1);
    EXPECT_EQ(combo.GetItemData(a), kData);
    EXPECT_EQ(combo.GetItemData(nullptr), 0u);
    EXPECT_EQ(combo.FindChildItemData(7, Find(L"a")), a);
    EXPECT_EQ(combo.FindChildItemData(7, nullptr), nullptr);
    EXPECT_EQ(combo.FindChildItemData(0, nullptr), Find(L"a"));
    EXPECT_EQ(combo.FindChildItemData(0, a), nullptr);
}

// Whatever the host does to the tree itself, searches find what is there now, and the first of it.
TEST_F(ComboTreePaths, KeepUpWithTheHost)
{
    Open();
    for (int step = 0; step < 1000; ++step) {
        ChangeByHost();
        const HTREEITEM parent = random() % 3 == 0 ? nullptr : AnyItem();
        const std::wstring label = AnyLabel();
        ASSERT_EQ(combo.FindChildItem(label.c_str(), parent), PlainFind(label.c_str(), parent)) << step;
    }
    combo.ResetContent();
    EXPECT_EQ(combo.FindChildItem(L"a", nullptr), nullptr);
}

// The tree changes labels by itself when a label edit ends, and those that the host is asked for.
TEST_F(ComboTreePaths, KeepUpWithLabelEditsAndCallbacks)
{
    Open();
    const HTREEITEM a = combo.AddString(L"a");
    const HTREEITEM b = combo.AddString(L"b");
    const auto changeUnannounced = [&](HTREEITEM item, LPCWSTR label) {
        TVITEMW change{};
        change.mask = TVIF_TEXT;
        change.hItem = item;
        change.pszText = const_cast<LPWSTR>(label);
        ::CallWindowProcW(*tree.GetSuperWndProcAddr(), tree.m_hWnd, TVM_SETITEMW, 0,
                          reinterpret_cast<LPARAM>(&change));
    };
    const UINT ends[]{WM_COMMAND, WM_PARENTNOTIFY, TVM_ENDEDITLABELNOW};
    for (const UINT end : ends) {
        ASSERT_EQ(combo.FindChildItem(L"a", nullptr), a);
        changeUnannounced(a, L"edited");
        EXPECT_EQ(combo.FindChildItem(L"a", nullptr), nullptr);
        EXPECT_EQ(combo.FindChildItem(L"b", nullptr), b);
        changeUnannounced(a, L"b");
        tree.SendMessage(end, 0, 0);
        EXPECT_EQ(combo.FindChildItem(L"b", nullptr), a);
        tree.SetItemText(a, L"a");
    }
    const HTREEITEM asked = tree.InsertItem(LPSTR_TEXTCALLBACK);
    for (const LPCWSTR label : {L"one", L"two"}) {
        changeUnannounced(asked, label);
        EXPECT_EQ(combo.FindChildItem(label, nullptr), asked);
    }
    EXPECT_EQ(combo.FindChildItem(L"one", nullptr), nullptr);
}

TEST_F(ComboTreePaths, LengthAndDepthDoNotMatter)
{
    Open(true);
    std::wstring path(70000, L'x');
    EXPECT_NE(combo.AddString(path.c_str()), nullptr);
    EXPECT_EQ(combo.AddString(path.c_str()), nullptr);
    combo.ResetContent();
    constexpr int kDepth = 3000;
    path = L"d";
    for (int i = 1; i < kDepth; ++i)
        path += L"/d";
    const HTREEITEM deepest = combo.AddString(path.c_str());
    const HTREEITEM top = tree.GetRootItem();
    EXPECT_EQ(tree.GetCount(), static_cast<UINT>(kDepth));
    EXPECT_EQ(combo.FindString(path.c_str(), nullptr), deepest);
    EXPECT_EQ(std::wstring_view(combo.GetTreePath(deepest)), path);
    combo.SetCheck(deepest, TRUE);
    EXPECT_EQ(combo.GetFirstCheckedItem(), top);
    combo.SetCheck(top, FALSE);
    EXPECT_FALSE(combo.IsItemChecked(deepest));
    EXPECT_EQ(combo.GetNextCheckedItem(top), nullptr);
    EXPECT_EQ(combo.GetLastItem(top), deepest);
    combo.CollapseBranch(top);
    EXPECT_EQ(combo.DeleteString(top), 0);
    EXPECT_EQ(combo.FindString(L"d", nullptr), nullptr);
}
