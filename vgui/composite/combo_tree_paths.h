// Finding tree items by their labels and by paths of labels. Internal to the library.
#pragma once

#include <afxcmn.h>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

class ComboTreeDropList;

// Finds children by label: exactly, with case, the first in the tree's order. The first search below a parent
// reads the labels there, later ones ask an index, which follows the messages that change the tree, whoever
// sends them. A null parent is the root level.
class ComboTreeLabels
{
public:
    explicit ComboTreeLabels(ComboTreeDropList& tree) : m_tree(tree) {}

    // Null when no child has the label.
    HTREEITEM FindChild(HTREEITEM parent, std::wstring_view label);

    // Whether a message may change labels or their order.
    static bool Concerns(UINT message);

    // A message that concerns the labels, for as long as the tree handles it.
    class Change
    {
    public:
        Change(ComboTreeLabels& labels, UINT message, LPARAM lParam);
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        ~Change();

        // The tree has handled the message.
        void Done(LRESULT result);

    private:
        ComboTreeLabels& m_labels;
        UINT m_message;
        LPARAM m_lParam;
        std::wstring m_oldLabel; // of an item that is to be renamed
    };

private:
    struct Labelled {
        HTREEITEM first; // in the tree's order
        size_t count;
    };
    // Lets a part of a path be looked up as it stands.
    struct Hash {
        using is_transparent = void;
        size_t operator()(std::wstring_view label) const { return std::hash<std::wstring_view>()(label); }
    };
    using Children = std::unordered_map<std::wstring, Labelled, Hash, std::equal_to<>>;

    [[nodiscard]] std::wstring LabelOf(HTREEITEM item) const;
    [[nodiscard]] HTREEITEM SearchChildren(HTREEITEM parent, std::wstring_view label) const;
    Children& IndexOf(HTREEITEM parent);
    Children* KnownIndexOf(HTREEITEM parent);
    Children* KnownIndexAround(HTREEITEM item);
    void NoteInserted(const TVINSERTSTRUCTW& insertion, HTREEITEM item, bool isWide);
    void NoteDeletion(HTREEITEM item);
    void NoteRenamed(HTREEITEM item, const std::wstring& oldLabel);
    bool Remove(Children& children, HTREEITEM item, const std::wstring& label);

    ComboTreeDropList& m_tree;
    std::unordered_map<HTREEITEM, Children> m_index; // by parent
    int m_changes = 0;        // that are being handled; the index is not used meanwhile
    bool m_callbacks = false; // some labels are the host's to give: they change without a message
};

// A path's first label and what follows the delimiter. Without a delimiter the rest is empty.
struct ComboTreePathParts {
    std::wstring_view head;
    std::wstring_view rest;
};
ComboTreePathParts SplitTreePath(std::wstring_view path, wchar_t delimiter);

// How far a path exists below a parent.
struct ComboTreePathMatch {
    HTREEITEM item;          // at the whole path, null when it does not exist
    HTREEITEM parent;        // of the last label that was searched for
    ComboTreePathParts left; // that label, and what comes after it
};
ComboTreePathMatch MatchTreePath(ComboTreeLabels& labels, std::wstring_view path, wchar_t delimiter,
                                 HTREEITEM parent);
