// Dialog templates built in memory.
#pragma once

#include "tests/support/wait.h"

#include <string_view>
#include <vector>

namespace support
{

// An extended dialog template (DLGTEMPLATEEX) for CDialog::InitModalIndirect, CDialog::CreateIndirect and
// the Win32 functions. Positions and sizes are dialog units. Items are added in tab order.
//
//     DialogTemplate t(L"caption", 200, 100);
//     t.Button(IDOK, L"OK", 10, 10, 50, 14, BS_DEFPUSHBUTTON).Item(L"EDIT", L"", 100, 10, 30, 80, 14, 0);
class DialogTemplate
{
public:
    static constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT;

    DialogTemplate(std::wstring_view caption, int width, int height, DWORD style = kStyle, DWORD exStyle = 0);

    // A control of any window class. WS_CHILD and WS_VISIBLE are added.
    DialogTemplate& Item(std::wstring_view windowClass, std::wstring_view text, UINT id, int x, int y,
                         int width, int height, DWORD style, DWORD exStyle = 0);
    DialogTemplate& Button(UINT id, std::wstring_view text, int x, int y, int width, int height,
                           DWORD style = BS_PUSHBUTTON | WS_TABSTOP);
    DialogTemplate& Edit(UINT id, int x, int y, int width, int height,
                         DWORD style = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP);
    DialogTemplate& Static(UINT id, std::wstring_view text, int x, int y, int width, int height,
                           DWORD style = SS_LEFT);

    // The template. Valid until the object is changed or destroyed.
    [[nodiscard]] LPCDLGTEMPLATE Get() const { return reinterpret_cast<LPCDLGTEMPLATE>(m_words.data()); }
    operator LPCDLGTEMPLATE() const { return Get(); }

private:
    void Word(WORD value) { m_words.push_back(value); }
    void DoubleWord(DWORD value);
    void Text(std::wstring_view text);
    void AlignToDoubleWord();

    std::vector<WORD> m_words;
};

} // namespace support
