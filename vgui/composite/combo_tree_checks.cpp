// The dropped tree's walks and check states.
#include "vgui/composite/combo_tree.h"

namespace
{

constexpr int kStateShift = 12; // of the state image's index in an item's state

} // namespace

// ---- Walks

// What the tree itself answers, 0 when it has no window. Walks ask so often that the way by the window's
// procedure, past the tip and through the message maps, would take most of their time.
LRESULT ComboTreeDropList::Ask(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return m_hWnd != nullptr ? const_cast<ComboTreeDropList*>(this)->DefWindowProc(message, wParam, lParam)
                             : 0;
}

// Null when nothing is there.
HTREEITEM ComboTreeDropList::LinkOf(HTREEITEM item, UINT link) const
{
    return reinterpret_cast<HTREEITEM>(Ask(TVM_GETNEXTITEM, link, reinterpret_cast<LPARAM>(item)));
}

// A null parent is the root level.
HTREEITEM ComboTreeDropList::FirstChildOf(HTREEITEM parent) const
{
    return LinkOf(parent, parent != nullptr ? TVGN_CHILD : TVGN_ROOT);
}

HTREEITEM ComboTreeDropList::NextInTree(HTREEITEM item) const
{
    if (item == nullptr || m_hWnd == nullptr)
        return nullptr;
    return NextWithin(item, nullptr);
}

// In a walk through top and all below it; a null top is the whole tree.
HTREEITEM ComboTreeDropList::NextWithin(HTREEITEM item, HTREEITEM top) const
{
    const HTREEITEM child = LinkOf(item, TVGN_CHILD);
    return child != nullptr ? child : NextPast(item, top);
}

// The same, but without what is below the item.
HTREEITEM ComboTreeDropList::NextPast(HTREEITEM item, HTREEITEM top) const
{
    for (; item != nullptr && item != top; item = LinkOf(item, TVGN_PARENT))
        if (const HTREEITEM sibling = LinkOf(item, TVGN_NEXT))
            return sibling;
    return nullptr;
}

HTREEITEM ComboTreeDropList::PreviousInTree(HTREEITEM item) const
{
    if (item == nullptr || m_hWnd == nullptr)
        return nullptr;
    const HTREEITEM sibling = LinkOf(item, TVGN_PREVIOUS);
    return sibling != nullptr ? LastInTree(sibling) : LinkOf(item, TVGN_PARENT);
}

HTREEITEM ComboTreeDropList::LastSiblingOf(HTREEITEM item) const
{
    while (item != nullptr) {
        const HTREEITEM next = LinkOf(item, TVGN_NEXT);
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
        const HTREEITEM child = LinkOf(item, TVGN_CHILD);
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
        if (LinkOf(next, TVGN_CHILD) != nullptr)
            Expand(next, code);
}

HTREEITEM ComboTreeDropList::FirstCheckedFrom(HTREEITEM item) const
{
    while (item != nullptr) {
        const int state = GetCheckState(item);
        if (state == ComboTreeChecked)
            break;
        const HTREEITEM sibling = state != ComboTreePartlyChecked ? LinkOf(item, TVGN_NEXT) : nullptr;
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

// False for a missing item, whose state counts as none.
bool ComboTreeDropList::ReadState(HTREEITEM item, int& state) const
{
    TVITEMW asked{};
    asked.mask = TVIF_STATE;
    asked.hItem = item;
    asked.stateMask = TVIS_STATEIMAGEMASK;
    const bool exists = item != nullptr && Ask(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked)) != 0;
    state = exists ? static_cast<int>((asked.state & TVIS_STATEIMAGEMASK) >> kStateShift) : ComboTreeNoCheck;
    return exists;
}

int ComboTreeDropList::GetCheckState(HTREEITEM item) const
{
    int state = ComboTreeNoCheck;
    ReadState(item, state);
    return state;
}

// An item that shows the state already need not be painted again.
void ComboTreeDropList::ShowState(HTREEITEM item, int shown, int state)
{
    if (shown != state)
        SetItemState(item, INDEXTOSTATEIMAGEMASK(state), TVIS_STATEIMAGEMASK);
}

// To all below the item. Nothing is skipped: a host may have set states that do not fit together.
void ComboTreeDropList::PushState(HTREEITEM item, int state)
{
    for (HTREEITEM next = LinkOf(item, TVGN_CHILD); next != nullptr; next = NextWithin(next, item))
        ShowState(next, GetCheckState(next), state);
}

// From an item that has a state now.
void ComboTreeDropList::UpdateAncestors(HTREEITEM item, int state)
{
    while (const HTREEITEM parent = LinkOf(item, TVGN_PARENT)) {
        state = StateOfFamily(item, state);
        ShowState(parent, GetCheckState(parent), state);
        item = parent;
    }
}

// What the siblings, this child with its state among them, make of their parent. The search goes outwards
// from the child that changed, so that it ends soon while the children are checked or unchecked one after the
// other.
int ComboTreeDropList::StateOfFamily(HTREEITEM child, int childState) const
{
    bool all = true;
    bool any = false;
    const auto isDecidedBy = [&](int state) {
        all = all && state == ComboTreeChecked;
        any = any || state == ComboTreeChecked || state == ComboTreePartlyChecked;
        return any && !all;
    };
    if (isDecidedBy(childState))
        return ComboTreePartlyChecked;
    HTREEITEM ends[] = {child, child};
    constexpr UINT kLinks[] = {TVGN_NEXT, TVGN_PREVIOUS};
    while (ends[0] != nullptr || ends[1] != nullptr) {
        for (const int side : {0, 1}) {
            if (ends[side] != nullptr)
                ends[side] = LinkOf(ends[side], kLinks[side]);
            if (ends[side] != nullptr && isDecidedBy(GetCheckState(ends[side])))
                return ComboTreePartlyChecked;
        }
    }
    return all ? ComboTreeChecked : ComboTreeUnchecked;
}

BOOL ComboTreeDropList::SetCheckState(HTREEITEM item, int op)
{
    const bool isKnownOp = op >= ComboTreeCheck && op <= ComboTreeReapply;
    int state = ComboTreeNoCheck;
    if (!HasCheckBoxes() || !isKnownOp || !ReadState(item, state))
        return FALSE;
    ChangeState(item, state, op);
    return TRUE;
}

// Of an item that has a state; what is known need not be asked again.
void ComboTreeDropList::ChangeState(HTREEITEM item, int shown, int op)
{
    int state = shown;
    if (op == ComboTreeCheck || (op == ComboTreeToggle && state == ComboTreeUnchecked))
        state = ComboTreeChecked;
    else if (op == ComboTreeUncheck ||
             (op == ComboTreeToggle && (state == ComboTreeChecked || state == ComboTreePartlyChecked)))
        state = ComboTreeUnchecked;

    ShowState(item, shown, state);
    if (state == ComboTreeUnchecked || state == ComboTreeChecked)
        PushState(item, state);
    if (op == ComboTreeReapply || (state >= ComboTreeUnchecked && state <= ComboTreePartlyChecked))
        UpdateAncestors(item, state);
    if (op != ComboTreeReapply)
        m_pCombo->SendParentComboMessage(CBN_CHECKCHANGE);
}
