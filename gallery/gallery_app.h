// The gallery's application object.
#pragma once

#include <afxwin.h>

// Shows the main dialog, or with the arguments "--shots DIR" writes pictures of all pages and ends. The page
// of the companion starts it with "--companion-server PIPE".
class GalleryApp : public CWinApp
{
public:
    BOOL InitInstance() override;
    // The exit code: 0 when all pictures were written, or when there were none to write; 1 otherwise; 2 for
    // arguments that make no sense.
    int ExitInstance() override;

private:
    void ShowGallery();
    void TakeShots(const CString& folder);

    ULONG_PTR m_gdiPlus = 0;
    int m_exitCode = 0;
};
