#include "vgui/composite/combo_tree_paths.h"

#include "vgui/composite/combo_tree_list.h"

#include <utility>

namespace
{

HTREEITEM ParentKey(HTREEITEM parent)
{
    return parent == TVI_ROOT ? nullptr : parent;
}

// A label edit that the tree ends by itself changes the label without a message of the tree's own, but its
// edit field comes, goes and speaks.
bool MayEndLabelEdit(UINT message)
{
    return message == TVM_EDITLABELA || message == TVM_EDITLABELW || message == TVM_ENDEDITLABELNOW ||
           message == WM_PARENTNOTIFY || message == WM_COMMAND;
}

} // namespace

std::wstring ComboTreeLabels::LabelOf(HTREEITEM item) const
{
    WCHAR buffer[MAX_PATH];
    TVITEMW asked{};
    asked.mask = TVIF_TEXT;
    asked.hItem = item;
    asked.pszText = buffer;
    asked.cchTextMax = MAX_PATH;
    if (m_tree.Ask(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked)) == 0 || asked.pszText == nullptr)
        return {};
    const std::wstring_view label(asked.pszText); // the tree may answer its own memory
    if (label.size() + 1 < MAX_PATH)
        return std::wstring(label);
    const CString text = m_tree.GetItemText(item);
    return {static_cast<LPCWSTR>(text), static_cast<size_t>(text.GetLength())};
}

HTREEITEM ComboTreeLabels::SearchChildren(HTREEITEM parent, std::wstring_view label) const
{
    HTREEITEM child = m_tree.FirstChildOf(parent);
    while (child != nullptr && LabelOf(child) != label)
        child = m_tree.LinkOf(child, TVGN_NEXT);
    return child;
}

HTREEITEM ComboTreeLabels::FindChild(HTREEITEM parent, std::wstring_view label)
{
    parent = ParentKey(parent);
    if (m_changes != 0 || m_callbacks)
        return SearchChildren(parent, label);
    const Children& children = IndexOf(parent);
    const auto found = children.find(label);
    if (found == children.end())
        return nullptr;
    const HTREEITEM item = found->second.first;
    if (LabelOf(item) == label)
        return item;
    m_index.clear(); // somebody has changed the tree past its messages
    return SearchChildren(parent, label);
}

ComboTreeLabels::Children& ComboTreeLabels::IndexOf(HTREEITEM parent)
{
    const auto [place, isNew] = m_index.try_emplace(parent);
    if (isNew) {
        HTREEITEM child = m_tree.FirstChildOf(parent);
        for (; child != nullptr; child = m_tree.LinkOf(child, TVGN_NEXT))
            ++place->second.try_emplace(LabelOf(child), Labelled{child, 0}).first->second.count;
    }
    return place->second;
}

ComboTreeLabels::Children* ComboTreeLabels::KnownIndexOf(HTREEITEM parent)
{
    const auto found = m_index.find(ParentKey(parent));
    return found != m_index.end() ? &found->second : nullptr;
}

ComboTreeLabels::Children* ComboTreeLabels::KnownIndexAround(HTREEITEM item)
{
    return m_index.empty() ? nullptr : KnownIndexOf(m_tree.LinkOf(item, TVGN_PARENT));
}

// ---- Keeping up with the tree

bool ComboTreeLabels::Concerns(UINT message)
{
    switch (message) {
    case TVM_INSERTITEMA:
    case TVM_INSERTITEMW:
    case TVM_DELETEITEM:
    case TVM_SETITEMA:
    case TVM_SETITEMW:
    case TVM_SORTCHILDREN:
    case TVM_SORTCHILDRENCB:
    case WM_DESTROY:
        return true;
    default:
        return MayEndLabelEdit(message);
    }
}

ComboTreeLabels::Change::Change(ComboTreeLabels& labels, UINT message, LPARAM lParam)
    : m_labels(labels), m_message(message), m_lParam(lParam)
{
    ++m_labels.m_changes;
    if (message == TVM_DELETEITEM) {
        m_labels.NoteDeletion(reinterpret_cast<HTREEITEM>(lParam));
    } else if ((message == TVM_SETITEMA || message == TVM_SETITEMW) && lParam != 0) {
        // Both forms agree in what is read here.
        const auto& item = *reinterpret_cast<const TVITEMW*>(lParam);
        if ((item.mask & TVIF_TEXT) != 0 && m_labels.KnownIndexAround(item.hItem) != nullptr)
            m_oldLabel = m_labels.LabelOf(item.hItem);
    }
}

ComboTreeLabels::Change::~Change()
{
    --m_labels.m_changes;
}

