// Texts and numbers of any kind for whatever takes texts apart, shows or exchanges them; see SoakInputs for
// how to have more of them.
#include "tests/controls/skinned_host.h"
#include "tests/robustness/random_text.h"
#include "tests/support/census.h"
#include "tests/support/recorder.h"
#include "vgui/assist/companion_fields.h"
#include "vgui/composite/combo_tree.h"
#include "vgui/composite/property_list.h"
#include "vgui/composite/tip_window.h"
#include "vgui/controls/button_exchange.h"
#include "vgui/controls/buttons.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/foundation/window_helpers.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <regex>
#include <set>

using namespace support;

namespace
{

constexpr UINT kId = 1000;
const CRect kPlace(10, 10, 170, 34);

std::vector<std::wstring> Split(const std::wstring& text, wchar_t delimiter)
{
    std::vector<std::wstring> parts(1);
    for (const wchar_t c : text) {
        if (c == delimiter)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

class TextsSoakTest : public CensusTest
{
};

// ---- The companion's messages

// The value after a key and one more character, up to the next question mark.
std::optional<std::wstring> ModelField(const std::wstring& text, const std::wstring& key, size_t maxLength)
{
    const size_t found = text.find(key);
    if (found == std::wstring::npos)
        return std::nullopt;
    std::wstring value;
    for (size_t i = found + key.size() + 1; i < text.size() && text[i] != L'?' && value.size() < maxLength;
         ++i)
        value += text[i];
    return value;
}

std::wstring RandomMessage(RandomText& random)
{
    constexpr size_t kMostOfOne = 250; // characters; the end of a field of twice as many may be lost
    constexpr const wchar_t* kKeys[] = {L"?Total", L"?Process", L"?Message", L"?CurObject", L"?", L"?Tot"};
    std::wstring text;
    for (size_t fields = random.Below(6); fields-- > 0;)
        text += kKeys[random.Below(std::size(kKeys))] + random.Next(L"=?", 40).substr(0, kMostOfOne);
    return text;
}

// What the inbox makes of bytes that are read in pieces of any size.
std::vector<CString> ReadInPieces(RandomText& random, const BYTE* bytes, size_t size, bool isOneMessage)
{
    companion::Inbox inbox;
    std::vector<CString> all;
    for (size_t begin = 0; begin < size;) {
        const size_t piece = 1 + random.Below(std::min<size_t>(size - begin, 64));
        const bool goesOn = isOneMessage ? begin + piece < size : random.Below(2) == 0;
        const std::vector<CString> taken = inbox.Take(bytes + begin, piece, goesOn);
        all.insert(all.end(), taken.begin(), taken.end());
        begin += piece;
    }
    const std::vector<CString> rest = inbox.TakeRest();
    all.insert(all.end(), rest.begin(), rest.end());
    return all;
}

} // namespace

TEST_F(TextsSoakTest, CompanionFieldsAreThoseOfAModel)
{
    SoakWithText(4000, [](RandomText& random) {
        const std::wstring text = RandomMessage(random);
        const CString message(text.data(), static_cast<int>(text.size()));
        for (const wchar_t* const key : {L"?Total", L"?Message", L"?CurObject", L"?"}) {
            const size_t most = random.Below(300);
            const auto value = companion::FindField(message, key, static_cast<int>(most));
            const auto model = ModelField(text, key, most);
            ASSERT_EQ(value.has_value(), model.has_value());
            if (model) {
                EXPECT_EQ(std::wstring(*value), *model);
            }
            EXPECT_EQ(companion::FindNumber(message, key).has_value(), model.has_value());
        }
        const std::wstring block = companion::ProfileBlock(message);
        EXPECT_EQ(block.size(), text.size() + 2);
        EXPECT_EQ(block.find(L';'), std::wstring::npos);
    });
}

TEST_F(TextsSoakTest, CompanionMessagesKeepTheirFieldsWhereverTheyAreCut)
{
    SoakWithText(4000, [](RandomText& random) {
        const std::wstring text = RandomMessage(random);
        std::wstring joined;
        for (const CString& part : ReadInPieces(random, reinterpret_cast<const BYTE*>(text.data()),
                                                text.size() * sizeof(wchar_t), true)) {
            EXPECT_TRUE(joined.empty() || part[0] == L'?') << "a field was cut";
            joined += part;
        }
        EXPECT_EQ(joined, text);

        const std::vector<BYTE> bytes = random.Bytes(400);
        size_t characters = 0;
        for (const CString& message : ReadInPieces(random, bytes.data(), bytes.size(), false)) {
            EXPECT_FALSE(message.IsEmpty());
            characters += message.GetLength();
        }
        EXPECT_LE(characters, bytes.size() / sizeof(wchar_t));
    });
}

TEST_F(TextsSoakTest, CompanionHistoryNumbersAreThoseOfAModel)
{
    constexpr size_t kLines = 4;
    constexpr int kNone = -1;
    const std::regex lineEnd("\\r+\\n?|\\n");
    const std::regex number("^[ \\t\\v\\f]*([+-]?[0-9]+)");
    SoakWithText(4000, [&](RandomText& random) {
        std::string text;
        for (size_t parts = random.Below(16); parts-- > 0;) {
            constexpr const char* kParts[] = {"\r\n", "\n", "\r", "-", "99999999999", " ", "+"};
            if (random.Below(3) == 0)
                text += std::to_string(random.Number());
            else
                text += random.Rarely() ? random.String(8) : kParts[random.Below(std::size(kParts))];
        }
        std::array<int, kLines> model;
        model.fill(kNone);
        std::sregex_token_iterator line(text.begin(), text.end(), lineEnd, -1);
        for (size_t i = 0; i < kLines && line != std::sregex_token_iterator(); ++i, ++line) {
            const std::string one = *line;
            if (std::smatch found; std::regex_search(one, found, number))
                model[i] = static_cast<int>(
                    std::clamp<double>(std::strtod(found[1].str().c_str(), nullptr), INT_MIN, INT_MAX));
        }
        EXPECT_EQ(companion::LineNumbers<kLines>(text, kNone), model) << text;
    });
}

// ---- Choices and paths

namespace
{

class OpenList : public VPropertyList
{
public:
    using VPropertyList::AddStrToComboList;
};

// The labels of a path: one delimiter at its end is none too many.
std::vector<std::wstring> Labels(const std::wstring& path, wchar_t delimiter)
{
    std::vector<std::wstring> labels = Split(path, delimiter);
    if (labels.size() > 1 && labels.back().empty())
        labels.pop_back();
    return labels;
}

} // namespace

TEST_F(TextsSoakTest, ChoicesAreWhatStandsBetweenTheBars)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({300, 200}));
    CComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | CBS_DROPDOWNLIST, kPlace, &host, kId));
    OpenList list;
    SoakWithText(1000, [&](RandomText& random) {
        const std::wstring choices = random.Next(L"|");
        combo.ResetContent();
        list.AddStrToComboList(&combo, choices.c_str());
        const std::vector<std::wstring> parts = Split(choices, L'|');
        ASSERT_EQ(combo.GetCount(), static_cast<int>(parts.size()));
        for (int i = 0; i < combo.GetCount(); ++i) {
            CString text;
            combo.GetLBText(i, text);
            EXPECT_EQ(std::wstring(text), parts[i]);
        }
    });
}

