#include "vgui/assist/companion_history.h"

#include "vgui/assist/host_paths.h"
#include "vgui/foundation/gdi_scope.h"

#include <array>
#include <cstdlib>

namespace
{

constexpr int kLines = 4;
constexpr int kMaxFile = 256; // bytes that are looked at

using Numbers = std::array<int, kLines>;

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

int NumberOf(const char* line)
{
    char* end = nullptr;
    const long number = std::strtol(line, &end, 10);
    return end == line ? VWndPos::Unknown : static_cast<int>(number);
}

// One number a line; VWndPos::Unknown for what is missing or no number.
Numbers ReadNumbers()
{
    Numbers numbers;
    numbers.fill(VWndPos::Unknown);
    const VOwnedKernelHandle file = OpenFile(HistoryFile(), GENERIC_READ, OPEN_EXISTING);
    char text[kMaxFile + 1];
    DWORD size = 0;
    if (!file || !::ReadFile(file.Get(), text, kMaxFile, &size, nullptr))
        return numbers;
    text[size] = '\0';
    const char* line = text;
    for (int& number : numbers) {
        // Up to the line's end, for a number is looked for beyond it otherwise.
        const CStringA one(line, static_cast<int>(strcspn(line, "\r\n")));
        number = NumberOf(one);
        line += one.GetLength();
        line += strspn(line, "\r");
        line += *line == '\n';
    }
    return numbers;
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
