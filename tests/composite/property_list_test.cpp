#include "vgui/composite/property_list.h"

#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/lingering.h"
#include "tests/support/modal.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>
#include <memory>
#include <tuple>
#include <vector>

using namespace support;

namespace
{

using List = VPropertyList;

constexpr UINT kId = 700;
constexpr UINT kNextId = 701;
constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | WS_VSCROLL | LBS_NOTIFY |
                             LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT;
const CRect kPlace(10, 10, 230, 140);
const CRect kRow(0, 20, 200, 40);

class OpenList : public List
{
public:
    using List::AddStrToComboList;
    using List::EndEdit;
    using List::EnsureVisible;
    using List::m_combo;
    using List::m_dropList;
    using List::m_edit;
    using List::m_nEditIndex;
    using List::StartEdit;
};

using Posted = std::tuple<UINT, int, int>; // message, row, detail

class PropertyList : public CensusTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open());
        AttachList();
        ASSERT_TRUE(next.Create(L"next", WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(260, 10, 340, 40), &host,
                                kNextId));
    }
    void AttachList()
    {
        list.reset(new Lingering<OpenList>);
        const HWND window = ::CreateWindowExW(
            0, L"LISTBOX", L"", kListStyle, kPlace.left, kPlace.top, kPlace.Width(), kPlace.Height(),
            host.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{kId}), ::AfxGetInstanceHandle(), nullptr);
        ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(DEFAULT_GUI_FONT)),
                       FALSE);
        ASSERT_TRUE(list->SubclassWindow(window));
    }
    void TearDown() override
    {
        // Windows before the objects that they call.
        host.DestroyWindow();
    }

    void AddPlain(int count)
    {
        for (int i = 0; i < count; ++i)
            list->AddItem(L"n" + CString(static_cast<wchar_t>(L'0' + i % 10)), L"v", L"", List::PIET_EDIT);
        PumpMessages();
    }
    // What the list has posted since the last call.
    std::vector<Posted> TakePosted()
    {
        PumpMessages();
        std::vector<Posted> posted;
        for (const RecordedMessage& message : host.Messages()) {
            if (message.message == List::kValueStored || message.message == List::kEditStarted)
                posted.emplace_back(message.message, static_cast<int>(message.wParam),
                                    static_cast<int>(message.lParam));
        }
        host.Clear();
        return posted;
    }
    void ClickRow(int row)
    {
        CRect rect;
        list->GetItemRect(row, rect);
        Click(ClientToScreen(list->m_hWnd, {5, rect.CenterPoint().y}));
    }
    CRect PlaceOf(const CWnd& editor)
    {
        CRect rect;
        editor.GetWindowRect(rect);
        list->ScreenToClient(rect);
        return rect;
    }

    // A row as it is drawn into kRow of a surface.
    DibSurface Drawn(UINT row)
    {
        DibSurface surface(kRow.Width(), 60);
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_LISTBOX;
        item.itemID = row;
        item.itemAction = ODA_DRAWENTIRE;
        item.hDC = surface.DC().m_hDC;
        item.rcItem = kRow;
        list->DrawItem(&item);
        return surface;
    }

    HostWnd host;
    std::unique_ptr<OpenList> list;
    CButton next;
};

std::vector<CString> Choices(const CComboBox& combo)
{
    std::vector<CString> items(combo.GetCount());
    for (int i = 0; i < combo.GetCount(); ++i)
        combo.GetLBText(i, items[i]);
    return items;
}

Posted Started(int row, int before = -1)
{
    return {0x478, row, before};
}

Posted Stored(int row)
{
    return {0x477, row, 0};
}

} // namespace

