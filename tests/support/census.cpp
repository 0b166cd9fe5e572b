#include "tests/support/census.h"

#include "tests/support/modal.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <commctrl.h>
#include <optional>
#include <set>
#include <sstream>
#include <winternl.h>

namespace support
{

namespace
{

// One entry of the process's table of GDI handles, which the process environment block points to.
struct GdiTableEntry {
    ULONG64 object;
    USHORT process;
    USHORT count;
    USHORT unique;
    BYTE type;
    BYTE flags;
    ULONG64 user;
};
static_assert(sizeof(GdiTableEntry) == 24);

constexpr int kGdiTableSize = 65536;
// The table's type makes no difference between brushes and pens; the upper word of the handle does.
constexpr int kKindMask = 0x7F;
constexpr size_t kGdiTableOffset = 0xF8; // in the process environment block
// User handles are even; low words suffice to name one. More than this no test creates at a time.
constexpr ULONG_PTR kFirstUserHandle = 0x20;
constexpr ULONG_PTR kLastUserHandle = 0x4000;

// Wine has no count of its own (GetGuiResources answers 0), but leaves its tables open to look at.
bool IsWine()
{
    return ::GetProcAddress(::GetModuleHandle(L"ntdll.dll"), "wine_get_version") != nullptr;
}

constexpr const char* kSystemColorPen = "pen of a system colour";

// What the upper word of a handle of this kind says.
const char* GdiKind(int kind)
{
    switch (kind) {
    case 0x01:
    case 0x41: // in memory
        return "DC";
    case 0x04:
        return "region";
    case 0x09:
        return "bitmap";
    case 0x08:
        return "palette";
    case 0x0A:
        return "font";
    case 0x10:
        return "brush";
    case 0x30:
        return "pen";
    case 0x50:
        return "extended pen";
    default:
        return "other GDI object";
    }
}

#ifdef _WIN64
const BYTE* ProcessEnvironment()
{
    using Query = NTSTATUS(NTAPI*)(HANDLE, PROCESSINFOCLASS, PVOID, ULONG, PULONG);
    const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandle(L"ntdll.dll"), "NtQueryInformationProcess")));
    PROCESS_BASIC_INFORMATION information{};
    query(::GetCurrentProcess(), ProcessBasicInformation, &information, sizeof information, nullptr);
    return reinterpret_cast<const BYTE*>(information.PebBaseAddress);
}

// Wine makes a pen of a system colour at its first use and keeps it; which part of it uses which is its own
// affair.
bool IsSystemColorPen(HGDIOBJ object)
{
    LOGPEN pen{};
    if (::GetObject(object, sizeof pen, &pen) != sizeof pen || pen.lopnStyle != PS_SOLID ||
        pen.lopnWidth.x > 1)
        return false;
    for (int color = 0; color <= COLOR_MENUBAR; ++color) {
        if (::GetSysColor(color) == pen.lopnColor)
            return true;
    }
    return false;
}

// Calls visit(kind, handle) for every GDI object.
template <class Visit>
void ForEachGdiObject(Visit visit)
{
    const GdiTableEntry* table;
    memcpy(&table, ProcessEnvironment() + kGdiTableOffset, sizeof table);
    for (int i = 0; table != nullptr && i < kGdiTableSize; ++i) {
        if (table[i].type == 0)
            continue;
        const DWORD unique = table[i].unique;
        const auto object = reinterpret_cast<HGDIOBJ>(ULONG_PTR{unique << 16 | i});
        const char* const kind = GdiKind(unique & kKindMask);
        visit(strcmp(kind, "pen") == 0 && IsSystemColorPen(object) ? kSystemColorPen : kind, object);
    }
}
#else
template <class Visit>
void ForEachGdiObject(Visit)
{
}
#endif

