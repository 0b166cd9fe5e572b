#include "tests/composite/combo_tree_fixture.h"

#include <memory>
#include <random>

using namespace support;

namespace
{

// A tree of plain objects, in which everything is done in the slow and obvious way.
struct Node {
    int state = ComboTreeUnchecked;
    Node* parent = nullptr;
    HTREEITEM item = nullptr;
    std::vector<std::unique_ptr<Node>> children;

    void Push(int to)
    {
        state = to;
        for (const auto& child : children)
            child->Push(to);
    }
    void UpdateAbove()
    {
        for (Node* node = parent; node != nullptr && node->item != nullptr; node = node->parent) {
            size_t full = 0;
            size_t some = 0;
            for (const auto& child : node->children) {
                full += child->state == ComboTreeChecked;
                some += child->state == ComboTreeChecked || child->state == ComboTreePartlyChecked;
            }
            node->state = full == node->children.size() ? ComboTreeChecked
                          : some > 0                    ? ComboTreePartlyChecked
                                                        : ComboTreeUnchecked;
        }
    }
    void Apply(int op)
    {
        if (op == ComboTreeToggle)
            op = state == 0 ? -1 : state == ComboTreeUnchecked ? ComboTreeCheck : ComboTreeUncheck;
        if (op == ComboTreeCheck || op == ComboTreeUncheck)
            state = op == ComboTreeCheck ? ComboTreeChecked : ComboTreeUnchecked;
        if (state == ComboTreeUnchecked || state == ComboTreeChecked)
            Push(state);
        if (state != 0 || op == ComboTreeReapply)
            UpdateAbove();
    }
    void Flatten(std::vector<Node*>& into)
    {
        for (const auto& child : children) {
            into.push_back(child.get());
            child->Flatten(into);
        }
    }
};

class ComboTreeChecks : public ComboTreeTest
{
protected:
    void Grow(int count)
    {
        std::vector<Node*> nodes{&root};
        for (int i = 0; i < count; ++i) {
            Node& parent = *nodes[random() % nodes.size()];
            parent.children.push_back(std::make_unique<Node>());
            Node& made = *parent.children.back();
            made.parent = &parent;
            made.item = tree.InsertItem(L"n", parent.item != nullptr ? parent.item : TVI_ROOT);
            SetRaw(made, ComboTreeUnchecked);
            nodes.push_back(&made);
        }
        order.clear();
        root.Flatten(order);
    }
    // Past the combo box, as a host may.
    void SetRaw(Node& node, int state)
    {
        node.state = state;
        tree.SetItemState(node.item, INDEXTOSTATEIMAGEMASK(state), TVIS_STATEIMAGEMASK);
    }
    void ExpectSame(const std::string& after) const
    {
        for (size_t i = 0; i < order.size(); ++i)
            ASSERT_EQ(tree.GetCheckState(order[i]->item), order[i]->state) << i << " after " << after;
    }
    [[nodiscard]] HTREEITEM ItemAt(size_t index) const
    {
        return index < order.size() ? order[index]->item : nullptr;
    }
    // The stated walk: into what is partly checked, past what is not, into the latter when nothing follows
    // it.
    [[nodiscard]] HTREEITEM NextChecked(size_t from) const
    {
        while (from < order.size() && order[from]->state != ComboTreeChecked) {
            const Node& node = *order[from];
            const auto& family = node.parent->children;
            const bool isLast = family.back().get() == &node;
            ++from;
            if (node.state != ComboTreePartlyChecked && !isLast)
                while (order[from]->parent != node.parent)
                    ++from;
        }
        return ItemAt(from);
    }
    void ExpectWalks() const
    {
        EXPECT_EQ(combo.GetFirstCheckedItem(), NextChecked(0));
        HTREEITEM before = nullptr;
        for (size_t i = 0; i < order.size(); ++i) {
            const HTREEITEM item = order[i]->item;
            ASSERT_EQ(combo.GetNextCheckedItem(item), NextChecked(i + 1)) << i;
            ASSERT_EQ(combo.GetPrevCheckedItem(item), before) << i;
            ASSERT_EQ(combo.IsItemChecked(item), order[i]->state == ComboTreeChecked);
            if (order[i]->state == ComboTreeChecked)
                before = item;
        }
    }