TEST_F(PropertyList, TextsOfRowsAndOfMissingOnes)
{
    list->AddItem(L"a", L"1", L"", List::PIET_EDIT);
    list->AddItem(L"A", L"2", L"", List::PIET_COMBO);
    list->AddItem(L"a", L"3", L"", List::PIET_GROUP);
    list->AddItem(L"x", L"4", L"", static_cast<List::PIET>(4));
    EXPECT_EQ(list->GetCount(), 3);
    EXPECT_EQ(list->FindItemIndex(L"a"), 0);
    EXPECT_EQ(list->FindItemValue(L"A"), L"2");
    EXPECT_EQ(list->FindItemIndex(L"x"), -1);
    EXPECT_EQ(list->FindItemValue(L"x"), L"");

    list->SetItem(1, L"value", L"name");
    EXPECT_EQ(list->GetItemName(1), L"name");
    EXPECT_EQ(list->GetItemValue(1), L"value");
    list->SetItemName(0, L"n");
    list->SetItemValue(0, L"v");
    EXPECT_EQ(list->GetItemName(0), L"n");
    EXPECT_EQ(list->GetItemValue(0), L"v");
    for (const int index : {-1, 3}) {
        list->SetItemName(index, L"bad");
        list->SetItemValue(index, L"bad");
        list->SetItem(index, L"bad", L"bad");
        EXPECT_EQ(list->GetItemName(index), L"");
        EXPECT_EQ(list->GetItemValue(index), L"");
        EXPECT_THROW(list->StartEdit(index), CInvalidArgException*);
    }
    EXPECT_EQ(list->FindItemIndex(L"bad"), -1);
}

TEST_F(PropertyList, ChoicesAreSplitAtEveryBar)
{
    const struct {
        LPCWSTR choices;
        std::vector<CString> wanted;
    } cases[] = {{L"a|b|", {L"a", L"b", L""}},
                 {L"a", {L"a"}},
                 {L"", {L""}},
                 {L"|", {L"", L""}},
                 {L"b||a", {L"b", L"", L"a"}}};
    for (const auto& item : cases) {
        for (const List::PIET kind : {List::PIET_COMBO, List::PIET_DROPLIST}) {
            list->AddItem(L"n", L"b", item.choices, kind);
            list->StartEdit(list->GetCount() - 1);
            const CComboBox& combo = kind == List::PIET_COMBO ? list->m_combo : list->m_dropList;
            EXPECT_EQ(Choices(combo), item.wanted);
        }
    }
    list->AddStrToComboList(nullptr, L"a|b");
}

TEST_F(PropertyList, EachKindHasItsEditor)
{
    list->SetPercent(40, 55);
    list->AddItem(L"combo", L"free", L"one|two", List::PIET_COMBO);
    list->AddItem(L"drop", L"TW", L"one|two", List::PIET_DROPLIST);
    list->AddItem(L"edit", L"text", L"", List::PIET_EDIT);
    CWnd* const editors[] = {&list->m_combo, &list->m_dropList, &list->m_edit};
    LPCWSTR const shown[] = {L"free", L"two", L"text"};
    CRect client;
    list->GetClientRect(client);
    for (int row = 0; row < 3; ++row) {
        list->StartEdit(row);
        EXPECT_EQ(list->m_nEditIndex, row);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(editors[i]->IsWindowVisible() != FALSE, i == row);
        const HWND focus = ::GetFocus();
        EXPECT_TRUE(focus == editors[row]->m_hWnd || ::GetParent(focus) == editors[row]->m_hWnd);
        EXPECT_EQ(WindowText(editors[row]->m_hWnd), shown[row]);
        EXPECT_EQ(editors[row]->GetFont()->m_hObject, list->GetFont()->m_hObject);
        const CRect place = PlaceOf(*editors[row]);
        EXPECT_EQ(place.left, client.Width() * 40 / 100);
        EXPECT_EQ(place.Width(), client.Width() * 55 / 100);
        EXPECT_EQ(place.top, 20 * row);
    }
    EXPECT_EQ(PlaceOf(list->m_edit).Height(), 19);
    EXPECT_EQ(list->m_edit.GetSel(), MAKELONG(0, 4));
    list->StartEdit(0);
    EXPECT_EQ(list->m_combo.GetEditSel(), static_cast<DWORD>(MAKELONG(0, 4)));
    CRect dropped;
    list->m_combo.GetDroppedControlRect(dropped);
    list->ScreenToClient(dropped);
    EXPECT_GT(dropped.bottom, 60) << "there is room for the list";
}

