// CString and CStringA.
#include <afxcoll.h>
#include <afxwin.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace
{

std::wstring Text(const CString& text)
{
    return std::wstring(text.GetString(), static_cast<size_t>(text.GetLength()));
}

CString FormatList(LPCTSTR format, ...)
{
    va_list args;
    va_start(args, format);
    CString text;
    text.FormatV(format, args);
    va_end(args);
    return text;
}

} // namespace

TEST(StringStorage, CopiesShareUntilOneIsWritten)
{
    CString first(L"shared");
    CString second = first;
    EXPECT_EQ(first.GetString(), second.GetString());
    second.SetAt(0, L'S');
    EXPECT_NE(first.GetString(), second.GetString());
    EXPECT_EQ(Text(first), L"shared");
    EXPECT_EQ(Text(second), L"Shared");

    // An empty string has no memory to share or to free.
    CString empty;
    CString other = empty;
    other.GetBuffer(4)[0] = 0;
    other.ReleaseBuffer();
    EXPECT_STREQ(empty, L"");
}

TEST(StringStorage, LockedBufferIsNeitherSharedNorReplaced)
{
    CString locked(L"lock");
    LPTSTR const buffer = locked.LockBuffer();
    const CString copy = locked;
    EXPECT_NE(copy.GetString(), static_cast<LPCTSTR>(buffer));
    locked = CString(L"new");
    EXPECT_EQ(locked.GetString(), static_cast<LPCTSTR>(buffer));
    EXPECT_EQ(Text(locked), L"new");
    locked.Empty();
    EXPECT_EQ(locked.GetString(), static_cast<LPCTSTR>(buffer));
    locked.UnlockBuffer();
    EXPECT_EQ(Text(copy), L"lock");
}

TEST(StringStorage, CountsReferencesAcrossThreads)
{
    const CString shared(L"many threads hold this text");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&shared] {
            for (int round = 0; round < 20000; ++round) {
                CString copy = shared;
                if (round % 100 == 0)
                    copy += L"!";
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(Text(shared), L"many threads hold this text");
    CString last = shared;
    EXPECT_EQ(last.GetString(), shared.GetString());
}

TEST(StringStorage, BufferAccess)
{
    CString text(L"abcd");
    LPTSTR buffer = text.GetBuffer(100);
    EXPECT_STREQ(buffer, L"abcd");
    EXPECT_GE(text.GetAllocLength(), 100);
    wcscpy(buffer, L"Hello");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 5);

    // A buffer filled to the brim without a terminator ends where the buffer ends.
    const int room = text.GetAllocLength();
    std::fill_n(text.GetBuffer(room), room, L'x');
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), room);
    EXPECT_EQ(text[room], L'\0');

    text.GetBufferSetLength(3);
    EXPECT_EQ(Text(text), L"xxx");
    EXPECT_THROW(text.ReleaseBuffer(text.GetAllocLength() + 1), CInvalidArgException*);
    EXPECT_THROW(text.GetBuffer(-1), CInvalidArgException*);
    text.FreeExtra();
    EXPECT_LT(text.GetAllocLength(), 16);
    EXPECT_EQ(Text(text), L"xxx");
}

TEST(StringStorage, KeepsEmbeddedNulls)
{
    const CString text(L"a\0b", 3);
    EXPECT_EQ(text.GetLength(), 3);
    CString twice = text + text;
    EXPECT_EQ(Text(twice), std::wstring(L"a\0ba\0b", 6));
    twice.Insert(1, L'\0');
    EXPECT_EQ(twice.GetLength(), 7);
    EXPECT_EQ(twice.Find(L'b'), 3);
}

