#include "vgui/assist/companion_history.h"

#include "vgui/assist/companion_fields.h"
#include "vgui/assist/host_paths.h"
#include "vgui/foundation/gdi_scope.h"

namespace
{

constexpr size_t kLines = 4;
constexpr DWORD kMaxFile = 256; // bytes that are looked at

CString HistoryFolder()
{
    return VGHostRoot() + L"\\cfg";
}

CString HistoryFile()
{
    return HistoryFolder() + L"\\CompanionInfomation.his";
}

VOwnedKernelHandle OpenFile(const CString& path, DWORD access, DWORD disposition)
{
    const HANDLE file = ::CreateFileW(path, access, FILE_SHARE_READ, nullptr, disposition, 0, nullptr);
    return VOwnedKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// One number a line; VWndPos::Unknown for what is missing or no number.
std::array<int, kLines> ReadNumbers()
{
    char text[kMaxFile];
    DWORD size = 0;
    const VOwnedKernelHandle file = OpenFile(HistoryFile(), GENERIC_READ, OPEN_EXISTING);
    if (!file || !::ReadFile(file.Get(), text, kMaxFile, &size, nullptr))
        size = 0;
    return companion::LineNumbers<kLines>({text, size}, VWndPos::Unknown);
}

} // namespace

void RestoreCompanionPlace(CWnd& window)
{
    const auto [x, y, width, height] = ReadNumbers();
    CRect present;
    window.GetWindowRect(present);
    if (x == VWndPos::Unknown || y == VWndPos::Unknown)
        return;
    VWndPos place(&window);
    place.SetPos(x, y);
    place.SetSize(std::max<int>(width, present.Width()), std::max<int>(height, present.Height()));
    place.Restore();
}

void SaveCompanionPlace(CWnd& window)
{
    VWndPos place(&window);
    if (window.IsIconic() || !place.Save())
        return;
    ::CreateDirectoryW(HistoryFolder(), nullptr);
    const VOwnedKernelHandle file = OpenFile(HistoryFile(), GENERIC_WRITE, CREATE_ALWAYS);
    if (!file)
        return;
    CStringA text;
    text.Format("%d\r\n%d\r\n%d\r\n%d\r\n", place.GetXPos(), place.GetYPos(), place.GetXSize(),
                place.GetYSize());
    DWORD written = 0;
    ::WriteFile(file.Get(), text.GetString(), text.GetLength(), &written, nullptr);
}
