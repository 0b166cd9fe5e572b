// The check boxes of VCheckTreeCtrl, and the walks through tree controls.
#include "vgui/controls/tree_controls.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/library_instance.h"
#include "vgui/res/resource.h"

#include <vector>

namespace
{

constexpr int kImageSize = 16; // pixels
constexpr int kImageCount = 3;
constexpr int kImageGrow = 10;

constexpr size_t kNoParent = static_cast<size_t>(-1);

struct TreeNode {
    HTREEITEM item;
    size_t parent; // its place in the list
};
using TreeNodes = std::vector<TreeNode>;

// The item, the siblings after it and everything below them, in the order in which they are shown. A parent
// stands before its children, so a walk from the end meets the children first.
TreeNodes ItemsFrom(const CTreeCtrl& tree, HTREEITEM first)
{
    TreeNodes nodes;
    TreeNodes open;
    if (first != nullptr)
        open.push_back({first, kNoParent});
    while (!open.empty()) {
        const TreeNode node = open.back();
        open.pop_back();
        if (const HTREEITEM sibling = tree.GetNextSiblingItem(node.item))
            open.push_back({sibling, node.parent});
        if (const HTREEITEM child = tree.GetChildItem(node.item))
            open.push_back({child, nodes.size()});
        nodes.push_back(node);
    }
    return nodes;
}

// The item shown after this one among those below top; null when there is none. It reads the tree anew at
// each step, for walks that make the host change the tree.
HTREEITEM NextBelow(const CTreeCtrl& tree, HTREEITEM item, HTREEITEM top)
{
    HTREEITEM next = tree.GetChildItem(item);
    while (next == nullptr && item != nullptr && item != top) {
        next = tree.GetNextSiblingItem(item);
        item = tree.GetParentItem(item);
    }
    return next;
}

void StoreStat(CTreeCtrl& tree, HTREEITEM item, CTC_CHECKSTAT stat)
{
    if (stat != CtcInvalid)
        tree.SetItemImage(item, stat, stat);
}

CTC_CHECKSTAT Opposite(CTC_CHECKSTAT stat)
{
    return stat == CtcUnchecked ? CtcChecked : CtcUnchecked;
}

struct ChildCount {
    size_t all = 0;
    size_t checked = 0;
    size_t unchecked = 0;

    void Add(CTC_CHECKSTAT stat)
    {
        ++all;
        checked += stat == CtcChecked;
        unchecked += stat == CtcUnchecked;
    }
};

// Stores a state on every node: leaf(index) on the nodes without children, inner(count) on the others.
template <class Leaf, class Inner>
void StoreFromLeaves(CTreeCtrl& tree, const TreeNodes& nodes, Leaf leaf, Inner inner)
{
    std::vector<ChildCount> counts(nodes.size());
    for (size_t i = nodes.size(); i-- > 0;) {
        const CTC_CHECKSTAT stat = counts[i].all == 0 ? leaf(i) : inner(counts[i]);
        StoreStat(tree, nodes[i].item, stat);
        if (nodes[i].parent != kNoParent)
            counts[nodes[i].parent].Add(stat);
    }
}

bool HasWindow(const CTreeCtrl* tree)
{
    return tree != nullptr && ::IsWindow(tree->m_hWnd);
}

void ExpandOne(CTreeCtrl& tree, HTREEITEM item)
{
    if (tree.ItemHasChildren(item))
        tree.Expand(item, TVE_EXPAND);
}

} // namespace

IMPLEMENT_DYNAMIC(VCheckTreeCtrl, VTreeCtrl)

BEGIN_MESSAGE_MAP(VCheckTreeCtrl, VTreeCtrl)
    ON_WM_CREATE()
    ON_WM_LBUTTONDOWN()
    ON_WM_CONTEXTMENU()
    ON_COMMAND(VGTreeCheckAll, &VCheckTreeCtrl::CheckAll)
    ON_COMMAND(VGTreeUncheckAll, &VCheckTreeCtrl::UncheckAll)
    ON_COMMAND(VGTreeReverseAll, &VCheckTreeCtrl::ReverseAll)
END_MESSAGE_MAP()

// ---- Images

void VCheckTreeCtrl::PreSubclassWindow()
{
    LoadCheckImages();
    if (useCheck)
        ShowCheckImages();
    VTreeCtrl::PreSubclassWindow();
}

// A window that is being created takes no image list before this.
int VCheckTreeCtrl::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    const int result = VTreeCtrl::OnCreate(lpCreateStruct);
    if (result == 0 && useCheck)
        ShowCheckImages();
    return result;
}

