#include "vgui/controls/tree_controls.h"

#include "tests/support/host_test.h"
#include "vgui/foundation/gui_manager.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace support;

namespace
{

constexpr UINT kTreeId = 300;
constexpr UINT kCheckClicked = 3324;
constexpr DWORD kTreeStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_LINESATROOT;

class OpenTree : public VCheckTreeCtrl
{
public:
    using VCheckTreeCtrl::checkImages;
    using VCheckTreeCtrl::SetNodeCheckStat;
    using VCheckTreeCtrl::UpdateChildStat;
    using VCheckTreeCtrl::UpdateParentStat;
};

// A tree of plain objects, propagated in the slow and obvious way.
struct Model {
    int state = 0;
    Model* parent = nullptr;
    HTREEITEM item = nullptr;
    std::vector<std::unique_ptr<Model>> children;

    void SetDown(int to)
    {
        state = to;
        for (const auto& child : children)
            child->SetDown(to);
    }
    void UpdateUp()
    {
        for (Model* node = parent; node != nullptr && node->parent != nullptr; node = node->parent) {
            int sums[3] = {};
            for (const auto& child : node->children)
                ++sums[child->state];
            const int all = static_cast<int>(node->children.size());
            node->state = sums[1] == all ? 1 : sums[0] == all ? 0 : 2;
        }
    }
    void Set(int to)
    {
        SetDown(to);
        UpdateUp();
    }
    void ReverseBelow()
    {
        for (const auto& child : children)
            child->Set(child->state == 0 ? 1 : 0);
        for (const auto& child : children)
            child->ReverseBelow();
    }
    int Adjust()
    {
        if (children.empty())
            return state;
        size_t unchecked = 0;
        for (const auto& child : children) {
            child->state = child->Adjust();
            unchecked += child->state == 0;
        }
        return unchecked == 0 ? 1 : unchecked == children.size() ? 0 : 2;
    }
    Model& Add(OpenTree& tree)
    {
        children.push_back(std::make_unique<Model>());
        children.back()->parent = this;
        children.back()->item = tree.InsertItem(L"n", item);
        return *children.back();
    }
};

// A host's tree that wants to hear of deletions itself.
class ListeningTree : public VTreeCtrl
{
public:
    using VTreeCtrl::m_hHot;
    int deletions = 0;

private:
    afx_msg void OnDeleteItem(NMHDR*, LRESULT* result)
    {
        ++deletions;
        *result = 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ListeningTree, VTreeCtrl)
    ON_NOTIFY_REFLECT(TVN_DELETEITEM, &ListeningTree::OnDeleteItem)
END_MESSAGE_MAP()

class TreeControls : public HostTest
{
protected:
    void Open(DWORD style = kTreeStyle, DWORD exStyle = 0)
    {
        ASSERT_TRUE(host.Open({240, 300}));
        ASSERT_TRUE(tree.CreateEx(exStyle, style, CRect(10, 10, 230, 290), &host, kTreeId));
        root.item = TVI_ROOT;
        PumpMessages();
    }

    // All nodes but the root, parents first.
    std::vector<Model*> Grow(int count)
    {
        std::vector<Model*> nodes;
        while (static_cast<int>(nodes.size()) < count) {
            const size_t place = random() % (nodes.size() + 1);
            nodes.push_back(&(place == 0 ? root : *nodes[place - 1]).Add(tree));
        }
        return nodes;
    }
    void ExpectSame(const std::vector<Model*>& nodes, const char* after)
    {
        for (size_t i = 0; i < nodes.size(); ++i) {
            int image = -1;
            int selected = -1;
            tree.GetItemImage(nodes[i]->item, image, selected);
            EXPECT_EQ(image, nodes[i]->state) << "node " << i << " after " << after;
            EXPECT_EQ(selected, image);
        }
    }

    // A point of an item's row, in screen coordinates.
    enum class Part { Button, Icon, Label, Right, Left };
    [[nodiscard]] CPoint PointOf(HTREEITEM item, Part part) const
    {
        static constexpr UINT kFlags[] = {TVHT_ONITEMBUTTON, TVHT_ONITEMICON, TVHT_ONITEMLABEL,
                                          TVHT_ONITEMRIGHT, TVHT_ONITEMINDENT};
        CRect row;
        EXPECT_TRUE(tree.GetItemRect(item, row, FALSE));
        for (int x = row.left; x < row.right; ++x) {
            UINT hit = 0;
            const CPoint point(x, row.CenterPoint().y);
            if (tree.HitTest(point, &hit) == item && hit == kFlags[static_cast<int>(part)])
                return ClientToScreen(tree.m_hWnd, point + CSize(2, 0));
        }
        ADD_FAILURE() << "no such part";
        return {};
    }
    void ClickOn(HTREEITEM item, Part part) { Click(PointOf(item, part)); }

