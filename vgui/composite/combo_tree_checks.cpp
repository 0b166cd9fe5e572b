// The dropped tree's walks and check states.
#include "vgui/composite/combo_tree.h"

namespace
{

constexpr int kStateShift = 12; // of the state image's index in an item's state

} // namespace

// ---- Walks

HTREEITEM ComboTreeDropList::NextInTree(HTREEITEM item) const
{
    if (item == nullptr || m_hWnd == nullptr)
        return nullptr;
    return NextWithin(item, nullptr);
}

// In a walk through top and all below it; a null top is the whole tree.
HTREEITEM ComboTreeDropList::NextWithin(HTREEITEM item, HTREEITEM top) const
{
    const HTREEITEM child = GetChildItem(item);
    return child != nullptr ? child : NextPast(item, top);
}

// The same, but without what is below the item.
HTREEITEM ComboTreeDropList::NextPast(HTREEITEM item, HTREEITEM top) const
{
    for (; item != nullptr && item != top; item = GetParentItem(item))
        if (const HTREEITEM sibling = GetNextSiblingItem(item))
            return sibling;
    return nullptr;
}

HTREEITEM ComboTreeDropList::PreviousInTree(HTREEITEM item) const
{
    if (item == nullptr || m_hWnd == nullptr)
        return nullptr;
    const HTREEITEM sibling = GetPrevSiblingItem(item);
    return sibling != nullptr ? LastInTree(sibling) : GetParentItem(item);
}

HTREEITEM ComboTreeDropList::LastSiblingOf(HTREEITEM item) const
{
    while (item != nullptr) {
        const HTREEITEM next = GetNextSiblingItem(item);
        if (next == nullptr)
            break;
        item = next;
    }
    return item;
}

HTREEITEM ComboTreeDropList::LastInTree(HTREEITEM item) const
{
    if (m_hWnd == nullptr)
        return nullptr;
    if (item == nullptr)
        item = LastSiblingOf(GetRootItem());
    while (item != nullptr) {
        const HTREEITEM child = GetChildItem(item);
        if (child == nullptr)
            break;
        item = LastSiblingOf(child);
    }
    return item;
}

void ComboTreeDropList::ExpandOrCollapseBranch(HTREEITEM item, UINT code)
{
    if (item == nullptr || m_hWnd == nullptr)
        return;
    for (HTREEITEM next = item; next != nullptr; next = NextWithin(next, item))
        if (GetChildItem(next) != nullptr)
            Expand(next, code);
}

HTREEITEM ComboTreeDropList::FirstCheckedFrom(HTREEITEM item) const
{
    while (item != nullptr) {
        const int state = GetCheckState(item);
        if (state == ComboTreeChecked)
            break;
        const HTREEITEM sibling = state != ComboTreePartlyChecked ? GetNextSiblingItem(item) : nullptr;
        item = sibling != nullptr ? sibling : NextInTree(item);
    }
    return item;
}

HTREEITEM ComboTreeDropList::PreviousChecked(HTREEITEM item) const
{
    do
        item = PreviousInTree(item);
    while (item != nullptr && GetCheckState(item) != ComboTreeChecked);
    return item;
}

// ---- Check states

int ComboTreeDropList::GetCheckState(HTREEITEM item) const
{
    TVITEMW asked{};
    asked.mask = TVIF_STATE;
    asked.hItem = item;
    asked.stateMask = TVIS_STATEIMAGEMASK;
    if (item == nullptr || m_hWnd == nullptr || !GetItem(&asked))
        return ComboTreeNoCheck;
    return static_cast<int>((asked.state & TVIS_STATEIMAGEMASK) >> kStateShift);
}

// An item that shows the state already need not be painted again.
void ComboTreeDropList::ShowState(HTREEITEM item, int state)
{
    if (GetCheckState(item) != state)
        SetItemState(item, INDEXTOSTATEIMAGEMASK(state), TVIS_STATEIMAGEMASK);
}

// To the item and all below it. Nothing is skipped: a host may have set states that do not fit together.
void ComboTreeDropList::PushState(HTREEITEM item, int state)
{
    for (HTREEITEM next = item; next != nullptr; next = NextWithin(next, item))
        ShowState(next, state);
}

void ComboTreeDropList::UpdateAncestors(HTREEITEM item)
{
    HTREEITEM parent = GetParentItem(item);
    for (; parent != nullptr; item = parent, parent = GetParentItem(item))
        ShowState(parent, StateOfFamily(item));
}

// What the siblings, this child among them, make of their parent. The search goes outwards from the child
// that changed, so that it ends soon while the children are checked or unchecked one after the other.
int ComboTreeDropList::StateOfFamily(HTREEITEM child) const
{
    bool all = true;
    bool any = false;
    const auto isDecided = [&](HTREEITEM sibling) {
        const int state = GetCheckState(sibling);
        all = all && state == ComboTreeChecked;
        any = any || state == ComboTreeChecked || state == ComboTreePartlyChecked;
        return any && !all;
    };
    if (isDecided(child))
        return ComboTreePartlyChecked;
    HTREEITEM before = child;
    HTREEITEM after = child;
    while (before != nullptr || after != nullptr) {
        before = before != nullptr ? GetPrevSiblingItem(before) : nullptr;
        after = after != nullptr ? GetNextSiblingItem(after) : nullptr;
        if ((before != nullptr && isDecided(before)) || (after != nullptr && isDecided(after)))
            return ComboTreePartlyChecked;
    }
    return all ? ComboTreeChecked : ComboTreeUnchecked;
}

BOOL ComboTreeDropList::SetCheckState(HTREEITEM item, int op)
{
    TVITEMW asked{};
    asked.mask = TVIF_HANDLE;
    asked.hItem = item;
    const bool isKnownOp = op >= ComboTreeCheck && op <= ComboTreeReapply;
    if (!HasCheckBoxes() || item == nullptr || !isKnownOp || m_hWnd == nullptr || !GetItem(&asked))
        return FALSE;

    int state = GetCheckState(item);
    if (op == ComboTreeCheck || (op == ComboTreeToggle && state == ComboTreeUnchecked))
        state = ComboTreeChecked;
    else if (op == ComboTreeUncheck ||
             (op == ComboTreeToggle && (state == ComboTreeChecked || state == ComboTreePartlyChecked)))
        state = ComboTreeUnchecked;

    if (state == ComboTreeUnchecked || state == ComboTreeChecked)
        PushState(item, state);
    if (op == ComboTreeReapply || (state >= ComboTreeUnchecked && state <= ComboTreePartlyChecked))
        UpdateAncestors(item);
    if (op != ComboTreeReapply)
        m_pCombo->SendParentComboMessage(CBN_CHECKCHANGE);
    return TRUE;
}