TEST_F(PropertyList, TypedTextsAreStoredAndTold)
{
    list->AddItem(L"combo", L"free", L"one|two", List::PIET_COMBO);
    list->AddItem(L"drop", L"one", L"one|two", List::PIET_DROPLIST);
    list->AddItem(L"edit", L"text", L"", List::PIET_EDIT);
    list->AddItem(L"other", L"neither", L"one|two", List::PIET_DROPLIST);
    list->SetFocus();
    Key(VK_RETURN);
    EXPECT_EQ(TakePosted(), (std::vector{Started(0)}));
    Type(L"三");
    Key(VK_TAB);
    EXPECT_EQ(TakePosted(), (std::vector{Stored(0), Started(1)}));
    EXPECT_EQ(list->GetItemValue(0), L"三");
    Type(L"t");
    Key(VK_DOWN);
    EXPECT_EQ(list->GetItemValue(1), L"two");
    Type(L"new");
    EXPECT_EQ(list->GetItemValue(2), L"text") << "not before the editor is closed";
    Key(VK_DOWN);
    EXPECT_EQ(list->GetItemValue(2), L"new");
    EXPECT_EQ(TakePosted(), (std::vector{Stored(1), Started(2), Stored(2), Started(3)}));

    // A value that is no choice stays when none is chosen; a quiet end tells nothing.
    list->EndEdit(false);
    EXPECT_EQ(list->GetItemValue(3), L"neither");
    EXPECT_EQ(TakePosted(), std::vector<Posted>());
    EXPECT_EQ(list->m_nEditIndex, -1);
    list->EndEdit(true);
    EXPECT_EQ(TakePosted(), std::vector<Posted>());

    // An edit of the row that is being edited goes on with what was typed.
    list->StartEdit(2);
    Type(L"er");
    list->StartEdit(2);
    EXPECT_EQ(WindowText(list->m_edit.m_hWnd), L"er");
    EXPECT_EQ(TakePosted(), (std::vector{Started(2), Stored(2), Started(2)}));
}

TEST_F(PropertyList, KeysGoFromRowToRowUpToAHeader)
{
    AddPlain(2);
    list->AddItem(L"group", L"", L"", List::PIET_GROUP);
    AddPlain(2);
    const struct {
        int from;
        UINT key;
        int to;
    } cases[] = {
        {-1, VK_RETURN, 0}, {-1, VK_TAB, 0}, {-1, VK_DOWN, 0}, {-1, VK_UP, -1}, {0, VK_RETURN, 1},
        {0, VK_TAB, 1},     {0, VK_DOWN, 1}, {0, VK_UP, 0},    {1, VK_UP, 0},   {1, VK_DOWN, 1},
        {1, VK_RETURN, 1},  {1, VK_TAB, 1},  {3, VK_UP, 3},    {4, VK_DOWN, 4},
    };
    for (const auto& item : cases) {
        list->SetFocus();
        list->EndEdit(false);
        if (item.from >= 0)
            list->StartEdit(item.from);
        const HWND focus = ::GetFocus();
        Key(item.key);
        EXPECT_EQ(list->m_nEditIndex, item.to) << item.from << " " << item.key;
        if (item.from == item.to) {
            EXPECT_EQ(::GetFocus(), focus) << "the key was swallowed";
        }
    }
}

TEST_F(PropertyList, TheLastRowLeadsOutOfTheList)
{
    AddPlain(2);
    for (const UINT key : {VK_RETURN, VK_TAB}) {
        list->StartEdit(1);
        TakePosted();
        Type(L"typed");
        Key(key);
        EXPECT_EQ(CWnd::GetFocus(), &next);
        EXPECT_TRUE(list->m_edit.IsWindowVisible()) << "losing the focus closes nothing";
        EXPECT_EQ(list->GetItemValue(1), L"v");
        EXPECT_EQ(TakePosted(), std::vector<Posted>());
        list->EndEdit(false);
        list->SetItemValue(1, L"v");
    }
}