    [[nodiscard]] std::wstring Outline(CTreeCtrl& shown, HTREEITEM item) const
    {
        std::wstring text;
        for (HTREEITEM child = shown.GetChildItem(item); child != nullptr;
             child = shown.GetNextSiblingItem(child)) {
            text += shown.GetItemText(child);
            text += std::to_wstring(shown.GetItemData(child));
            const std::wstring below = Outline(shown, child);
            if (!below.empty())
                text += L"(" + below + L")";
        }
        return text;
    }

    OpenTree tree;
    Model root;
    std::mt19937 random{4711};
};

} // namespace

TEST_F(TreeControls, PropagatesLikeThePlainModel)
{
    Open();
    EXPECT_FALSE(tree.IsAllChecked());
    EXPECT_FALSE(tree.IsNoneChecked());
    EXPECT_FALSE(AdjustTreeCtrlCheckState(tree));
    const std::vector<Model*> nodes = Grow(120);
    EXPECT_TRUE(tree.IsNoneChecked());
    for (int i = 0; i < 60; ++i) {
        Model& node = *nodes[random() % nodes.size()];
        const bool check = random() % 2 != 0;
        check ? tree.Check(node.item) : tree.Uncheck(node.item);
        node.Set(check ? 1 : 0);
        ExpectSame(nodes, "a toggle");
    }
    for (int i = 0; i < 3; ++i) {
        tree.SendMessage(WM_COMMAND, 32773);
        root.ReverseBelow();
        ExpectSame(nodes, "reversing");
        Model& node = *nodes[random() % nodes.size()];
        tree.Check(node.item);
        node.Set(1);
    }
    for (Model* node : nodes) {
        node->state = static_cast<int>(random() % 3);
        HTREEITEM item = node->item;
        tree.SetNodeCheckStat(item, static_cast<CTC_CHECKSTAT>(node->state));
    }
    EXPECT_TRUE(AdjustTreeCtrlCheckState(tree));
    for (const auto& child : root.children)
        child->state = child->Adjust();
    ExpectSame(nodes, "adjusting");

    tree.SendMessage(WM_COMMAND, 32771);
    EXPECT_TRUE(tree.IsAllChecked());
    root.SetDown(1);
    ExpectSame(nodes, "checking all");
    tree.SendMessage(WM_COMMAND, 32772);
    EXPECT_TRUE(tree.IsNoneChecked());
    root.SetDown(0);
    ExpectSame(nodes, "unchecking all");
}

TEST_F(TreeControls, PartlyCheckedItemsGoDownAndUp)
{
    Open();
    Model& top = root.Add(tree);
    Model& middle = top.Add(tree);
    Model& leaf = middle.Add(tree);
    tree.SetNodeCheckStat(middle.item, CtcPartial);
    tree.UpdateChildStat(middle.item);
    EXPECT_EQ(tree.GetNodeCheckStat(leaf.item), CtcPartial);
    tree.UpdateParentStat(leaf.item);
    EXPECT_EQ(tree.GetNodeCheckStat(top.item), CtcPartial);

    // A foreign image is no state, and is not put over others.
    tree.SetItemImage(middle.item, 7, 7);
    EXPECT_EQ(tree.GetNodeCheckStat(middle.item), CtcInvalid);
    tree.SetNodeCheckStat(middle.item, CtcInvalid);
    int image = 0;
    EXPECT_TRUE(tree.GetItemImage(middle.item, image, image));
    EXPECT_EQ(image, 7);
}

TEST_F(TreeControls, ClicksToggleSelectExpandAndTell)
{
    Open();
    Model& top = root.Add(tree);
    Model& first = top.Add(tree);
    Model& second = top.Add(tree);
    Model& other = root.Add(tree);
    struct Told {
        HTREEITEM item;
        LPARAM old;
    };
    const auto expectTold = [&](const std::vector<Told>& told) {
        const RecordedMessages messages = host.Messages(kCheckClicked);
        ASSERT_EQ(messages.size(), told.size());
        for (size_t i = 0; i < told.size(); ++i) {
            EXPECT_EQ(reinterpret_cast<HTREEITEM>(messages[i].wParam), told[i].item);
            EXPECT_EQ(messages[i].lParam, told[i].old);
        }
        host.Clear();
    };
    const auto stats = [&] {
        std::string text;
        for (const Model* node : {&top, &first, &second})
            text += std::to_string(tree.GetNodeCheckStat(node->item));
        return text;
    };

    // The button expands without selecting or toggling.
    tree.SelectItem(other.item);
    ClickOn(top.item, Part::Button);
    EXPECT_NE(tree.GetItemState(top.item, TVIS_EXPANDED) & TVIS_EXPANDED, 0u);
    EXPECT_EQ(tree.GetSelectedItem(), other.item);
    expectTold({});
    // It collapses where the control answers with more state than it was asked for.
    const bool collapses = (tree.GetItemState(top.item, TVIS_DROPHILITED) & TVIS_EXPANDED) != 0;
    ClickOn(top.item, Part::Button);
    EXPECT_EQ((tree.GetItemState(top.item, TVIS_EXPANDED) & TVIS_EXPANDED) == 0, collapses);
    tree.Expand(top.item, TVE_EXPAND);

    ClickOn(first.item, Part::Icon);
    EXPECT_EQ(stats(), "210");
    EXPECT_EQ(tree.GetSelectedItem(), first.item);
    expectTold({{first.item, 0}});
    ClickOn(top.item, Part::Icon);
    EXPECT_EQ(stats(), "000");
    expectTold({{top.item, 2}});
    ClickOn(top.item, Part::Icon);
    ClickOn(second.item, Part::Icon);
    ClickOn(second.item, Part::Icon);
    EXPECT_EQ(stats(), "111");
    expectTold({{top.item, 0}, {second.item, 1}, {second.item, 0}});

    // Label and right of it select only; the indent does nothing.
    ClickOn(other.item, Part::Label);
    EXPECT_EQ(tree.GetSelectedItem(), other.item);
    ClickOn(first.item, Part::Right);
    ClickOn(second.item, Part::Left);
    EXPECT_NE(tree.GetSelectedItem(), second.item);
    expectTold({});

    tree.SetClickOnTextCheck(true);
    EXPECT_TRUE(tree.GetclickOnTextCheck());
    ClickOn(first.item, Part::Label);
    EXPECT_EQ(stats(), "201");
    expectTold({{first.item, 1}});

    tree.SetUseCheck(false);
    EXPECT_FALSE(tree.GetUseCheck());
    EXPECT_EQ(tree.GetImageList(TVSIL_NORMAL), nullptr);
    ClickOn(second.item, Part::Label);
    EXPECT_EQ(stats(), "201");
    expectTold({});
    tree.SetUseCheck(true);
    EXPECT_EQ(tree.GetImageList(TVSIL_NORMAL), &tree.checkImages);
}

TEST_F(TreeControls, ContextMenuEndsHere)
{
    Open();
    root.Add(tree);
    host.RecordAlso(WM_CONTEXTMENU);
    tree.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(tree.m_hWnd), MAKELPARAM(50, 50));
    EXPECT_TRUE(host.Messages(WM_CONTEXTMENU).empty());
}

