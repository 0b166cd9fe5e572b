#include "gallery/shot_writer.h"

#include <objidl.h>

#include <algorithm>
#include <gdiplus.h>
#include <memory>
#include <shlobj.h>
#include <vector>

namespace
{

// How often a window is given the chance to bring forth new messages: enough for activation, painting and
// idle processing to follow each other, and still an end for windows that never come to rest.
constexpr int kMessageRounds = 50;
constexpr DWORD kActivationPause = 20; // milliseconds
constexpr ULONGLONG kActivationDeadline = 3000;

bool FindPngEncoder(CLSID& encoder)
{
    UINT count = 0;
    UINT bytes = 0;
    if (Gdiplus::GetImageEncodersSize(&count, &bytes) != Gdiplus::Ok || bytes == 0)
        return false;
    std::vector<Gdiplus::ImageCodecInfo> memory(bytes / sizeof(Gdiplus::ImageCodecInfo) + 1);
    auto* const list = memory.data();
    if (Gdiplus::GetImageEncoders(count, bytes, list) != Gdiplus::Ok)
        return false;
    const auto* const found = std::find_if(list, list + count, [](const Gdiplus::ImageCodecInfo& codec) {
        return ::lstrcmpW(codec.MimeType, L"image/png") == 0;
    });
    if (found == list + count)
        return false;
    encoder = found->Clsid;
    return true;
}

void MoveOntoScreen(CWnd& window)
{
    CRect rect;
    window.GetWindowRect(rect);
    const int x = std::max(0, std::min<int>(rect.left, ::GetSystemMetrics(SM_CXSCREEN) - rect.Width()));
    const int y = std::max(0, std::min<int>(rect.top, ::GetSystemMetrics(SM_CYSCREEN) - rect.Height()));
    if (!window.IsZoomed())
        window.SetWindowPos(nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// A process that has not been in front before is not always put there by the first request: waits for it,
// asking again, up to a deadline.
bool Activate(CWnd& window)
{
    const ULONGLONG start = ::GetTickCount64();
    do {
        // A window that counts as active already is not told again that it becomes so.
        ::SetActiveWindow(nullptr);
        window.SetForegroundWindow();
        HandlePendingMessages();
        if (::GetForegroundWindow() == window.m_hWnd && ::GetActiveWindow() == window.m_hWnd)
            return true;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, kActivationPause, QS_ALLINPUT);
    } while (::GetTickCount64() - start < kActivationDeadline);
    return false;
}

// Copies the window, frame included, into a bitmap.
bool CopyWindow(CWnd& window, CBitmap& picture)
{
    CRect rect;
    window.GetWindowRect(rect);
    CWindowDC source(&window);
    CDC memory;
    if (rect.IsRectEmpty() || !memory.CreateCompatibleDC(&source) ||
        !picture.CreateCompatibleBitmap(&source, rect.Width(), rect.Height()))
        return false;
    CBitmap* const old = memory.SelectObject(&picture);
    const BOOL copied = memory.BitBlt(0, 0, rect.Width(), rect.Height(), &source, 0, 0, SRCCOPY);
    memory.SelectObject(old);
    return copied != FALSE;
}

CString FullPath(const CString& path)
{
    const DWORD length = ::GetFullPathNameW(path, 0, nullptr, nullptr);
    std::vector<wchar_t> buffer(length + 1);
    if (length == 0 || ::GetFullPathNameW(path, length, buffer.data(), nullptr) == 0)
        return path;
    CString full(buffer.data());
    full.TrimRight(L'\\');
    return full;
}

} // namespace

void PrintLine(const CString& line)
{
    const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
    if (output == nullptr || output == INVALID_HANDLE_VALUE)
        return;
    const CString text = line + L"\r\n";
    const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, text, text.GetLength(), nullptr, 0, nullptr, nullptr);
    std::vector<char> buffer(bytes);
    ::WideCharToMultiByte(CP_UTF8, 0, text, text.GetLength(), buffer.data(), bytes, nullptr, nullptr);
    DWORD written = 0;
    ::WriteFile(output, buffer.data(), bytes, &written, nullptr);
}

void HandlePendingMessages()
{
    for (int round = 0; round < kMessageRounds; ++round) {
        MSG message{};
        if (!::PeekMessage(&message, nullptr, 0, 0, PM_NOREMOVE))
            break;
        AfxPumpMessage();
    }
}

ShotWriter::ShotWriter(const CString& folder) : m_folder(FullPath(folder))
{
    ::SHCreateDirectoryExW(nullptr, m_folder, nullptr);
}

bool ShotWriter::Take(CWnd& window, const CString& name)
{
    if (!::IsWindow(window.m_hWnd)) {
        Fail(name);
        return false;
    }
    MoveOntoScreen(window);
    window.ShowWindow(window.IsZoomed() ? SW_SHOWMAXIMIZED : SW_SHOW);
    window.BringWindowToTop();
    if (!Activate(window)) {
        Fail(name);
        return false;
    }
    return TakeAsItIs(window, name);
}

bool ShotWriter::TakeAsItIs(CWnd& window, const CString& name)
{
    HandlePendingMessages();
    window.RedrawWindow(nullptr, nullptr,
                        RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    HandlePendingMessages();
    CBitmap picture;
    if (!CopyWindow(window, picture) || !Write(static_cast<HBITMAP>(picture.GetSafeHandle()), name)) {
        Fail(name);
        return false;
    }
    ++m_written;
    PrintLine(name + L".png");
    return true;
}

void ShotWriter::Fail(const CString& name)
{
    ++m_failed;
    PrintLine(L"FAILED " + name);
}

bool ShotWriter::Write(HBITMAP picture, const CString& name) const
{
    CLSID encoder{};
    if (!FindPngEncoder(encoder))
        return false;
    const std::unique_ptr<Gdiplus::Bitmap> image(Gdiplus::Bitmap::FromHBITMAP(picture, nullptr));
    const CString path = m_folder + L"\\" + name + L".png";
    return image != nullptr && image->Save(path, &encoder, nullptr) == Gdiplus::Ok;
}

bool ShotWriter::PrintSummary() const
{
    CString line;
    line.Format(L"%d pictures, %d failed", m_written, m_failed);
    PrintLine(line);
    return m_written > 0 && m_failed == 0;
}