void VCheckTreeCtrl::LoadCheckImages()
{
    const bool fromFormerWindow = checkImages.m_hImageList != nullptr;
    if (fromFormerWindow || !checkImages.Create(kImageSize, kImageSize, ILC_COLOR16, kImageCount, kImageGrow))
        return;
    for (const int id : {IDI_CHECK_NONE, IDI_CHECK_ALL, IDI_CHECK_PART}) {
        const VOwnedIcon icon(static_cast<HICON>(::LoadImageW(
            VGLibraryInstance(), MAKEINTRESOURCEW(id), IMAGE_ICON, kImageSize, kImageSize, LR_DEFAULTCOLOR)));
        checkImages.Add(icon.Get());
    }
}

void VCheckTreeCtrl::ShowCheckImages()
{
    SetImageList(useCheck ? &checkImages : nullptr, TVSIL_NORMAL);
}

void VCheckTreeCtrl::SetUseCheck(bool use)
{
    if (use == useCheck)
        return;
    useCheck = use;
    if (HasWindow(this))
        ShowCheckImages();
}

// ---- States

CTC_CHECKSTAT VCheckTreeCtrl::GetNodeCheckStat(const HTREEITEM& item) const
{
    int image = CtcInvalid;
    int selectedImage = CtcInvalid;
    if (!GetItemImage(item, image, selectedImage) || image < CtcUnchecked || image > CtcPartial)
        return CtcInvalid;
    return static_cast<CTC_CHECKSTAT>(image);
}

void VCheckTreeCtrl::SetNodeCheckStat(const HTREEITEM& item, CTC_CHECKSTAT stat)
{
    StoreStat(*this, item, stat);
}

void VCheckTreeCtrl::UpdateChildStat(HTREEITEM item)
{
    const CTC_CHECKSTAT stat = GetNodeCheckStat(item);
    for (const TreeNode& node : ItemsFrom(*this, GetChildItem(item)))
        SetNodeCheckStat(node.item, stat);
}

void VCheckTreeCtrl::UpdateParentStat(HTREEITEM item)
{
    for (HTREEITEM parent = GetParentItem(item); parent != nullptr; parent = GetParentItem(parent))
        SetNodeCheckStat(parent, StatOfChildren(parent));
}

CTC_CHECKSTAT VCheckTreeCtrl::StatOfChildren(HTREEITEM parent) const
{
    HTREEITEM child = GetChildItem(parent);
    const CTC_CHECKSTAT first = GetNodeCheckStat(child);
    if (first != CtcChecked && first != CtcUnchecked)
        return CtcPartial;
    while ((child = GetNextSiblingItem(child)) != nullptr) {
        if (GetNodeCheckStat(child) != first)
            return CtcPartial;
    }
    return first;
}

void VCheckTreeCtrl::SetSubtree(HTREEITEM item, CTC_CHECKSTAT stat)
{
    if (item == nullptr)
        return;
    SetNodeCheckStat(item, stat);
    UpdateChildStat(item);
    UpdateParentStat(item);
}

void VCheckTreeCtrl::Check(HTREEITEM item)
{
    SetSubtree(item, CtcChecked);
}

void VCheckTreeCtrl::Uncheck(HTREEITEM item)
{
    SetSubtree(item, CtcUnchecked);
}

void VCheckTreeCtrl::CheckAll()
{
    for (HTREEITEM item = GetRootItem(); item != nullptr; item = GetNextSiblingItem(item))
        Check(item);
}

void VCheckTreeCtrl::UncheckAll()
{
    for (HTREEITEM item = GetRootItem(); item != nullptr; item = GetNextSiblingItem(item))
        Uncheck(item);
}

// Toggling an item by the rules makes everything below it alike, and toggling its children afterwards finds
// them so; toggles of siblings touch only what is above. So each item is toggled exactly once, to the
// opposite of its parent, and an item with children ends up as they say: one pass instead of a propagation
// for every item.
void VCheckTreeCtrl::ReverseAll()
{
    const TreeNodes nodes = ItemsFrom(*this, GetRootItem());
    std::vector<CTC_CHECKSTAT> toggled(nodes.size());
    for (size_t i = 0; i < nodes.size(); ++i) {
        const size_t parent = nodes[i].parent;
        toggled[i] = Opposite(parent == kNoParent ? GetNodeCheckStat(nodes[i].item) : toggled[parent]);
    }
    StoreFromLeaves(
        *this, nodes, [&](size_t leaf) { return toggled[leaf]; },
        [](const ChildCount& children) {
            if (children.checked == children.all)
                return CtcChecked;
            return children.unchecked == children.all ? CtcUnchecked : CtcPartial;
        });
}