TEST_F(PropertyList, ClicksOpenRows)
{
    AddPlain(3);
    list->AddItem(L"group", L"", L"", List::PIET_GROUP);
    ClickRow(1);
    EXPECT_EQ(TakePosted(), (std::vector{Started(1)}));
    EXPECT_TRUE(list->m_edit.IsWindowVisible());
    host.Clear();
    ClickRow(2);
    const std::vector<int> codes = host.CommandCodes(kId);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), LBN_SELCHANGE), 1) << "the parent hears of it, too";
    EXPECT_EQ(TakePosted(), (std::vector{Stored(1), Started(2)}));
    ClickRow(3);
    EXPECT_EQ(list->m_nEditIndex, 2) << "a header leaves the editor open";
    Click(next.m_hWnd);
    EXPECT_EQ(list->m_nEditIndex, 2);
    EXPECT_TRUE(list->m_edit.IsWindowVisible());
    EXPECT_EQ(TakePosted(), std::vector<Posted>());
}

TEST_F(PropertyList, ColumnsAreTruncatedShares)
{
    AddPlain(1);
    const struct {
        int width, name, value, left, cell;
    } cases[] = {{201, 50, 50, 100, 100},  {199, 33, 67, 65, 133}, {100, 29, 57, 29, 57},
                 {150, 0, 100, 0, 150},    {150, 100, 0, 150, 0},  {150, 50, -50, 75, 0},
                 {150, -20, 120, -30, 180}};
    for (const auto& item : cases) {
        list->SetWindowPos(nullptr, 0, 0, item.width + 2, kPlace.Height(), SWP_NOMOVE | SWP_NOZORDER);
        list->SetPercent(item.name, item.value);
        list->StartEdit(0);
        const CRect place = PlaceOf(list->m_edit);
        EXPECT_EQ(place.left, item.left);
        EXPECT_EQ(place.Width(), item.cell);
    }
    list->SetPercent(2000000000, -2000000000);
    list->StartEdit(0);
    list->RedrawWindow();
}

TEST_F(PropertyList, RowsScrollIntoView)
{
    AddPlain(40);
    CRect client;
    list->GetClientRect(client);
    const auto expectVisible = [&](int row) {
        CRect rect;
        list->GetItemRect(row, rect);
        EXPECT_GE(rect.top, 0) << row;
        EXPECT_LE(rect.bottom, client.bottom) << row;
        EXPECT_EQ(PlaceOf(list->m_edit).top, rect.top) << row;
    };
    list->StartEdit(0);
    for (int row = 1; row < 40; ++row) {
        Key(VK_DOWN);
        ASSERT_EQ(list->m_nEditIndex, row);
        expectVisible(row);
    }
    EXPECT_EQ(list->GetTopIndex(), 40 - client.Height() / 20) << "no further than needed";
    list->SetTopIndex(0);
    EXPECT_GT(PlaceOf(list->m_edit).top, client.bottom) << "the editor scrolls with its row";
    Key(VK_UP);
    expectVisible(38);

    for (const int row : {0, 39, 0, 20, 21, 5}) {
        list->EnsureVisible(row);
        list->StartEdit(row);
        expectVisible(row);
    }
    EXPECT_EQ(list->GetTopIndex(), 5) << "no further than needed";
    list->EnsureVisible(-1);
    list->EnsureVisible(40);
    EXPECT_EQ(list->GetTopIndex(), 5);
    list->SetWindowPos(nullptr, 0, 0, kPlace.Width(), 12, SWP_NOMOVE | SWP_NOZORDER);
    list->EnsureVisible(7);
    EXPECT_EQ(list->GetTopIndex(), 7) << "lower than a row: its top is what is shown";
}

