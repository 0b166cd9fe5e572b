#include "tests/gallery/monkey_windows.h"

#include "tests/support/environment.h"

#include <algorithm>

namespace monkey
{

namespace
{

std::wstring ClassOf(HWND window)
{
    wchar_t name[64] = L"";
    ::GetClassName(window, name, static_cast<int>(std::size(name)));
    return name;
}

std::wstring CaptionOf(HWND window)
{
    wchar_t text[512] = L"";
    ::InternalGetWindowText(window, text, static_cast<int>(std::size(text)));
    return text;
}

std::string Utf8(const std::wstring& text)
{
    std::string bytes(text.size() * 3 + 1, '\0');
    bytes.resize(::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                       static_cast<int>(bytes.size()), nullptr, nullptr));
    std::ranges::replace(bytes, '\n', ' ');
    return bytes;
}

// The system's windows have the system's modules.
bool IsFromOwnModule(HWND window)
{
    const auto module = reinterpret_cast<HMODULE>(::GetWindowLongPtr(window, GWLP_HINSTANCE));
    return module == ::GetModuleHandle(nullptr) || module == ::GetModuleHandle(L"vgui.dll") ||
           module == ::GetModuleHandle(L"mfcsubset.dll");
}

bool IsPopupOfControl(HWND window)
{
    constexpr const wchar_t* kClasses[] = {L"#32768", L"ComboLBox", L"tooltips_class32", L"SysMonthCal32"};
    const std::wstring name = ClassOf(window);
    return std::ranges::any_of(kClasses, [&](const wchar_t* popup) { return name == popup; });
}

} // namespace

WindowKind KindOf(HWND topLevel)
{
    DWORD process = 0;
    ::GetWindowThreadProcessId(topLevel, &process);
    if (process != ::GetCurrentProcessId() || topLevel == support::AnchorWindow())
        return WindowKind::Foreign;
    if (IsPopupOfControl(topLevel))
        return WindowKind::Menu;
    return IsFromOwnModule(topLevel) ? WindowKind::Own : WindowKind::System;
}

std::vector<HWND> VisibleWindows(WindowKind kind)
{
    std::vector<HWND> windows;
    ::EnumWindows(
        [](HWND window, LPARAM list) -> BOOL {
            if (::IsWindowVisible(window))
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [=](HWND window) { return KindOf(window) != kind; });
    return windows;
}

std::vector<HWND> VisibleTree(HWND window)
{
    std::vector<HWND> windows{window};
    ::EnumChildWindows(
        window,
        [](HWND child, LPARAM list) -> BOOL {
            if (::IsWindowVisible(child))
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

bool IsModal(HWND topLevel)
{
    const HWND owner = ::GetWindow(topLevel, GW_OWNER);
    return owner != nullptr && !::IsWindowEnabled(owner);
}

bool IsMessageBox(HWND topLevel)
{
    return ClassOf(topLevel) == L"#32770" && std::ranges::all_of(VisibleTree(topLevel), [=](HWND window) {
               const std::wstring name = ClassOf(window);
               return window == topLevel || name == L"Static" || name == L"Button";
           });
}

bool MayClick(CPoint screen)
{
    const WindowKind kind = KindOf(::GetAncestor(::WindowFromPoint(screen), GA_ROOT));
    return kind == WindowKind::Own || kind == WindowKind::Menu;
}

bool MayType()
{
    return KindOf(::GetAncestor(::GetForegroundWindow(), GA_ROOT)) == WindowKind::Own;
}

std::string Describe(HWND window)
{
    const HWND root = ::GetAncestor(window, GA_ROOT);
    std::wstring text = ClassOf(window);
    if (root != window)
        text += L" " + std::to_wstring(::GetDlgCtrlID(window));
    return Utf8(text + L" of \"" + CaptionOf(root) + L"\"");
}

std::string TextsOf(HWND dialog)
{
    std::wstring text = CaptionOf(dialog);
    for (const HWND child : VisibleTree(dialog)) {
        if (child != dialog && ClassOf(child) == L"Static")
            text += L" | " + CaptionOf(child);
    }
    return Utf8(text);
}

} // namespace monkey