TEST_F(TreeControls, ChecksImagesAlsoOnASubclassedTree)
{
    ASSERT_TRUE(host.Open({240, 300}));
    const HWND plain = ::CreateWindowW(WC_TREEVIEWW, L"", kTreeStyle, 10, 10, 200, 200, host.m_hWnd, nullptr,
                                       AfxGetInstanceHandle(), nullptr);
    ASSERT_TRUE(tree.SubclassWindow(plain));
    ASSERT_EQ(tree.GetImageList(TVSIL_NORMAL), &tree.checkImages);
    EXPECT_EQ(tree.checkImages.GetImageCount(), 3);
    int width = 0;
    int height = 0;
    ::ImageList_GetIconSize(tree.checkImages, &width, &height);
    EXPECT_EQ(CSize(width, height), CSize(16, 16));

    // The boxes are opaque, since the list has no mask, and their marks differ.
    DibSurface shown(48, 16);
    std::string marks;
    for (int i = 0; i < 3; ++i) {
        tree.checkImages.Draw(&shown.DC(), i, CPoint(16 * i, 0), ILD_NORMAL);
        for (const int x : {8, 10}) {
            const COLORREF color = shown.Pixel(16 * i + x, 5);
            marks += GetGValue(color) > GetRValue(color) + 50 ? '1' : '0';
        }
    }
    EXPECT_EQ(shown.Count(DibSurface::kBackground), 0);
    EXPECT_EQ(marks, "000111");
}

