// The wrappers of the standard controls at the places where one can go wrong: text sizes, packed parameters,
// bounds, and the way back from the parent to a control that draws itself.
#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <afxwin.h>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace
{

using support::HostWnd;

constexpr UINT kId = 100;
const CRect kPlace{10, 10, 160, 110};
constexpr COLORREF kInk = RGB(12, 140, 77);

class StandardControls : public support::CensusTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open()); }

    HostWnd host;
};

// ---- Texts
// -------------------------------------------------------------------------------------------------

// The two classes name the same operations differently.
int TextOf(const CListBox& list, int item, CString& text)
{
    list.GetText(item, text);
    return list.GetTextLen(item);
}
int TextOf(const CComboBox& list, int item, CString& text)
{
    list.GetLBText(item, text);
    return list.GetLBTextLen(item);
}

template <class List>
void ExpectTextsRoundTrip(List& list)
{
    const CString texts[] = {L"中文 item", L"", CString(L'x', 5000)};
    for (const CString& text : texts)
        ASSERT_GE(list.AddString(text), 0);
    ASSERT_EQ(list.GetCount(), 3);
    for (int item = 0; item < 3; ++item) {
        CString text = L"left over";
        EXPECT_EQ(TextOf(list, item, text), texts[item].GetLength());
        EXPECT_STREQ(text, texts[item]);
    }
    for (const int missing : {-1, 3}) {
        CString text = L"left over";
        EXPECT_EQ(TextOf(list, missing, text), LB_ERR);
        EXPECT_TRUE(text.IsEmpty());
    }
    EXPECT_EQ(list.FindStringExact(-1, L"中文 ITEM"), 0);
    int data = 0;
    EXPECT_NE(list.SetItemDataPtr(1, &data), LB_ERR);
    EXPECT_EQ(list.GetItemDataPtr(1), &data);
    EXPECT_EQ(list.GetItemData(1), reinterpret_cast<DWORD_PTR>(&data));
}

TEST_F(StandardControls, ListTextsOfAnyLengthComeBackWhole)
{
    CListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE, kPlace, &host, kId));
    ExpectTextsRoundTrip(list);
    CComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, kPlace, &host, kId + 1));
    ExpectTextsRoundTrip(combo);
}

TEST_F(StandardControls, ListWithoutStringsHasItemDataAndNoText)
{
    CListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | LBS_OWNERDRAWFIXED, kPlace, &host, kId));
    ASSERT_EQ(list.AddString(reinterpret_cast<LPCTSTR>(0x1122334455)), 0);
    EXPECT_EQ(list.GetItemData(0), 0x1122334455u);
    CString text = L"left over";
    list.GetText(0, text);
    EXPECT_TRUE(text.IsEmpty());

    CComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED, kPlace, &host, kId + 1));
    ASSERT_EQ(combo.AddString(reinterpret_cast<LPCTSTR>(0x55)), 0);
    text = L"left over";
    combo.GetLBText(0, text);
    EXPECT_TRUE(text.IsEmpty());
}

TEST_F(StandardControls, EditLineIsCopiedOnlyAsFarAsTheBufferGoes)
{
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE, kPlace, &host, kId));
    edit.SetWindowText(L"first\r\nsecond line");
    constexpr TCHAR kUntouched = L'#';
    for (const int size : {-1, 0, 1, 6, 11, 20}) {
        std::array<TCHAR, 32> buffer;
        buffer.fill(kUntouched);
        const int copied = edit.GetLine(1, buffer.data(), size);
        const int expected = std::clamp(size, 0, 11);
        EXPECT_EQ(copied, expected) << size;
        if (expected > 0) {
            EXPECT_EQ(std::wstring(buffer.data(), expected), std::wstring(L"second line", expected));
        }
        // The first word carries the size in; nothing beyond it and the text may change.
        EXPECT_EQ(std::count(buffer.begin() + std::max(size, 0), buffer.end(), kUntouched),
                  32 - std::max(size, 0))
            << size;
    }
    // A size that does not fit the message's word must not wrap round to a small one.
    std::vector<TCHAR> large(0x10003);
    EXPECT_EQ(edit.GetLine(0, large.data(), static_cast<int>(large.size())), 5);
}

