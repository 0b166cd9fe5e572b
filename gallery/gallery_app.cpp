#include "gallery/gallery_app.h"

#include "gallery/companion_demo.h"
#include "gallery/help_sample.h"
#include "gallery/main_dlg.h"
#include "gallery/shot_writer.h"

#include <objidl.h>

#include <gdiplus.h>
#include <memory>
#include <shellapi.h>
#include <vector>

namespace
{

GalleryApp s_app;

constexpr int kShotsFailed = 1;
constexpr int kUsageError = 2;

std::vector<CString> Arguments()
{
    struct LocalCloser {
        void operator()(LPWSTR* memory) const { ::LocalFree(memory); }
    };
    int count = 0;
    const std::unique_ptr<LPWSTR, LocalCloser> list(::CommandLineToArgvW(::GetCommandLineW(), &count));
    std::vector<CString> arguments;
    for (int i = 1; list != nullptr && i < count; ++i)
        arguments.emplace_back(list.get()[i]);
    return arguments;
}

} // namespace

BOOL GalleryApp::InitInstance()
{
    CWinApp::InitInstance();
    // The library decodes pictures with GDI+, which it leaves to its host to start.
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&m_gdiPlus, &input, nullptr) != Gdiplus::Ok)
        m_gdiPlus = 0;

    const std::vector<CString> arguments = Arguments();
    if (arguments.empty()) {
        ShowGallery();
    } else if (arguments.size() == 2 && arguments[0] == L"--shots" && !arguments[1].IsEmpty()) {
        TakeShots(arguments[1]);
    } else if (arguments.size() == 2 && arguments[0] == L"--companion-server") {
        ServeCompanionDemo(arguments[1]);
    } else {
        PrintLine(L"usage: gallery [--shots DIR]");
        m_exitCode = kUsageError;
    }
    // Everything has been shown: there is no loop to run.
    return FALSE;
}

int GalleryApp::ExitInstance()
{
    if (m_gdiPlus != 0)
        Gdiplus::GdiplusShutdown(m_gdiPlus);
    m_gdiPlus = 0;
    CWinApp::ExitInstance();
    return m_exitCode;
}

void GalleryApp::ShowGallery()
{
    PrepareHelpSample();
    MainDlg dialog;
    m_pMainWnd = &dialog;
    if (dialog.DoModal() == -1)
        AfxMessageBox(L"无法打开主窗口。 The main window cannot be opened.", MB_ICONSTOP);
    m_pMainWnd = nullptr;
}

void GalleryApp::TakeShots(const CString& folder)
{
    PrepareHelpSample();
    ShotWriter shots(folder);
    MainDlg dialog;
    m_pMainWnd = &dialog;
    const bool shown = dialog.Create(IDD_MAIN) != FALSE;
    if (shown) {
        dialog.TakeShots(shots);
        dialog.DestroyWindow();
    }
    m_pMainWnd = nullptr;
    if (!shown || !shots.PrintSummary())
        m_exitCode = kShotsFailed;
}