void ComboTreeLabels::Change::Done(LRESULT result)
{
    switch (m_message) {
    case TVM_INSERTITEMA:
    case TVM_INSERTITEMW:
        if (result != 0)
            m_labels.NoteInserted(*reinterpret_cast<const TVINSERTSTRUCTW*>(m_lParam),
                                  reinterpret_cast<HTREEITEM>(result), m_message == TVM_INSERTITEMW);
        break;
    case TVM_SETITEMA:
    case TVM_SETITEMW:
        if (const auto* item = reinterpret_cast<const TVITEMW*>(m_lParam);
            result != 0 && (item->mask & TVIF_TEXT) != 0) {
            m_labels.m_callbacks = m_labels.m_callbacks || item->pszText == LPSTR_TEXTCALLBACKW;
            m_labels.NoteRenamed(item->hItem, m_oldLabel);
        }
        break;
    case TVM_DELETEITEM:
        if (result == 0)
            m_labels.m_index.clear();
        break;
    default:
        m_labels.m_index.clear();
        break;
    }
}

void ComboTreeLabels::NoteInserted(const TVINSERTSTRUCTW& insertion, HTREEITEM item, bool isWide)
{
    const bool hasText = (insertion.item.mask & TVIF_TEXT) != 0;
    m_callbacks = m_callbacks || (hasText && insertion.item.pszText == LPSTR_TEXTCALLBACKW);
    Children* const children = KnownIndexOf(insertion.hParent);
    if (children == nullptr)
        return;
    const bool isGiven = isWide && hasText && insertion.item.pszText != nullptr && !m_callbacks;
    std::wstring label = isGiven ? std::wstring(insertion.item.pszText) : LabelOf(item);
    Labelled& labelled = children->try_emplace(std::move(label), Labelled{item, 0}).first->second;
    ++labelled.count;
    if (labelled.count == 1 || insertion.hInsertAfter == TVI_LAST)
        return;
    if (insertion.hInsertAfter == TVI_FIRST)
        labelled.first = item;
    else
        m_index.erase(ParentKey(insertion.hParent));
}

// False when it is not known any more which child with the label comes first.
bool ComboTreeLabels::Remove(Children& children, HTREEITEM item, const std::wstring& label)
{
    const auto found = children.find(label);
    if (found == children.end())
        return false;
    if (found->second.count > 1 && found->second.first == item)
        return false;
    if (--found->second.count == 0)
        children.erase(found);
    return true;
}

// The handles of what goes may soon be those of other items.
void ComboTreeLabels::NoteDeletion(HTREEITEM item)
{
    if (m_index.empty())
        return;
    if (item == nullptr || item == TVI_ROOT) {
        m_index.clear();
        return;
    }
    const HTREEITEM parent = m_tree.LinkOf(item, TVGN_PARENT);
    if (Children* const children = KnownIndexOf(parent);
        children != nullptr && !Remove(*children, item, LabelOf(item)))
        m_index.erase(parent);

    HTREEITEM below = item;
    while (below != nullptr) {
        m_index.erase(below);
        HTREEITEM next = m_tree.LinkOf(below, TVGN_CHILD);
        while (next == nullptr && below != item && below != nullptr) {
            next = m_tree.LinkOf(below, TVGN_NEXT);
            if (next == nullptr)
                below = m_tree.LinkOf(below, TVGN_PARENT);
        }
        below = next;
    }
}

void ComboTreeLabels::NoteRenamed(HTREEITEM item, const std::wstring& oldLabel)
{
    Children* const children = KnownIndexAround(item);
    if (children == nullptr)
        return;
    const bool known = Remove(*children, item, oldLabel);
    const auto [place, isNew] = children->try_emplace(LabelOf(item), Labelled{item, 1});
    if (!known || !isNew)
        m_index.erase(m_tree.LinkOf(item, TVGN_PARENT));
}

// ---- Paths

ComboTreePathParts SplitTreePath(std::wstring_view path, wchar_t delimiter)
{
    const size_t end = path.find(delimiter);
    if (end == std::wstring_view::npos)
        return {path, {}};
    return {path.substr(0, end), path.substr(end + 1)};
}

ComboTreePathMatch MatchTreePath(ComboTreeLabels& labels, std::wstring_view path, wchar_t delimiter,
                                 HTREEITEM parent)
{
    ComboTreePathMatch match{nullptr, parent, SplitTreePath(path, delimiter)};
    if (match.left.head.empty())
        return match;
    match.item = labels.FindChild(parent, match.left.head);
    while (match.item != nullptr && !match.left.rest.empty()) {
        match.parent = match.item;
        match.left = SplitTreePath(match.left.rest, delimiter);
        match.item = labels.FindChild(match.parent, match.left.head);
    }
    return match;
}