TEST_F(TextsSoakTest, TreePathsAreThoseOfAModel)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({300, 200}));
    ComboTree combo;
    ASSERT_TRUE(combo.Create(kPlace, 180, 160, &host, kId));
    std::set<std::vector<std::wstring>> known;
    SoakWithText(1500, [&](RandomText& random) {
        if (random.Below(50) == 0 || known.size() > 300) {
            combo.ResetContent();
            known.clear();
        }
        const wchar_t delimiter = L"/|\\.a"[random.Below(5)];
        combo.SetPathDelimiter(delimiter);
        const std::wstring path = random.Next(L"ab/|\\.");
        const std::vector<std::wstring> labels = Labels(path, delimiter);
        const bool canBe = !labels.front().empty();
        const bool wasThere = known.contains(labels);
        EXPECT_EQ(combo.FindString(path.c_str(), nullptr) != nullptr, canBe && wasThere);
        if (!canBe)
            return; // such a path is added but never found
        const HTREEITEM added = combo.AddString(path.c_str());
        EXPECT_EQ(added != nullptr, !wasThere);
        if (added != nullptr) {
            EXPECT_EQ(combo.FindString(path.c_str(), nullptr), added);
            CString label;
            EXPECT_EQ(combo.GetLBText(added, label), labels.back().empty() ? -1 : 0);
            EXPECT_EQ(std::wstring(label), labels.back());
        }
        for (size_t count = 1; count <= labels.size(); ++count)
            known.emplace(labels.begin(), labels.begin() + count);
        EXPECT_EQ(combo.GetTree().GetCount(), known.size());
    });
}

TEST_F(TextsSoakTest, HistoriesOfComboBoxesAreThoseOfAModel)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({300, 200}));
    VComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | CBS_DROPDOWN, kPlace, &host, kId));
    std::vector<std::wstring> known;
    SoakWithText(1000, [&](RandomText& random) {
        const std::wstring history = random.Next(L"|;ab");
        const size_t textEnd = history.find(L'|');
        EXPECT_EQ(combo.LoadHistory(history.c_str()), textEnd != std::wstring::npos);
        // Without a current text nothing is changed.
        if (textEnd != std::wstring::npos) {
            known = Split(history.substr(textEnd + 1), L';');
            std::erase(known, L"");
        }
        ASSERT_EQ(combo.GetCount(), static_cast<int>(known.size()));
        std::wstring items;
        for (int i = 0; i < combo.GetCount(); ++i) {
            CString text;
            combo.GetLBText(i, text);
            EXPECT_EQ(std::wstring(text), known[i]);
            items += (i > 0 ? L";" : L"") + known[i];
        }
        // The current text stands before them.
        EXPECT_TRUE(std::wstring(combo.SaveHistory()).ends_with(L"|" + items));
    });
}