TEST_F(StandardControls, EditSelectionKeepsLargePositionsAndTheSpecialOnes)
{
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_AUTOHSCROLL, kPlace, &host, kId));
    edit.SetLimitText(100000);
    CString text;
    while (text.GetLength() < 70000)
        text += CString(L'a', 98) + L"\r\n";
    edit.SetWindowText(text);
    int start = -1;
    int end = -1;
    edit.SetSel(66000, 68000);
    edit.GetSel(start, end);
    EXPECT_EQ(std::pair(start, end), std::pair(66000, 68000));
    // Packed: positions above 32767 are no negative numbers, and 0 with -1 means everything.
    edit.SetSel(MAKELONG(40000, 40002));
    edit.GetSel(start, end);
    EXPECT_EQ(std::pair(start, end), std::pair(40000, 40002));
    EXPECT_EQ(edit.GetSel(), static_cast<DWORD>(MAKELONG(40000, 40002)));
    edit.SetSel(MAKELONG(0, -1));
    edit.GetSel(start, end);
    EXPECT_EQ(std::pair(start, end), std::pair(0, 70000));

    edit.SetMargins(7, 9);
    EXPECT_EQ(edit.GetMargins(), static_cast<DWORD>(MAKELONG(7, 9)));
}

// ---- List boxes
// --------------------------------------------------------------------------------------------

std::vector<int> Selected(const CListBox& list)
{
    std::vector<int> items(list.GetCount());
    items.resize(list.GetSelItems(static_cast<int>(items.size()), items.data()));
    return items;
}

TEST_F(StandardControls, ListRangesAreSelectedAndCleared)
{
    CListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LBS_MULTIPLESEL, kPlace, &host, kId));
    for (int item = 0; item < 6; ++item)
        list.AddString(L"item");
    list.SelItemRange(TRUE, 1, 4);
    EXPECT_EQ(Selected(list), (std::vector{1, 2, 3, 4}));
    list.SelItemRange(FALSE, 2, 3);
    EXPECT_EQ(Selected(list), (std::vector{1, 4}));
    list.SelItemRange(FALSE, 4, 4); // a range of one item has no order that could say "clear"
    EXPECT_EQ(Selected(list), std::vector{1});
    EXPECT_EQ(list.SelItemRange(TRUE, -1, -1), LB_ERR);
    EXPECT_EQ(Selected(list), std::vector{1});
}

TEST_F(StandardControls, ListFindsTheItemAtAPoint)
{
    CListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE, kPlace, &host, kId));
    for (int item = 0; item < 3; ++item)
        list.AddString(L"item");
    CRect rect;
    ASSERT_NE(list.GetItemRect(2, &rect), LB_ERR);
    BOOL outside = TRUE;
    EXPECT_EQ(list.ItemFromPoint(rect.CenterPoint(), outside), 2u);
    EXPECT_FALSE(outside);
    list.ItemFromPoint(CPoint(5, 3000), outside);
    EXPECT_TRUE(outside);
}

TEST_F(StandardControls, ScrollLimitIsTheMaximumLessThePage)
{
    CScrollBar bar;
    ASSERT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE | SBS_HORZ, kPlace, &host, kId));
    SCROLLINFO info = {};
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = -20;
    info.nMax = 99;
    info.nPage = 10;
    info.nPos = 70000; // out of range
    EXPECT_TRUE(bar.SetScrollInfo(&info));
    EXPECT_EQ(bar.GetScrollLimit(), 90);
    EXPECT_EQ(bar.GetScrollPos(), 90);
    bar.SetScrollRange(0, 50);
    SCROLLINFO answer = {};
    EXPECT_TRUE(bar.GetScrollInfo(&answer, SIF_RANGE));
    EXPECT_EQ(answer.nMax, 50);
    EXPECT_FALSE(bar.SetScrollInfo(nullptr));
    EXPECT_FALSE(bar.GetScrollInfo(nullptr));
}

// ---- Controls that draw themselves
// -------------------------------------------------------------------------

void FillItem(const DRAWITEMSTRUCT& item, COLORREF color)
{
    CDC::FromHandle(item.hDC)->FillSolidRect(&item.rcItem, color);
}

class InkButton : public CButton
{
public:
    std::set<UINT> actions;

protected:
    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        EXPECT_EQ(item->CtlType, static_cast<UINT>(ODT_BUTTON));
        EXPECT_EQ(item->hwndItem, m_hWnd);
        actions.insert(item->itemAction);
        FillItem(*item, kInk);
    }
};

class InkStatic : public CStatic
{
protected:
    void DrawItem(LPDRAWITEMSTRUCT item) override { FillItem(*item, kInk); }
};

