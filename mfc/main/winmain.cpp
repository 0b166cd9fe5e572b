// The entry point of graphical programs. It lives in a static library, so that only programs without a main
// of their own take it.
#include <afxwin.h>

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR, int nCmdShow)
{
    // The framework's command line is what follows the program's name, in UTF-16.
    LPTSTR commandLine = ::GetCommandLine();
    const bool quoted = *commandLine == _T('"');
    if (quoted)
        ++commandLine;
    while (*commandLine != 0 && (quoted ? *commandLine != _T('"') : *commandLine > _T(' ')))
        ++commandLine;
    if (*commandLine == _T('"'))
        ++commandLine;
    while (*commandLine != 0 && *commandLine <= _T(' '))
        ++commandLine;
    return AfxWinMain(hInstance, hPrevInstance, commandLine, nCmdShow);
}