// Groups of both kinds of radio buttons, with others between and behind them.
TEST_F(TextsSoakTest, RadioGroupsTakeAnyNumber)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({300, 200}));
    SoakWithText(400, [&](RandomText& random) {
        std::vector<std::unique_ptr<VRadioBtn>> library;
        std::vector<HWND> all, radios;
        bool isOtherGroup = false;
        for (size_t i = 0, count = 1 + random.Below(10); i < count; ++i) {
            constexpr DWORD kTypes[] = {BS_AUTORADIOBUTTON, BS_RADIOBUTTON, BS_PUSHBUTTON, BS_GROUPBOX};
            const size_t type = i > 0 ? random.Below(std::size(kTypes)) : 0;
            const DWORD group = i > 0 && random.Rarely() ? WS_GROUP : 0;
            const HWND window =
                ::CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | kTypes[type] | group, 0, 0, 20, 20,
                                  host.m_hWnd, reinterpret_cast<HMENU>(kId + i), nullptr, nullptr);
            all.push_back(window);
            isOtherGroup = isOtherGroup || group != 0;
            if (type > 1)
                continue;
            if (random.Below(2) == 0) {
                library.push_back(std::make_unique<VRadioBtn>());
                ASSERT_TRUE(library.back()->SubclassWindow(window));
            }
            if (!isOtherGroup)
                radios.push_back(window);
        }
        int value = random.Below(2) == 0 ? random.Number() : static_cast<int>(random.Below(10));
        CDataExchange load(&host, FALSE);
        VGDDX_Radio(&load, kId, value);
        const bool isOne = value >= 0 && value < static_cast<int>(radios.size());
        for (size_t i = 0; i < radios.size(); ++i)
            EXPECT_EQ(::SendMessage(radios[i], BM_GETCHECK, 0, 0), isOne && radios[i] == radios[value]) << i;
        int saved = 77;
        CDataExchange save(&host, TRUE);
        VGDDX_Radio(&save, kId, saved);
        EXPECT_EQ(saved, isOne ? value : -1);
        for (const HWND window : all)
            ::DestroyWindow(window);
    });
}

// ---- Texts that are shown, links

TEST_F(TextsSoakTest, DialogsShowAnyText)
{
    DialogTemplate t(L"Skinned", 200, 100, WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT);
    t.Static(101, L"", 5, 5, 60, 10)
        .Button(102, L"", 5, 20, 60, 12)
        .Button(103, L"", 5, 40, 60, 12, BS_AUTOCHECKBOX);
    t.Button(104, L"", 5, 60, 60, 12, BS_AUTORADIOBUTTON).Button(105, L"", 100, 5, 60, 40, BS_GROUPBOX);
    SkinnedHost dialog;
    ASSERT_TRUE(dialog.Open(t));
    CXTTipWindow tip;
    ASSERT_TRUE(tip.Create(&dialog));
    SoakWithText(400, [&](RandomText& random) {
        const UINT id = 101 + static_cast<UINT>(random.Below(5));
        const std::wstring text = random.Next(L"&\n\t");
        for (const HWND window : {dialog.m_hWnd, ::GetDlgItem(dialog.m_hWnd, static_cast<int>(id))}) {
            ::SetWindowTextW(window, text.c_str());
            ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
            EXPECT_EQ(::GetWindowTextLengthW(window), static_cast<int>(text.size()));
        }
        dialog.AddToolTips(id, text.c_str());
        tip.SetTipText(random.Next().c_str(), text.c_str());
        tip.ShowTipWindow(CPoint(40, 40), VGTipShadow);
        tip.UpdateWindow();
    });
}

namespace
{

std::wstring g_opened;

BOOL WINAPI NoteOpened(SHELLEXECUTEINFOW* request)
{
    g_opened = request->lpFile;
    return TRUE;
}

} // namespace

TEST_F(TextsSoakTest, LinksAreOpenedWhole)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({300, 200}));
    VUrlEmailBtn link;
    ASSERT_TRUE(link.Create(L"caption", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, kPlace, &host, kId));
    const VGShellOpener usual = VGSetShellOpener(NoteOpened);
    SoakWithText(400, [&](RandomText& random) {
        constexpr const wchar_t* kPrefixes[] = {L"http:\\\\", L"mailto:"};
        const size_t type = random.Below(std::size(kPrefixes));
        const std::wstring target = random.Next();
        link.SetType(static_cast<int>(type));
        link.SetLink(target.c_str());
        g_opened.clear();
        link.SendMessage(BM_CLICK);
        const std::wstring whole = kPrefixes[type] + (target.empty() ? L"caption" : target);
        EXPECT_EQ(g_opened, whole);
    });
    VGSetShellOpener(usual);
}