bool VCheckTreeCtrl::AreRoots(CTC_CHECKSTAT stat) const
{
    HTREEITEM item = GetRootItem();
    const bool any = item != nullptr;
    while (item != nullptr && GetNodeCheckStat(item) == stat)
        item = GetNextSiblingItem(item);
    return any && item == nullptr;
}

bool VCheckTreeCtrl::IsAllChecked() const
{
    return AreRoots(CtcChecked);
}

bool VCheckTreeCtrl::IsNoneChecked() const
{
    return AreRoots(CtcUnchecked);
}

// ---- Mouse

void VCheckTreeCtrl::OnLButtonDown(UINT nFlags, CPoint point)
{
    if (!useCheck) {
        VTreeCtrl::OnLButtonDown(nFlags, point);
        return;
    }
    UINT hit = 0;
    const HTREEITEM item = HitTest(point, &hit);
    const bool onCheck = (hit & (clickOnTextCheck ? TVHT_ONITEM : TVHT_ONITEMICON)) != 0;
    if (!onCheck && (hit & TVHT_ONITEMBUTTON) != 0) {
        ToggleExpanded(item);
        return;
    }
    if (onCheck && item != nullptr)
        ToggleByMouse(item);
    if ((hit & (TVHT_ONITEM | TVHT_ONITEMRIGHT)) != 0)
        VTreeCtrl::OnLButtonDown(nFlags, point);
}

// The control is asked for another bit than the one tested; this is intended. One that answers with the bits
// asked for only expands.
void VCheckTreeCtrl::ToggleExpanded(HTREEITEM item)
{
    const UINT state = GetItemState(item, TVIS_DROPHILITED);
    Expand(item, (state & TVIS_EXPANDED) != 0 ? TVE_COLLAPSE : TVE_EXPAND);
}

void VCheckTreeCtrl::ToggleByMouse(HTREEITEM item)
{
    const CTC_CHECKSTAT old = GetNodeCheckStat(item);
    SetSubtree(item, Opposite(old));
    if (const HWND parent = ::GetParent(m_hWnd))
        ::PostMessageW(parent, VGTreeCheckClicked, reinterpret_cast<WPARAM>(item), old);
}

void VCheckTreeCtrl::OnContextMenu(CWnd* /*pWnd*/, CPoint /*point*/) {}

// ---- For all trees

bool AdjustTreeCtrlCheckState(VCheckTreeCtrl& tree)
{
    const TreeNodes nodes = ItemsFrom(tree, tree.GetRootItem());
    StoreFromLeaves(
        tree, nodes, [&](size_t leaf) { return tree.GetNodeCheckStat(nodes[leaf].item); },
        [](const ChildCount& children) {
            if (children.unchecked == 0)
                return CtcChecked;
            return children.unchecked == children.all ? CtcUnchecked : CtcPartial;
        });
    return !nodes.empty();
}

bool CopyTreeChildNode(CTreeCtrl& tree, HTREEITEM destParent, HTREEITEM srcParent)
{
    if (!HasWindow(&tree) || destParent == nullptr || srcParent == nullptr)
        return false;
    const TreeNodes nodes = ItemsFrom(tree, tree.GetChildItem(srcParent));
    std::vector<HTREEITEM> copies;
    copies.reserve(nodes.size());
    for (const TreeNode& node : nodes) {
        const HTREEITEM parent = node.parent == kNoParent ? destParent : copies[node.parent];
        copies.push_back(tree.InsertItem(TVIF_TEXT | TVIF_PARAM, tree.GetItemText(node.item), 0, 0, 0, 0,
                                         static_cast<LPARAM>(tree.GetItemData(node.item)), parent, TVI_LAST));
        if (copies.back() == nullptr)
            return false;
    }
    return true;
}

void ExpandTree(CTreeCtrl* tree)
{
    if (!HasWindow(tree))
        return;
    for (HTREEITEM item = tree->GetRootItem(); item != nullptr; item = tree->GetNextSiblingItem(item))
        ExpandTreeItem(tree, item);
}

void ExpandTreeItem(CTreeCtrl* tree, HTREEITEM item)
{
    if (!HasWindow(tree))
        return;
    for (HTREEITEM next = item; next != nullptr; next = NextBelow(*tree, next, item))
        ExpandOne(*tree, next);
}

void ExpandTreeLevel(CTreeCtrl* tree, HTREEITEM item)
{
    if (!HasWindow(tree))
        return;
    for (; item != nullptr; item = tree->GetNextSiblingItem(item))
        ExpandOne(*tree, item);
}

void CollapseTreeAtRoot(CTreeCtrl* tree)
{
    if (!HasWindow(tree))
        return;
    for (HTREEITEM item = tree->GetRootItem(); item != nullptr; item = tree->GetNextSiblingItem(item))
        tree->Expand(item, TVE_COLLAPSE);
    tree->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}