// What helps to find out who made it.
std::string Describe(HGDIOBJ object)
{
    std::ostringstream text;
    LOGPEN pen{};
    LOGBRUSH brush{};
    LOGFONT font{};
    BITMAP bitmap{};
    switch (::GetObjectType(object)) {
    case OBJ_PEN:
        ::GetObject(object, sizeof pen, &pen);
        text << " of style " << pen.lopnStyle << ", " << pen.lopnWidth.x << " wide, coloured " << std::hex
             << pen.lopnColor;
        break;
    case OBJ_BRUSH:
        ::GetObject(object, sizeof brush, &brush);
        text << " of style " << brush.lbStyle << ", coloured " << std::hex << brush.lbColor;
        break;
    case OBJ_FONT:
        ::GetObject(object, sizeof font, &font);
        text << ' ' << font.lfHeight << " high, " << testing::PrintToString(std::wstring(font.lfFaceName));
        break;
    case OBJ_BITMAP:
        ::GetObject(object, sizeof bitmap, &bitmap);
        text << " of " << bitmap.bmWidth << " x " << bitmap.bmHeight << " x " << bitmap.bmBitsPixel;
        break;
    default:
        break;
    }
    return text.str();
}

bool IsOwnWindow(HWND window)
{
    DWORD process = 0;
    return ::IsWindow(window) && ::GetWindowThreadProcessId(window, &process) != 0 &&
           process == ::GetCurrentProcessId();
}

bool IsIcon(HICON handle)
{
    ICONINFO info{};
    if (!::GetIconInfo(handle, &info))
        return false;
    ::DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr)
        ::DeleteObject(info.hbmColor);
    return true;
}

void CountUserHandles(ObjectCounts& counts)
{
    for (ULONG_PTR value = kFirstUserHandle; value < kLastUserHandle; value += 2) {
        if (IsOwnWindow(reinterpret_cast<HWND>(value)))
            ++counts["window"];
        else if (::IsMenu(reinterpret_cast<HMENU>(value)))
            ++counts["menu"];
        else if (::CopyAcceleratorTable(reinterpret_cast<HACCEL>(value), nullptr, 0) > 0)
            ++counts["accelerator table"];
        else if (IsIcon(reinterpret_cast<HICON>(value)))
            ++counts["icon or cursor"];
    }
}

std::string Describe(HWND window)
{
    wchar_t windowClass[64] = L"";
    ::GetClassName(window, windowClass, static_cast<int>(std::size(windowClass)));
    return testing::PrintToString(std::wstring(windowClass)) + " " +
           testing::PrintToString(WindowText(window));
}

// How many there are of each kind of thing that can be told apart.
ObjectCounts ListObjects()
{
    ObjectCounts objects;
    if (!IsWine())
        return objects;
    for (ULONG_PTR value = kFirstUserHandle; value < kLastUserHandle; value += 2) {
        const auto window = reinterpret_cast<HWND>(value);
        if (IsOwnWindow(window))
            ++objects["window " + Describe(window)];
    }
    ForEachGdiObject([&](const char* kind, HGDIOBJ object) { ++objects[kind + Describe(object)]; });
    return objects;
}

std::optional<Census> g_suiteCensus;

void ShowOneOfEach(HostWnd& host)
{
    const wchar_t* const classes[] = {
        L"Button",      L"Edit",        L"ListBox",   L"ComboBox",    L"ScrollBar",    L"Static",
        WC_TREEVIEW,    WC_LISTVIEW,    WC_HEADER,    WC_TABCONTROL,  WC_COMBOBOXEX,   TOOLBARCLASSNAME,
        TOOLTIPS_CLASS, PROGRESS_CLASS, UPDOWN_CLASS, TRACKBAR_CLASS, STATUSCLASSNAME, DATETIMEPICK_CLASS,
        MONTHCAL_CLASS, REBARCLASSNAME, HOTKEY_CLASS,
    };
    for (const wchar_t* windowClass : classes) {
        const DWORD kind = wcscmp(windowClass, TOOLTIPS_CLASS) == 0 ? WS_POPUP : WS_CHILD | WS_VISIBLE;
        const HWND control = ::CreateWindow(windowClass, L"text", kind, 10, 10, 100, 60, host.m_hWnd, nullptr,
                                            ::GetModuleHandle(nullptr), nullptr);
        if (kind & WS_CHILD)
            ::SetFocus(control);
        PumpMessages();
        ::DestroyWindow(control);
    }
}

void ShowMenu(HWND owner)
{
    const HMENU menu = ::CreatePopupMenu();
    ::AppendMenu(menu, MF_STRING | MF_CHECKED, 1, L"text");
    {
        const MenuAnswer answer = CancelMenu();
        ::TrackPopupMenu(menu, 0, 60, 60, 0, owner, nullptr);
    }
    ::DestroyMenu(menu);
}