    std::mt19937 random{99};
    Node root;
    std::vector<Node*> order; // without the root, parents first
};

} // namespace

TEST_F(ComboTreeChecks, FollowTheModel)
{
    Open(true);
    Grow(120);
    for (int step = 0; step < 250; ++step) {
        Node& node = *order[random() % order.size()];
        const int op = static_cast<int>(random() % 7);
        if (op == 6) // states that do not fit together, from the host
            SetRaw(node, static_cast<int>(random() % 4));
        else if (op >= 4) {
            const bool check = op == 4;
            const bool checked = node.state == ComboTreeChecked;
            combo.SetCheck(node.item, check);
            node.Apply(check == checked ? ComboTreeReapply : check ? ComboTreeCheck : ComboTreeUncheck);
            EXPECT_EQ(Told(), check == checked ? Codes{} : Codes{CBN_CHECKCHANGE});
        } else {
            EXPECT_TRUE(tree.SetCheckState(node.item, op));
            node.Apply(op);
            EXPECT_EQ(Told(), op == ComboTreeReapply ? Codes{} : Codes{CBN_CHECKCHANGE});
        }
        ExpectSame(std::to_string(step) + ", op " + std::to_string(op));
        if (step % 10 == 0)
            ExpectWalks();
    }
}

TEST_F(ComboTreeChecks, OneAfterTheOther)
{
    Open(true);
    Add({L"p/a", L"p/b", L"p/c"});
    const HTREEITEM parent = Find(L"p");
    const auto states = [&] {
        std::string text;
        for (const LPCWSTR path : {L"p", L"p/a", L"p/b", L"p/c"})
            text += std::to_string(tree.GetCheckState(Find(path)));
        return text;
    };
    combo.SetCheck(parent, TRUE);
    EXPECT_EQ(states(), "2222");
    combo.SetCheck(Find(L"p/b"), FALSE);
    EXPECT_EQ(states(), "3212");
    EXPECT_FALSE(combo.IsItemChecked(parent));
    combo.SetCheck(parent, FALSE); // stays partly checked
    EXPECT_EQ(states(), "3212");
    combo.SetCheck(Find(L"p/b"), TRUE);
    EXPECT_EQ(states(), "2222");
    tree.SetCheckState(parent, ComboTreeToggle);
    EXPECT_EQ(states(), "1111");
    combo.SetCheck(Find(L"p/c"), TRUE);
    tree.SetCheckState(parent, ComboTreeToggle);
    EXPECT_EQ(states(), "1111");
    // An item without a box is no reason to leave those above it wrong.
    tree.SetItemState(Find(L"p/a"), INDEXTOSTATEIMAGEMASK(ComboTreeChecked), TVIS_STATEIMAGEMASK);
    tree.SetItemState(Find(L"p/b"), INDEXTOSTATEIMAGEMASK(ComboTreeNoCheck), TVIS_STATEIMAGEMASK);
    tree.SetCheckState(Find(L"p/b"), ComboTreeReapply);
    EXPECT_EQ(states(), "3201");
}

TEST_F(ComboTreeChecks, NothingWithoutBoxesOrItems)
{
    EXPECT_FALSE(tree.SetCheckState(nullptr, ComboTreeCheck));
    EXPECT_EQ(combo.GetFirstCheckedItem(), nullptr);
    Open();
    const HTREEITEM a = combo.AddString(L"a");
    EXPECT_FALSE(combo.SetCheck(a, TRUE));
    tree.SetItemState(a, INDEXTOSTATEIMAGEMASK(2), TVIS_STATEIMAGEMASK);
    EXPECT_FALSE(combo.IsItemChecked(a));
    EXPECT_EQ(combo.GetFirstCheckedItem(), nullptr);
    combo.DestroyWindow();
    combo.SetHasCheckboxes(TRUE);
    ASSERT_TRUE(combo.Create(CRect(0, 0, 99, 20), 10, 10, &host, kComboId));
    EXPECT_FALSE(combo.SetCheck(nullptr, TRUE));
    EXPECT_FALSE(combo.IsItemChecked(nullptr));
    EXPECT_EQ(combo.GetNextCheckedItem(nullptr), nullptr);
    EXPECT_EQ(combo.GetPrevCheckedItem(nullptr), nullptr);
    EXPECT_FALSE(tree.SetCheckState(combo.AddString(L"b"), 4));
    EXPECT_TRUE(host.CommandCodes(kComboId).empty());
}