TEST_F(TreeControls, CopiesTextsAndData)
{
    Open();
    const HTREEITEM source = tree.InsertItem(L"s");
    const HTREEITEM target = tree.InsertItem(L"t");
    const HTREEITEM a = tree.InsertItem(L"a", 1, 1, source);
    tree.SetItemData(a, 5);
    tree.InsertItem(L"b", a);
    tree.InsertItem(L"c", source);
    tree.InsertItem(L"z", target);
    EXPECT_TRUE(CopyTreeChildNode(tree, target, source));
    EXPECT_EQ(Outline(tree, TVI_ROOT), L"s0(a5(b0)c0)t0(z0a5(b0)c0)");
    EXPECT_EQ(tree.GetNodeCheckStat(tree.GetNextSiblingItem(tree.GetChildItem(target))), CtcUnchecked);

    // Into itself, and from a leaf.
    EXPECT_TRUE(CopyTreeChildNode(tree, a, source));
    EXPECT_EQ(Outline(tree, source), L"a5(b0a5(b0)c0)c0");
    EXPECT_TRUE(CopyTreeChildNode(tree, source, source));
    EXPECT_EQ(Outline(tree, source), L"a5(b0a5(b0)c0)c0a5(b0a5(b0)c0)c0");
    EXPECT_TRUE(CopyTreeChildNode(tree, target, tree.GetChildItem(a)));

    EXPECT_FALSE(CopyTreeChildNode(tree, nullptr, source));
    EXPECT_FALSE(CopyTreeChildNode(tree, target, nullptr));
    VTreeCtrl none;
    EXPECT_FALSE(CopyTreeChildNode(none, target, source));
}

