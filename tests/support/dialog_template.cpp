#include "tests/support/dialog_template.h"

namespace support
{

namespace
{

constexpr WORD kExtendedVersion = 1;
constexpr WORD kExtendedSignature = 0xFFFF;
constexpr WORD kDefaultPoints = 9;
constexpr std::wstring_view kDefaultFace = L"MS Shell Dlg";

// Where the number of items stands in the template, in words: after version, signature, help id and the two
// styles.
constexpr size_t kItemCount = 8;

} // namespace

DialogTemplate::DialogTemplate(std::wstring_view caption, int width, int height, DWORD style, DWORD exStyle)
{
    Word(kExtendedVersion);
    Word(kExtendedSignature);
    DoubleWord(0); // help id
    DoubleWord(exStyle);
    DoubleWord(style | DS_SETFONT);
    Word(0); // number of items
    Word(0); // x
    Word(0); // y
    Word(static_cast<WORD>(width));
    Word(static_cast<WORD>(height));
    Word(0); // no menu
    Word(0); // the system's dialog class
    Text(caption);
    Word(kDefaultPoints);
    Word(FW_NORMAL);
    Word(DEFAULT_CHARSET << 8); // not italic
    Text(kDefaultFace);
}

DialogTemplate& DialogTemplate::Item(std::wstring_view windowClass, std::wstring_view text, UINT id, int x,
                                     int y, int width, int height, DWORD style, DWORD exStyle)
{
    AlignToDoubleWord();
    DoubleWord(0); // help id
    DoubleWord(exStyle);
    DoubleWord(style | WS_CHILD | WS_VISIBLE);
    Word(static_cast<WORD>(x));
    Word(static_cast<WORD>(y));
    Word(static_cast<WORD>(width));
    Word(static_cast<WORD>(height));
    DoubleWord(id);
    Text(windowClass);
    Text(text);
    Word(0); // no creation data
    ++m_words[kItemCount];
    return *this;
}

DialogTemplate& DialogTemplate::Button(UINT id, std::wstring_view text, int x, int y, int width, int height,
                                       DWORD style)
{
    return Item(L"Button", text, id, x, y, width, height, style);
}

DialogTemplate& DialogTemplate::Edit(UINT id, int x, int y, int width, int height, DWORD style)
{
    return Item(L"Edit", L"", id, x, y, width, height, style);
}

DialogTemplate& DialogTemplate::Static(UINT id, std::wstring_view text, int x, int y, int width, int height,
                                       DWORD style)
{
    return Item(L"Static", text, id, x, y, width, height, style);
}

void DialogTemplate::DoubleWord(DWORD value)
{
    Word(LOWORD(value));
    Word(HIWORD(value));
}

void DialogTemplate::Text(std::wstring_view text)
{
    for (const wchar_t unit : text)
        Word(unit);
    Word(0);
}

void DialogTemplate::AlignToDoubleWord()
{
    if (m_words.size() % 2 != 0)
        Word(0);
}

} // namespace support