TEST_F(PropertyList, EditorFollowsTheList)
{
    AddPlain(10);
    list->StartEdit(2);
    list->SetWindowPos(nullptr, 0, 0, 302, kPlace.Height(), SWP_NOMOVE | SWP_NOZORDER);
    CRect client;
    list->GetClientRect(client);
    EXPECT_EQ(PlaceOf(list->m_edit).right, client.Width() / 2 * 2);
    list->SendMessage(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(PlaceOf(list->m_edit).top, 20);
    EXPECT_TRUE(list->m_edit.IsWindowVisible());
    CFont font;
    font.CreatePointFont(140, L"宋体");
    list->SetFont(&font);
    EXPECT_EQ(list->m_edit.GetFont()->m_hObject, font.m_hObject);
    list->SetFont(nullptr);
}

TEST_F(PropertyList, EditorFollowsWhatScrollsToASelection)
{
    AddPlain(6);
    for (int i = 0; i < 6; ++i)
        list->AddItem(L"header", L"", L"", List::PIET_GROUP);
    void (*const selections[])(OpenList&) = {
        [](OpenList& open) { open.SetCurSel(9); }, [](OpenList& open) { open.SetCaretIndex(10, FALSE); },
        [](OpenList& open) { open.SendMessage(WM_KEYDOWN, VK_END); },
        [](OpenList& open) {
            // A header of which only the upper part is in view.
            CRect client;
            open.GetClientRect(client);
            open.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, client.bottom - 2));
            open.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(5, client.bottom - 2));
        }};
    for (const auto& select : selections) {
        list->SetCurSel(0);
        list->SetTopIndex(0);
        list->StartEdit(1);
        // Not every system's list box takes its children along when it scrolls.
        list->m_edit.MoveWindow(0, 100, 10, 10);
        select(*list);
        EXPECT_EQ(list->m_nEditIndex, 1);
        CRect row;
        list->GetItemRect(1, row);
        EXPECT_EQ(PlaceOf(list->m_edit).top, row.top);
    }
}

TEST_F(PropertyList, RemovedRowsTakeTheirTextsAndTheEditorAlong)
{
    AddPlain(4);
    list->StartEdit(3);
    list->DeleteString(1);
    EXPECT_EQ(list->m_nEditIndex, -1);
    EXPECT_FALSE(list->m_edit.IsWindowVisible());
    EXPECT_EQ(list->GetItemName(1), L"n2");
    list->StartEdit(1);
    TakePosted();
    list->ResetContent();
    EXPECT_EQ(list->GetItemName(0), L"");
    EXPECT_FALSE(list->m_edit.IsWindowVisible());
    AddPlain(1);
    EXPECT_EQ(list->GetItemName(0), L"n0");
    EXPECT_EQ(TakePosted(), std::vector<Posted>());
}

TEST_F(PropertyList, TheTextOfAnItemIsNotItsRow)
{
    AddPlain(3);
    for (const int row : {0, 2}) {
        list->SetText(row, L"");
        EXPECT_EQ(list->GetCount(), 3);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(list->GetItemName(i), L"n" + CString(static_cast<wchar_t>(L'0' + i)));
    }
}

TEST_F(PropertyList, ALostEditorStoresNothingAndIsMadeAgain)
{
    AddPlain(3);
    list->StartEdit(1);
    TakePosted();
    ::DestroyWindow(list->m_edit.m_hWnd);
    list->EndEdit(true);
    EXPECT_EQ(list->m_nEditIndex, 1);
    EXPECT_EQ(list->GetItemValue(1), L"v");
    list->StartEdit(2);
    EXPECT_EQ(TakePosted(), (std::vector{Started(2, 1)}));
    EXPECT_EQ(WindowText(list->m_edit.m_hWnd), L"v");

    host.DestroyWindow();
    EXPECT_EQ(list->m_nEditIndex, -1);
    EXPECT_EQ(list->m_edit.m_hWnd, nullptr);
    list->EndEdit(true);
    EXPECT_EQ(list->GetItemName(2), L"n2") << "the texts are the object's";
}