TEST_F(StandardControls, OwnerDrawnButtonAndStaticDrawThemselves)
{
    InkButton button;
    ASSERT_TRUE(button.Create(L"text", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, kPlace, &host, kId));
    EXPECT_TRUE(support::WaitForPixel(button, {20, 20}, kInk));
    EXPECT_TRUE(button.actions.contains(ODA_DRAWENTIRE));
    button.SetFocus();
    EXPECT_TRUE(support::PumpUntil([&] { return button.actions.contains(ODA_FOCUS); }));
    EXPECT_EQ(button.GetButtonStyle(), static_cast<UINT>(BS_OWNERDRAW));

    InkStatic label;
    ASSERT_TRUE(label.Create(L"", WS_CHILD | WS_VISIBLE | SS_OWNERDRAW, CRect(200, 10, 240, 40), &host));
    EXPECT_TRUE(support::WaitForPixel(label, {20, 20}, kInk));
    EXPECT_EQ(label.GetDlgCtrlID(), 0xffff);
}

// Items are numbers, sorted downwards; each is as high as its number.
template <class Base>
class NumberList : public Base
{
public:
    std::vector<ULONG_PTR> deleted;
    int drawn = 0;

protected:
    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        ++drawn;
        if (item->itemID != static_cast<UINT>(-1))
            FillItem(*item, RGB(item->itemData, 0, 99));
    }
    void MeasureItem(LPMEASUREITEMSTRUCT item) override
    {
        if (item->itemID != static_cast<UINT>(-1))
            item->itemHeight = static_cast<UINT>(item->itemData);
    }
    int CompareItem(LPCOMPAREITEMSTRUCT items) override
    {
        return static_cast<int>(items->itemData2) - static_cast<int>(items->itemData1);
    }
    void DeleteItem(LPDELETEITEMSTRUCT item) override { deleted.push_back(item->itemData); }
};

template <class List>
void ExpectNumbersSortedAndMeasured(List& list)
{
    for (const ULONG_PTR number : {20, 40, 30})
        list.AddString(reinterpret_cast<LPCTSTR>(number));
    const int heights[] = {list.GetItemHeight(0), list.GetItemHeight(1), list.GetItemHeight(2)};
    EXPECT_EQ(std::vector(std::begin(heights), std::end(heights)), (std::vector{40, 30, 20}));
}

TEST_F(StandardControls, OwnerDrawnListsMeasureCompareDrawAndDelete)
{
    NumberList<CListBox> list;
    constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWVARIABLE | LBS_SORT;
    ASSERT_TRUE(list.Create(kListStyle, kPlace, &host, kId));
    ExpectNumbersSortedAndMeasured(list);
    EXPECT_TRUE(support::WaitForPixel(list, {5, 20}, RGB(40, 0, 99)));
    EXPECT_TRUE(support::WaitForPixel(list, {5, 55}, RGB(30, 0, 99)));
    list.DeleteString(1);
    EXPECT_EQ(list.deleted, std::vector<ULONG_PTR>{30});
    list.ResetContent();
    EXPECT_EQ(std::multiset(list.deleted.begin(), list.deleted.end()),
              (std::multiset<ULONG_PTR>{20, 30, 40}));

    NumberList<CComboBox> combo;
    constexpr DWORD kComboStyle = WS_CHILD | WS_VISIBLE | CBS_OWNERDRAWVARIABLE | CBS_SORT | CBS_DROPDOWNLIST;
    ASSERT_TRUE(combo.Create(kComboStyle, CRect(200, 10, 300, 200), &host, kId + 1));
    ExpectNumbersSortedAndMeasured(combo);
    combo.SetCurSel(0);
    EXPECT_TRUE(support::PumpUntil([&] { return combo.drawn > 0; }));
    combo.ResetContent();
    EXPECT_EQ(combo.deleted.size(), 3u);
}

class KeyList : public CListBox
{
public:
    int answer = -1;

protected:
    int VKeyToItem(UINT key, UINT index) override
    {
        EXPECT_EQ(key, static_cast<UINT>(VK_DOWN));
        EXPECT_EQ(static_cast<int>(index), GetCaretIndex());
        return answer;
    }
};

TEST_F(StandardControls, ListAsksItselfForTheItemOfAKey)
{
    KeyList list;
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | LBS_NOTIFY | LBS_WANTKEYBOARDINPUT;
    ASSERT_TRUE(list.Create(kStyle, kPlace, &host, kId));
    for (int item = 0; item < 6; ++item)
        list.AddString(L"item");
    list.SetFocus();
    list.SetCurSel(1);
    support::Key(VK_DOWN);
    EXPECT_EQ(list.GetCurSel(), 2); // the list's own action
    list.answer = -2;
    support::Key(VK_DOWN);
    EXPECT_EQ(list.GetCurSel(), 2); // nothing
}

} // namespace