TEST(StringAccess, RefusesIndexesOutside)
{
    CString text(L"abc");
    EXPECT_EQ(text[3], L'\0'); // the terminator can be read, but not written
    EXPECT_THROW(text.SetAt(3, L'x'), CInvalidArgException*);
    EXPECT_THROW(text.GetAt(4), CInvalidArgException*);
    EXPECT_THROW(text.GetAt(-1), CInvalidArgException*);
    EXPECT_THROW(text.Truncate(4), CInvalidArgException*);
    EXPECT_THROW(text.SetString(L"x", -1), CInvalidArgException*);
    EXPECT_THROW(text.SetString(nullptr, 2), CInvalidArgException*);
    EXPECT_EQ(Text(text), L"abc");
    text.SetString(nullptr);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(StringAccess, TooLongIsOutOfMemory)
{
    CString text(L"abc");
    EXPECT_THROW(text.GetBuffer(INT_MAX), CMemoryException*);
    EXPECT_EQ(Text(text), L"abc");
}

TEST(StringConversion, BetweenCharacterTypes)
{
    // The conversion follows the thread's ANSI code page, whatever that is here.
    const CString ascii("plain");
    EXPECT_EQ(Text(ascii), L"plain");
    EXPECT_STREQ(CStringA(L"wide"), "wide");
    CString wide;
    wide = "narrow";
    wide += " and ";
    wide += 'c';
    EXPECT_EQ(Text(wide), L"narrow and c");
    EXPECT_TRUE(wide == "narrow and c");

    const CString chinese(L"\u4E2D\u6587");
    const CStringA narrow(chinese);
    BOOL lossy = FALSE;
    WideCharToMultiByte(CP_ACP, 0, chinese, -1, nullptr, 0, nullptr, GetACP() == CP_UTF8 ? nullptr : &lossy);
    if (!lossy) {
        EXPECT_EQ(Text(CString(narrow)), Text(chinese));
    }
    EXPECT_EQ(Text(CString(reinterpret_cast<const unsigned char*>("bytes"))), L"bytes");
    EXPECT_EQ(Text(CString(L'x', 3)), L"xxx");
    EXPECT_TRUE(CString(L'x', 0).IsEmpty());
    EXPECT_TRUE(CString(static_cast<LPCTSTR>(nullptr)).IsEmpty());
}

TEST(StringConcatenation, OwnTextAsArgument)
{
    CString text(L"ab");
    for (int i = 0; i < 6; ++i) // over several growths of the buffer
        text += text;
    EXPECT_EQ(text.GetLength(), 128);
    EXPECT_EQ(Text(text.Left(6)), L"ababab");

    text = L"hello";
    text = text.GetString() + 2;
    EXPECT_EQ(Text(text), L"llo");
    CString sharing = text;
    text = text.GetString() + 1;
    EXPECT_EQ(Text(text), L"lo");
    EXPECT_EQ(Text(sharing), L"llo");
    text.Insert(1, text);
    EXPECT_EQ(Text(text), L"lloo");
    text.Replace(text, text + text);
    EXPECT_EQ(Text(text), L"lloolloo");
    text.Append(text.GetString() + 6, 2);
    EXPECT_EQ(Text(text), L"lloollooo"
                          L"o");
    text.Format(L"<%s>", text);
    EXPECT_EQ(Text(text), L"<lloolloooo>");
    text.Trim(text);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(StringConcatenation, Operators)
{
    const CString b(L"b");
    EXPECT_EQ(Text(L"a" + b + L"c" + L'd' + 'e'), L"abcde");
    EXPECT_EQ(Text('a' + b), L"ab");
    EXPECT_EQ(Text(b + static_cast<LPCTSTR>(nullptr)), L"b");
}

TEST(StringComparison, OrdersLikeTheCharacters)
{
    const CString text(L"Soccer");
    EXPECT_TRUE(text == L"Soccer" && L"Soccer" == text && text == CString(L"Soccer"));
    EXPECT_TRUE(text != L"soccer" && L"soccer" != text);
    EXPECT_EQ(text.CompareNoCase(L"SOCCER"), 0);
    EXPECT_LT(text.Compare(L"Soccers"), 0);
    EXPECT_TRUE(text < L"a" && text <= L"Soccer" && L"a" > text && L"A" < text && text >= L"Soccer");
    EXPECT_TRUE(CString(L"x") == L'x' && L'x' == CString(L"x") && CString(L"xx") != L'x');
    EXPECT_GT(text.Compare(nullptr), 0);
    EXPECT_EQ(CString().Compare(nullptr), 0);
    EXPECT_EQ(text.Collate(L"Soccer"), 0);
}

TEST(StringSearch, Find)
{
    const CString text(L"abcdef def");
    EXPECT_EQ(text.Find(L"def"), 3);
    EXPECT_EQ(text.Find(L"def", 4), 7);
    EXPECT_EQ(text.Find(L"defx"), -1);
    EXPECT_EQ(text.Find(L'd', 4), 7);
    EXPECT_EQ(text.Find(L"f", 10), -1);
    EXPECT_EQ(text.Find(L"f", 11), -1);
    EXPECT_EQ(text.Find(L"f", -1), -1);
    EXPECT_EQ(text.Find(L'a', -1), -1);
    EXPECT_EQ(text.Find(static_cast<LPCTSTR>(nullptr)), -1);
    EXPECT_EQ(text.Find(L""), 0);
    EXPECT_EQ(text.ReverseFind(L'd'), 7);
    EXPECT_EQ(text.ReverseFind(L'x'), -1);
    EXPECT_EQ(text.FindOneOf(L"fed"), 3);
    EXPECT_EQ(text.FindOneOf(L""), -1);
    EXPECT_EQ(CString().ReverseFind(L'x'), -1);
}

TEST(StringExtraction, ClipsToTheString)
{
    const CString text(L"abcdef");
    EXPECT_EQ(Text(text.Mid(2, 3)), L"cde");
    EXPECT_EQ(Text(text.Mid(2)), L"cdef");
    EXPECT_EQ(Text(text.Mid(4, 100)), L"ef");
    EXPECT_EQ(Text(text.Mid(4, INT_MAX)), L"ef");
    EXPECT_EQ(Text(text.Mid(6, 1)), L"");
    EXPECT_EQ(Text(text.Mid(100, 1)), L"");
    EXPECT_EQ(Text(text.Mid(-2, 3)), L"abc");
    EXPECT_EQ(Text(text.Mid(1, -1)), L"");
    EXPECT_EQ(Text(text.Left(2) + text.Right(2)), L"abef");
    EXPECT_EQ(Text(text.Left(100)), L"abcdef");
    EXPECT_EQ(Text(text.Right(100)), L"abcdef");
    EXPECT_EQ(Text(text.Left(-1) + text.Right(-1)), L"");
    EXPECT_EQ(Text(text.SpanIncluding(L"cab")), L"abc");
    EXPECT_EQ(Text(text.SpanIncluding(L"x")), L"");
    EXPECT_EQ(Text(text.SpanExcluding(L"xd")), L"abc");
    EXPECT_EQ(Text(text.SpanExcluding(L"x")), L"abcdef");
}

TEST(StringExtraction, Tokenize)
{
    const CString text(L"%First Second#Third");
    std::vector<std::wstring> tokens;
    int position = 0;
    CString token = text.Tokenize(L"% #", position);
    while (!token.IsEmpty()) {
        tokens.push_back(Text(token));
        token = text.Tokenize(L"% #", position);
    }
    EXPECT_EQ(tokens, (std::vector<std::wstring>{L"First", L"Second", L"Third"}));
    EXPECT_EQ(position, -1);
    EXPECT_TRUE(text.Tokenize(L"%", position).IsEmpty()); // past the end for good
    EXPECT_EQ(position, -1);

    // Without delimiters the rest is one token, and the next call ends.
    position = 7;
    EXPECT_EQ(Text(text.Tokenize(nullptr, position)), L"Second#Third");
    EXPECT_TRUE(text.Tokenize(nullptr, position).IsEmpty());
    EXPECT_EQ(position, -1);
}

TEST(StringEditing, InsertAndDelete)
{
    CString text(L"bd");
    EXPECT_EQ(text.Insert(1, L'c'), 3);
    EXPECT_EQ(text.Insert(-5, L"a"), 4);
    EXPECT_EQ(text.Insert(100, L"ef"), 6);
    EXPECT_EQ(text.Insert(0, L""), 6);
    EXPECT_EQ(Text(text), L"abcdef");
    EXPECT_EQ(text.Delete(1, 2), 4);
    EXPECT_EQ(text.Delete(3, 100), 3);
    EXPECT_EQ(text.Delete(3), 3);
    EXPECT_EQ(text.Delete(0, -1), 3);
    EXPECT_EQ(Text(text), L"ade");
}

TEST(StringEditing, ReplaceAndRemove)
{
    CString text(L"aaa.bb.aaa");
    const CString before = text;
    EXPECT_EQ(text.Replace(L"aaa", L"c"), 2);
    EXPECT_EQ(Text(text), L"c.bb.c");
    EXPECT_EQ(text.Replace(L"c", L"longer"), 2);
    EXPECT_EQ(Text(text), L"longer.bb.longer");
    EXPECT_EQ(text.Replace(L"longer", nullptr), 2);
    EXPECT_EQ(Text(text), L".bb.");
    EXPECT_EQ(text.Replace(L"", L"x"), 0);
    EXPECT_EQ(text.Replace(L"b", L"bb"), 2); // what was put in is not searched again
    EXPECT_EQ(text.Replace(L'.', L'-'), 2);
    EXPECT_EQ(text.Remove(L'b'), 4);
    EXPECT_EQ(text.Remove(L'z'), 0);
    EXPECT_EQ(Text(text), L"--");
    EXPECT_EQ(Text(before), L"aaa.bb.aaa");
}

TEST(StringEditing, CaseTrimReverse)
{
    CString text(L" \t\r\nAbC \u00E9 ");
    const CString before = text;
    EXPECT_EQ(Text(text.Trim()), L"AbC \u00E9");
    EXPECT_EQ(Text(text.MakeUpper()), L"ABC \u00C9");
    EXPECT_EQ(Text(text.MakeLower()), L"abc \u00E9");
    EXPECT_EQ(Text(text.MakeReverse()), L"\u00E9 cba");
    EXPECT_EQ(before.GetLength(), 10);
    CString marks(L"**x**");
    EXPECT_EQ(Text(CString(marks).TrimLeft(L'*')), L"x**");
    EXPECT_EQ(Text(CString(marks).TrimRight(L"*!")), L"**x");
    EXPECT_EQ(Text(CString(marks).Trim(L"*x")), L"");
    EXPECT_EQ(Text(CString(L"   ").TrimRight()), L"");
}

TEST(StringFormat, PrintfConventions)
{
    CString text;
    const CString name(L"\u540D");
    text.Format(L"%s|%S|%hs|%d|%05.1f|%x|%c|%I64d|%%", name, "narrow", "h", -3, 2.25, 255u, L'c', 1LL << 40);
    EXPECT_EQ(Text(text), L"\u540D|narrow|h|-3|002.3|ff|c|1099511627776|%");
    text.AppendFormat(L"+%d", 7);
    EXPECT_EQ(Text(text.Right(3)), L"%+7");
    text.Format(L"");
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(Text(FormatList(L"%s-%d", L"v", 5)), L"v-5");

    // Longer than any fixed buffer.
    const CString filler(L'y', 70000);
    text.Format(L"[%s]", filler);
    EXPECT_EQ(text.GetLength(), 70002);
    EXPECT_THROW(text.Format(static_cast<LPCTSTR>(nullptr)), CInvalidArgException*);
    CStringA narrow;
    narrow.Format("%s=%d", CStringA("n"), 4);
    EXPECT_STREQ(narrow, "n=4");
}

TEST(StringFormat, MessageInserts)
{
    CString text;
    text.FormatMessage(L"%2 before %1, %3!d!", L"one", CString(L"two"), 3);
    EXPECT_EQ(Text(text), L"two before one, 3");
}

TEST(StringSystem, ResourcesOfNoModuleAreAbsent)
{
    constexpr UINT kAbsent = 0xEEEE;
    CString text(L"kept");
    EXPECT_FALSE(text.LoadString(kAbsent));
    EXPECT_FALSE(text.LoadString(AfxGetInstanceHandle(), kAbsent));
    EXPECT_FALSE(text.LoadString(AfxGetInstanceHandle(), kAbsent, LANG_NEUTRAL));
    EXPECT_EQ(Text(text), L"kept");
    EXPECT_TRUE(CString(MAKEINTRESOURCE(kAbsent)).IsEmpty());
    EXPECT_THROW(text.Format(kAbsent, 1), CResourceException*);
}

TEST(StringSystem, ResourcesOfTheSystem)
{
    // Any system module has some string; both ways of loading must agree on it.
    const HINSTANCE module = ::GetModuleHandle(L"user32.dll");
    CString plain;
    UINT id = 0;
    while (id < 0x10000 && !plain.LoadString(module, id))
        ++id;
    if (plain.IsEmpty())
        GTEST_SKIP() << "user32.dll has no strings here";
    TCHAR expected[512];
    const int length = ::LoadString(module, id, expected, _countof(expected));
    EXPECT_EQ(Text(plain), std::wstring(expected, static_cast<size_t>(length)));
}

TEST(StringSystem, EnvironmentAndBstr)
{
    ::SetEnvironmentVariable(L"STRING_TEST_VALUE", CString(L'v', 5000));
    ::SetEnvironmentVariable(L"STRING_TEST_NONE", nullptr);
    CString text;
    EXPECT_TRUE(text.GetEnvironmentVariable(L"STRING_TEST_VALUE"));
    EXPECT_EQ(text.GetLength(), 5000);
    EXPECT_FALSE(text.GetEnvironmentVariable(L"STRING_TEST_NONE"));
    EXPECT_TRUE(text.IsEmpty());
    ::SetEnvironmentVariable(L"STRING_TEST_VALUE", nullptr);

    const CString nulls(L"a\0b", 3);
    BSTR bstr = nulls.AllocSysString();
    EXPECT_EQ(SysStringLen(bstr), 3u);
    EXPECT_STREQ(CString(L"longer text").SetSysString(&bstr), L"longer text");
    SysFreeString(bstr);
}
