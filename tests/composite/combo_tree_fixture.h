// A tree combo box on a host window, for the suites that test it.
#pragma once

#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "vgui/composite/combo_tree.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

constexpr UINT kComboId = 500;
inline const CSize kDropped{180, 160};

// Opens what is protected.
class OpenCombo : public ComboTree
{
public:
    using ComboTree::IsEditHighlightOn;
    using ComboTree::IsMouseOnButton;
    using ComboTree::IsMouseOnEdit;
    using ComboTree::OnCancel;
    using ComboTree::OnKeyDropdownActive;
    using ComboTree::OnKeyDropdownInactive;
    using ComboTree::OnSelection;
};

using Codes = std::vector<int>;

class ComboTreeTest : public support::CensusTest
{
protected:
    void Open(bool checkBoxes = false, CPoint place = {10, 10})
    {
        ASSERT_TRUE(host.Open({300, 240}));
        combo.SetHasCheckboxes(checkBoxes);
        ASSERT_TRUE(combo.Create(CRect(place, CSize(160, 24)), kDropped.cx, kDropped.cy, &host, kComboId));
        support::PumpMessages();
        host.Clear();
    }
    // With the tree down and nothing recorded.
    void OpenDropped(std::initializer_list<LPCWSTR> paths, bool checkBoxes = false)
    {
        Open(checkBoxes);
        Add(paths);
        Drop();
    }
    void Add(std::initializer_list<LPCWSTR> paths)
    {
        for (const LPCWSTR path : paths)
            ASSERT_NE(combo.AddString(path), nullptr);
        for (HTREEITEM item = tree.GetRootItem(); item != nullptr; item = tree.GetNextSiblingItem(item))
            combo.ExpandBranch(item);
    }
    void Drop()
    {
        combo.ShowTree();
        support::PumpMessages();
        host.Clear();
    }

    [[nodiscard]] HTREEITEM Find(LPCWSTR path) { return combo.FindString(path, nullptr); }
    // What the combo box has told since the last call.
    [[nodiscard]] Codes Told()
    {
        const Codes codes = host.CommandCodes(kComboId);
        host.Clear();
        return codes;
    }
    // A point of an item's row, so many pixels right of where its label begins, in screen coordinates.
    [[nodiscard]] CPoint On(LPCWSTR path, int offset = 3)
    {
        CRect label;
        EXPECT_TRUE(tree.GetItemRect(Find(path), label, TRUE));
        return support::ClientToScreen(tree.m_hWnd, CPoint(label.left + offset, label.CenterPoint().y));
    }
    [[nodiscard]] CPoint OnBox(LPCWSTR path) { return On(path, -8); }
    [[nodiscard]] bool IsDown() const { return combo.GetDroppedState() && ::IsWindowVisible(tree.m_hWnd); }

    support::HostWnd host;
    OpenCombo combo;
    ComboTreeDropList& tree = combo.GetTree();
};