// The list tells of the focus when an editor gets it or is hidden with it.
TEST_F(PropertyList, TheHostMayTakeRowsWhenTheFocusMoves)
{
    const auto startWhileRowGoes = [&](int index, int code, UINT row) {
        host.SetAnswer([=, this](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_COMMAND && wParam == MAKEWPARAM(kId, code))
                list->DeleteString(row);
            return {};
        });
        EXPECT_NO_THROW(list->StartEdit(index));
        host.SetAnswer({});
        EXPECT_EQ(list->m_nEditIndex, -1);
        EXPECT_FALSE(list->m_edit.IsWindowVisible());
    };
    AddPlain(2);
    list->AddItem(L"header", L"", L"", List::PIET_GROUP);
    list->StartEdit(0);
    startWhileRowGoes(1, LBN_SETFOCUS, 1); // a header now
    AddPlain(1);
    list->StartEdit(0);
    startWhileRowGoes(2, LBN_SETFOCUS, 2); // no row any more
    list->SetFocus();
    startWhileRowGoes(0, LBN_KILLFOCUS, 0); // its editor has been closed
}

TEST_F(PropertyList, TheHostMayDestroyItWhenTheFocusMoves)
{
    const struct {
        int code;
        void (*act)(OpenList&);
    } occasions[] = {{LBN_KILLFOCUS, [](OpenList& open) { open.StartEdit(1); }},
                     {LBN_SETFOCUS, [](OpenList& open) { open.StartEdit(1); }},
                     {LBN_SETFOCUS, [](OpenList& open) { open.EndEdit(true); }},
                     {LBN_SETFOCUS, [](OpenList& open) { open.DeleteString(0); }},
                     {LBN_SETFOCUS, [](OpenList& open) { open.ResetContent(); }}};
    for (const auto& occasion : occasions) {
        if (list == nullptr)
            AttachList();
        AddPlain(2);
        list->SetFocus();
        if (occasion.code == LBN_SETFOCUS)
            list->StartEdit(0);
        host.SetAnswer([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_COMMAND && wParam == MAKEWPARAM(kId, occasion.code))
                list.reset();
            return {};
        });
        occasion.act(*list);
        host.SetAnswer({});
        EXPECT_EQ(list, nullptr);
        EXPECT_TRUE(Lingering<OpenList>::IsUntouched());
    }
}

TEST_F(PropertyList, RowsAreCellsAndHeadersAreBands)
{
    constexpr COLORREF kBare = DibSurface::kBackground;
    list->AddItem(L"", L"", L"", List::PIET_EDIT);
    list->AddItem(L"", L"", L"", List::PIET_GROUP);
    list->SetPercent(33, 50); // of 202 pixels: 66 and 101
    // The cells share the line at x = 65; the outermost lines lie outside.
    const auto expectCells = [&](int left, COLORREF nameColor) {
        ExpectPixels(Drawn(0), [=](int x, int y) {
            if (y < 19 || y >= 40 || x < left || x >= 166)
                return kBare;
            if (y == 19 || y == 39 || x == left || x == 65 || x == 165)
                return VGM.PropList.clrGrid;
            return x < 65 ? nameColor : kBare;
        });
    };
    expectCells(-1, kBare);
    list->StartEdit(0);
    expectCells(-1, VGM.PropList.clrSelBk);
    list->EndEdit(false);
    ExpectPixels(Drawn(1), [&](int, int y) {
        return y >= 19 && y < 39 ? VGFadeColor(VGM.Common.clrWhite, -20) : kBare;
    });
    // Every name is indented once a header has been drawn.
    expectCells(14, kBare);
    for (const UINT row : {2U, static_cast<UINT>(-1)})
        ExpectPixels(Drawn(row), [](int, int) { return kBare; });
    list->DrawItem(nullptr);
}

