#include "vgui/assist/companion_fields.h"

#include <gtest/gtest.h>
#include <string>

using namespace companion;

namespace
{

std::wstring FieldOf(const wchar_t* text, const wchar_t* key, int maxLength = kMaxText)
{
    const auto value = FindField(text, key, maxLength);
    return value ? value->GetString() : L"(none)";
}

// What the inbox makes of a text that is read in pieces of so many bytes.
std::vector<std::wstring> Read(const std::wstring& text, size_t pieceSize)
{
    const auto* const bytes = reinterpret_cast<const BYTE*>(text.data());
    const size_t size = text.size() * sizeof(wchar_t);
    Inbox inbox;
    std::vector<std::wstring> all;
    const auto add = [&all](const std::vector<CString>& messages) {
        for (const CString& message : messages)
            all.emplace_back(message.GetString());
    };
    for (size_t begin = 0; begin < size; begin += pieceSize) {
        const size_t piece = std::min(pieceSize, size - begin);
        add(inbox.Take(bytes + begin, piece, begin + piece < size));
    }
    add(inbox.TakeRest());
    return all;
}

using Texts = std::vector<std::wstring>;

} // namespace

TEST(CompanionFields, AreFoundByTheirFirstKeyAndEndAtTheNext)
{
    struct Case {
        const wchar_t* text;
        const wchar_t* key;
        const wchar_t* value;
    };
    for (const Case& c : {
             Case{L"?Total=50?Message=copying", L"?Total", L"50"},
             Case{L"?Total=50?Message=copying", L"?Message", L"copying"},
             Case{L"?Total=50?Message=copying", L"?Process", L"(none)"},
             Case{L"?total=50", L"?Total", L"(none)"},
             Case{L"?Total50", L"?Total", L"0"}, // no separator: the first character is taken for it
             Case{L"?Total:50", L"?Total", L"50"},
             Case{L"?Total=1?Total=2", L"?Total", L"1"},
             Case{L"?Total", L"?Total", L""},
             Case{L"?Total=", L"?Total", L""},
             Case{L"?Message=a=b 中文;", L"?Message", L"a=b 中文;"},
         })
        EXPECT_EQ(FieldOf(c.text, c.key), c.value) << c.text << L" " << c.key;
    EXPECT_EQ(FieldOf(L"?Message=abcdef", L"?Message", 4), L"abcd");
}

TEST(CompanionFields, HoldNumbersOfAnySize)
{
    EXPECT_EQ(FindNumber(L"?Total=50x", L"?Total"), 50);
    EXPECT_EQ(FindNumber(L"?Total= -7", L"?Total"), -7);
    EXPECT_EQ(FindNumber(L"?Total=abc", L"?Total"), 0);
    EXPECT_EQ(FindNumber(L"?Total=99999999999999", L"?Total"), INT_MAX);
    EXPECT_FALSE(FindNumber(L"?Process=1", L"?Total"));
}

TEST(CompanionFields, ProfileLinesAreDividedBySemicolons)
{
    EXPECT_EQ(ProfileBlock(L"a=1;b=2;;"), std::wstring(L"a=1\0b=2\0\0\0\0", 11));
    EXPECT_EQ(ProfileBlock(L"a=1"), std::wstring(L"a=1\0\0", 5));
}

TEST(CompanionFieldsInbox, EndsMessagesAtTheirZeros)
{
    EXPECT_EQ(Read(std::wstring(L"?Process=1\0?Process=2\0\0", 23), 260),
              (Texts{L"?Process=1", L"?Process=2"}));
}

TEST(CompanionFieldsInbox, KeepsNoMoreOfAnEndlessFieldThanIsUsed)
{
    const std::vector<std::wstring> messages = Read(L"?Message=" + std::wstring(100000, L'x'), 260);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_LE(messages[0].size(), 1000u);
    EXPECT_EQ(FieldOf(messages[0].c_str(), L"?Message"), std::wstring(kMaxText, L'x'));
}