// The pens of the system's colours come with the edges that are drawn with them.
void DrawEdges()
{
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    for (UINT edge = 0; edge <= (EDGE_RAISED | EDGE_SUNKEN); ++edge) {
        for (const UINT look : {0, BF_SOFT, BF_FLAT, BF_MONO}) {
            CRect rect(0, 0, 20, 20);
            dc.DrawEdge(rect, edge, BF_RECT | look);
            dc.DrawEdge(rect, edge, BF_DIAGONAL_ENDTOPRIGHT | look);
        }
    }
}

// What the system shares among all, and makes when it is first asked for.
void LoadSharedObjects()
{
    DrawEdges();
    for (int color = 0; color <= COLOR_MENUBAR; ++color)
        ::GetSysColorBrush(color);
    for (const LPCWSTR cursor :
         {IDC_ARROW, IDC_IBEAM, IDC_WAIT, IDC_CROSS, IDC_UPARROW, IDC_SIZENWSE, IDC_SIZENESW, IDC_SIZEWE,
          IDC_SIZENS, IDC_SIZEALL, IDC_NO, IDC_HAND, IDC_APPSTARTING, IDC_HELP})
        ::LoadCursor(nullptr, cursor);
    for (const LPCWSTR icon :
         {IDI_APPLICATION, IDI_HAND, IDI_QUESTION, IDI_EXCLAMATION, IDI_ASTERISK, IDI_WINLOGO})
        ::LoadIcon(nullptr, icon);
}

} // namespace

ObjectCounts CountObjects()
{
    RunIdle();
    ObjectCounts counts;
    if (!IsWine()) {
        counts["GDI object"] = static_cast<int>(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS));
        counts["user object"] = static_cast<int>(::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS));
        return counts;
    }
    ForEachGdiObject([&](const char* kind, HGDIOBJ) { ++counts[kind]; });
    CountUserHandles(counts);
    return counts;
}

Census::Census(std::set<std::string> leftOut)
    : m_leftOut(std::move(leftOut)), m_counts(CountObjects()), m_objects(ListObjects())
{
}

testing::AssertionResult Census::Unchanged() const
{
    ObjectCounts now = CountObjects();
    ObjectCounts before = m_counts;
    std::ostringstream differences;
    for (const auto& [kind, count] : m_counts)
        now.try_emplace(kind, 0);
    for (const auto& [kind, count] : now) {
        if (count != before[kind] && !m_leftOut.contains(kind))
            differences << "\n  " << kind << ": " << before[kind] << " before, " << count << " now";
    }
    if (differences.str().empty())
        return testing::AssertionSuccess();
    ObjectCounts objects = m_objects;
    for (const auto& [description, count] : ListObjects()) {
        if (count > objects[description])
            differences << "\n  new " << description;
    }
    return testing::AssertionFailure() << "objects left behind" << differences.str();
}

void Census::ExpectUnchanged() const
{
    PumpMessages();
    EXPECT_TRUE(Unchanged());
}

void WarmUpSystem()
{
    static bool done = false;
    if (done)
        return;
    done = true;
    INITCOMMONCONTROLSEX all{sizeof all, 0xFFFF};
    ::InitCommonControlsEx(&all);
    LoadSharedObjects();
    HostWnd host;
    if (!host.Open({300, 200}, WS_OVERLAPPEDWINDOW))
        return;
    ShowOneOfEach(host);
    ShowMenu(host.m_hWnd);
    const ModalAnswer answer = AnswerMessageBox(IDOK);
    ::MessageBox(host.m_hWnd, L"text", L"caption", MB_OK | MB_ICONINFORMATION);
}

void CensusTest::SetUpTestSuite()
{
    WarmUpSystem();
    PumpMessages();
    g_suiteCensus.emplace();
}

void CensusTest::TearDownTestSuite()
{
    // What the system makes at the first use of something and keeps for good depends on what the suite uses,
    // so the first of the two rounds that the test main runs is its warm-up.
    static std::set<std::string> warmedUp;
    if (!warmedUp.insert(testing::UnitTest::GetInstance()->current_test_suite()->name()).second)
        g_suiteCensus->ExpectUnchanged();
    g_suiteCensus.reset();
}

} // namespace support