TEST_F(ComboTreeChecks, WalksFollowTheOrder)
{
    Open(true);
    EXPECT_EQ(combo.GetLastSibling(nullptr), nullptr);
    Grow(80);
    for (size_t i = 0; i < order.size(); ++i) {
        Node& node = *order[i];
        EXPECT_EQ(combo.GetNextItem(node.item), ItemAt(i + 1));
        EXPECT_EQ(combo.GetPrevItem(node.item), i > 0 ? order[i - 1]->item : nullptr);
        const Node* last = &node;
        while (!last->children.empty())
            last = last->children.back().get();
        EXPECT_EQ(combo.GetLastItem(node.item), last->item);
        const auto& family = node.parent->children;
        size_t place = 0;
        while (family[place].get() != &node)
            ++place;
        EXPECT_EQ(combo.GetLastSibling(node.item),
                  place + 1 < family.size() ? family[place + 1]->item : order.front()->item);
    }
    EXPECT_EQ(combo.GetLastItem(nullptr), order.back()->item);
    EXPECT_EQ(combo.GetLastSibling(nullptr), order.front()->item);
    EXPECT_EQ(combo.GetNextItem(nullptr), nullptr);
    EXPECT_EQ(combo.GetPrevItem(nullptr), nullptr);
}

TEST_F(ComboTreeChecks, BranchesExpandAndCollapse)
{
    Open();
    for (const LPCWSTR path : {L"a/b/c", L"a/d", L"e/f", L"g/h"})
        combo.AddString(path);
    const auto expanded = [&] {
        std::string text;
        for (const LPCWSTR path : {L"a", L"a/b", L"a/d", L"e", L"g"})
            text += (tree.GetItemState(Find(path), TVIS_EXPANDED) & TVIS_EXPANDED) != 0 ? '1' : '0';
        return text;
    };
    tree.SelectItem(Find(L"a"));
    combo.ExpandBranch(nullptr);
    combo.ExpandBranch(Find(L"a/d"));
    EXPECT_EQ(expanded(), "00000");
    combo.ExpandBranch(Find(L"a"));
    EXPECT_EQ(expanded(), "11000");
    combo.ExpandBranch(Find(L"e"));
    combo.ExpandBranch(Find(L"g"));
    combo.CollapseAllSiblings(nullptr);
    EXPECT_EQ(expanded(), "11011");
    combo.CollapseAllSiblings(Find(L"e"));
    EXPECT_EQ(expanded(), "01010");
    combo.ExpandBranch(Find(L"a"));
    combo.CollapseBranch(Find(L"a"));
    combo.CollapseBranch(nullptr);
    EXPECT_EQ(expanded(), "00010");

    // The selected item is in view afterwards.
    for (int i = 0; i < 60; ++i)
        combo.AddString((L"a/" + std::to_wstring(i)).c_str());
    tree.SelectItem(Find(L"g"));
    combo.ExpandBranch(Find(L"a"));
    CRect row;
    EXPECT_TRUE(tree.GetItemRect(Find(L"g"), row, FALSE));
    CRect client;
    tree.GetClientRect(client);
    EXPECT_TRUE(row.top >= 0 && row.top < client.bottom);
}

TEST_F(ComboTreeChecks, DepthDoesNotMatter)
{
    Open(true);
    constexpr int kDepth = 3000;
    std::wstring path = L"d";
    for (int i = 1; i < kDepth; ++i)
        path += L"/d";
    const HTREEITEM deepest = combo.AddString(path.c_str());
    const HTREEITEM top = tree.GetRootItem();
    combo.SetCheck(deepest, TRUE);
    EXPECT_EQ(combo.GetFirstCheckedItem(), top);
    combo.SetCheck(top, FALSE);
    EXPECT_FALSE(combo.IsItemChecked(deepest));
    EXPECT_EQ(combo.GetNextCheckedItem(top), nullptr);
    EXPECT_EQ(combo.GetLastItem(top), deepest);
    combo.CollapseBranch(top);
}