TEST_F(TreeControls, ExpandsAndCollapses)
{
    Open();
    const HTREEITEM a = tree.InsertItem(L"a");
    const HTREEITEM b = tree.InsertItem(L"b", a);
    const HTREEITEM c = tree.InsertItem(L"c", b);
    const HTREEITEM d = tree.InsertItem(L"d");
    tree.InsertItem(L"e", d);
    const auto expanded = [&] {
        std::string text;
        for (const HTREEITEM item : {a, b, c, d})
            text += (tree.GetItemState(item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0 ? '1' : '0';
        return text;
    };
    ExpandTreeLevel(&tree, a);
    EXPECT_EQ(expanded(), "1001");
    CollapseTreeAtRoot(&tree);
    EXPECT_EQ(expanded(), "0000");
    ExpandTreeItem(&tree, a);
    EXPECT_EQ(expanded(), "1100");
    CollapseTreeAtRoot(&tree);
    ExpandTree(&tree);
    EXPECT_EQ(expanded(), "1101");
    // Children that the host adds while their parent is being expanded take part.
    const HTREEITEM late = tree.InsertItem(L"late", d);
    tree.InsertItem(L"later", late);
    CollapseTreeAtRoot(&tree);
    tree.Expand(d, TVE_COLLAPSE | TVE_COLLAPSERESET);
    host.SetAnswer([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const auto* header = reinterpret_cast<const NMTREEVIEW*>(lParam);
        if (message == WM_NOTIFY && header->hdr.code == TVN_ITEMEXPANDING && header->itemNew.hItem == d &&
            tree.GetChildItem(d) == nullptr)
            tree.InsertItem(L"y", tree.InsertItem(L"x", d));
        return {};
    });
    TVITEM lazy{};
    lazy.mask = TVIF_CHILDREN;
    lazy.hItem = d;
    lazy.cChildren = 1;
    tree.SetItem(&lazy);
    ExpandTree(&tree);
    host.SetAnswer({});
    EXPECT_NE(tree.GetItemState(tree.GetChildItem(d), TVIS_EXPANDED) & TVIS_EXPANDED, 0u);

    VTreeCtrl none;
    for (CTreeCtrl* missing : {static_cast<CTreeCtrl*>(nullptr), static_cast<CTreeCtrl*>(&none)}) {
        ExpandTree(missing);
        ExpandTreeItem(missing, a);
        ExpandTreeLevel(missing, a);
        CollapseTreeAtRoot(missing);
    }
}

TEST_F(TreeControls, NullItemsChangeNothing)
{
    Open();
    Model& item = root.Add(tree);
    EXPECT_EQ(tree.GetNodeCheckStat(nullptr), CtcInvalid);
    tree.Check(nullptr);
    tree.Uncheck(nullptr);
    tree.SetNodeCheckStat(nullptr, CtcChecked);
    tree.UpdateChildStat(nullptr);
    tree.UpdateParentStat(nullptr);
    ExpandTreeItem(&tree, nullptr);
    ExpandTreeLevel(&tree, nullptr);
    EXPECT_EQ(tree.GetNodeCheckStat(item.item), CtcUnchecked);
    OpenTree none;
    none.CheckAll();
    none.ReverseAll();
    none.SetUseCheck(false);
    EXPECT_FALSE(none.IsAllChecked());
    EXPECT_FALSE(AdjustTreeCtrlCheckState(none));
}

TEST_F(TreeControls, DepthDoesNotMatter)
{
    Open();
    tree.SetRedraw(FALSE);
    constexpr int kDepth = 6000;
    std::vector<HTREEITEM> chain{TVI_ROOT};
    for (int i = 0; i < kDepth; ++i)
        chain.push_back(tree.InsertItem(L"d", chain.back()));
    tree.Check(chain.back());
    EXPECT_TRUE(tree.IsAllChecked());
    tree.ReverseAll();
    EXPECT_EQ(tree.GetNodeCheckStat(chain.back()), kDepth % 2 == 0 ? CtcChecked : CtcUnchecked);
    EXPECT_TRUE(AdjustTreeCtrlCheckState(tree));
    EXPECT_TRUE(CopyTreeChildNode(tree, TVI_ROOT, chain[kDepth / 2]));
    tree.SetRedraw(TRUE);
}

TEST_F(TreeControls, HotItemIsForgottenWhateverADerivedClassHandles)
{
    ASSERT_TRUE(host.Open({240, 300}));
    ListeningTree listening;
    ASSERT_TRUE(listening.Create(kTreeStyle, CRect(10, 10, 230, 290), &host, kTreeId));
    const HTREEITEM item = listening.InsertItem(L"under the mouse");
    CRect label;
    listening.GetItemRect(item, label, TRUE);
    MoveTo(ClientToScreen(listening.m_hWnd, label.CenterPoint()));
    ASSERT_EQ(listening.m_hHot, item);
    listening.DeleteItem(item);
    EXPECT_EQ(listening.deletions, 1);
    EXPECT_EQ(listening.m_hHot, nullptr);
}

TEST_F(TreeControls, ShowsSelectionFocusAndHotItem)
{
    Open(kTreeStyle | TVS_SHOWSELALWAYS | WS_BORDER, WS_EX_CLIENTEDGE);
    const HTREEITEM first = tree.InsertItem(L"abcdef");
    const HTREEITEM second = tree.InsertItem(L"abcdef");
    tree.SelectItem(first);
    tree.SetFocus();
    const auto background = [&](HTREEITEM item) {
        CRect label;
        tree.GetItemRect(item, label, TRUE);
        return ClientPixel(tree.m_hWnd, label.TopLeft() + CSize(1, 1));
    };
    const auto edge = [&](HTREEITEM item) {
        CRect label;
        tree.GetItemRect(item, label, TRUE);
        return ClientPixel(tree.m_hWnd, CPoint(label.right - 1, label.top + 4));
    };
    tree.UpdateWindow();
    EXPECT_EQ(background(first), VGM.PropList.clrSelBk);
    EXPECT_EQ(background(second), ::GetSysColor(COLOR_WINDOW));
    ::SetFocus(host.m_hWnd);
    tree.UpdateWindow();
    EXPECT_EQ(background(first), VGM.Common.clrLight);

    MoveTo(PointOf(second, Part::Label));
    tree.UpdateWindow();
    EXPECT_EQ(edge(second), VGM.Common.clrHot);
    MoveTo(PointOf(first, Part::Label));
    tree.UpdateWindow();
    EXPECT_EQ(edge(first), VGM.Common.clrHot);
    EXPECT_EQ(edge(second), ::GetSysColor(COLOR_WINDOW));
    MoveTo(ClientToScreen(host.m_hWnd, {2, 2}));
    EXPECT_TRUE(PumpUntil([&] {
        tree.UpdateWindow();
        return edge(first) != VGM.Common.clrHot;
    }));

    MoveTo(PointOf(second, Part::Label));
    tree.DeleteItem(second);
    tree.UpdateWindow();
    EXPECT_EQ(WindowPixel(tree.m_hWnd, {0, 0}), VGM.List.clrFrame);
    EXPECT_EQ(WindowPixel(tree.m_hWnd, {1, 1}), RGB(255, 255, 255));
    tree.EnableWindow(FALSE);
    tree.UpdateWindow();
    EXPECT_EQ(WindowPixel(tree.m_hWnd, {0, 0}), VGM.Common.clrGray);
    EXPECT_EQ(WindowPixel(tree.m_hWnd, {1, 1}), ::GetSysColor(COLOR_BTNFACE));
    CRect label;
    tree.GetItemRect(first, label, TRUE);
    EXPECT_GT(CaptureClient(tree.m_hWnd).Count(VGM.Common.clrGray, label), 0);
}