TEST_F(PropertyList, TextsStandInTheirCells)
{
    constexpr UINT kFormat = DT_VCENTER | DT_SINGLELINE;
    list->AddItem(L"名 name longer than its cell", L"值 value longer than its cell", L"", List::PIET_EDIT);
    list->AddItem(L"组 group", L"unseen", L"", List::PIET_GROUP);
    for (const bool edited : {false, true}) {
        if (edited)
            list->StartEdit(0);
        DibSurface model(kRow.Width(), 60);
        CDC& dc = model.DC();
        for (const CRect& cell : {CRect(-1, 19, 101, 40), CRect(100, 19, 201, 40)})
            dc.Draw3dRect(cell, VGM.PropList.clrGrid, VGM.PropList.clrGrid);
        if (edited) {
            dc.FillSolidRect(CRect(0, 20, 100, 39), VGM.PropList.clrSelBk);
            dc.SetTextColor(VGM.PropList.clrSelText);
        }
        dc.SetBkMode(TRANSPARENT);
        dc.DrawText(list->GetItemName(0), CRect(2, 19, 101, 40), kFormat);
        dc.DrawText(list->GetItemValue(0), CRect(103, 19, 201, 40), kFormat);
        EXPECT_TRUE(AreasEqual(Drawn(0), model.Bounds(), model, {0, 0})) << edited;
    }
    DibSurface model(kRow.Width(), 60);
    model.DC().FillSolidRect(CRect(0, 19, 200, 39), VGFadeColor(VGM.Common.clrWhite, -20));
    model.DC().SetBkMode(TRANSPARENT);
    model.DC().DrawText(list->GetItemName(1), CRect(3, 19, 201, 39), kFormat);
    EXPECT_TRUE(AreasEqual(Drawn(1), model.Bounds(), model, {0, 0}));
}

TEST_F(PropertyList, TheWindowShowsRowsOnABackgroundOfTheirOwn)
{
    const COLORREF background = ::GetSysColor(COLOR_WINDOW);
    list->AddItem(L"", L"", L"", List::PIET_GROUP);
    list->AddItem(L"", L"", L"", List::PIET_EDIT);
    AddPlain(1);
    list->StartEdit(1);
    PumpMessages();
    const DibSurface shown = CaptureClient(list->m_hWnd);
    const int middle = (shown.Width() + 2) / 2 - 1;
    EXPECT_EQ(shown.Pixel(50, 5), VGFadeColor(VGM.Common.clrWhite, -20));
    EXPECT_EQ(shown.Pixel(5, 30), background) << "left of an indented name";
    EXPECT_EQ(shown.Pixel(14, 30), VGM.PropList.clrGrid);
    EXPECT_EQ(shown.Pixel(20, 30), VGM.PropList.clrSelBk);
    EXPECT_EQ(shown.Pixel(middle, 50), VGM.PropList.clrGrid);
    EXPECT_EQ(shown.Pixel(50, 100), background) << "below the rows";
    // What moved stays clean: the edited row's mark goes with the editor.
    Key(VK_DOWN);
    PumpMessages();
    const DibSurface after = CaptureClient(list->m_hWnd);
    EXPECT_EQ(after.Pixel(20, 30), background);
    EXPECT_GT(after.Count(VGM.PropList.clrSelBk, CRect(15, 40, middle, 59)), 200);
    EXPECT_EQ(after.Count(VGM.PropList.clrSelBk, CRect(0, 60, shown.Width(), shown.Height())), 0);
}

// As attached ones are.
TEST_F(PropertyList, ListsCanBeCreated)
{
    for (const List::PIET kind : {List::PIET_COMBO, List::PIET_DROPLIST, List::PIET_EDIT}) {
        OpenList one;
        one.AddItem(L"early", L"bird", L"bird|worm", kind);
        ASSERT_TRUE(one.Create(kListStyle, CRect(10, 150, 230, 280), &host, kId + 5));
        EXPECT_EQ(one.GetItemHeight(0), 20);
        one.StartEdit(0);
        one.EndEdit(true);
        EXPECT_EQ(one.GetItemValue(0), L"bird");
    }
}

TEST_F(PropertyList, AnotherWindowHasItsOwnEditors)
{
    AddPlain(2);
    list->StartEdit(1);
    const HWND former = list->UnsubclassWindow();
    const HWND window = ::CreateWindowExW(0, L"LISTBOX", L"", kListStyle, 10, 150, 220, 130, host.m_hWnd,
                                          nullptr, ::AfxGetInstanceHandle(), nullptr);
    ASSERT_TRUE(list->SubclassWindow(window));
    EXPECT_EQ(list->m_nEditIndex, -1);
    EXPECT_EQ(::GetWindow(former, GW_CHILD), nullptr);
    list->StartEdit(0);
    EXPECT_EQ(list->m_edit.GetParent(), list.get());
    EXPECT_EQ(TakePosted().back(), Started(0));
}
