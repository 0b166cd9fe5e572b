#include "tests/support/census.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

struct Pen {
    const CGdiObject* object;
    int width;
    COLORREF color;
};

std::vector<Pen> Pens(const VGuiManager& manager)
{
    return {
        {&manager.Common.penFrame, 1, RGB(47, 95, 179)},
        {&manager.Common.penGray, 1, RGB(128, 128, 128)},
        {&manager.Common.penHot, 1, RGB(255, 193, 111)},
        {&manager.Dlg.penFrameOuter, 1, RGB(38, 87, 166)},
        {&manager.Dlg.penFrameFill, 1, RGB(72, 138, 214)},
        {&manager.Dlg.penCapBtnBorder, 1, RGB(156, 179, 196)},
        {&manager.Dlg.penCapBtnGlyph, 2, RGB(48, 65, 120)},
        {&manager.Dlg.penCapBtnGlyphLight, 2, RGB(136, 184, 249)},
        {&manager.Btn.penFrame, 1, RGB(47, 95, 179)},
        {&manager.Btn.penHotFrame, 1, RGB(149, 180, 232)},
        {&manager.Group.penLine, 1, RGB(208, 208, 191)},
    };
}

std::vector<HGDIOBJ> Handles(const VGuiManager& manager)
{
    std::vector<HGDIOBJ> handles{manager.Dlg.brBk.m_hObject};
    for (const Pen& pen : Pens(manager))
        handles.push_back(pen.object->m_hObject);
    return handles;
}

bool AreAlive(const std::vector<HGDIOBJ>& handles)
{
    return std::ranges::all_of(handles, [](HGDIOBJ handle) { return ::GetObjectType(handle) != 0; });
}

bool AreGone(const std::vector<HGDIOBJ>& handles)
{
    return std::ranges::all_of(handles, [](HGDIOBJ handle) { return ::GetObjectType(handle) == 0; });
}

void ExpectObjects(const VGuiManager& manager)
{
    for (const Pen& wanted : Pens(manager)) {
        LOGPEN pen = {};
        ASSERT_EQ(::GetObject(wanted.object->m_hObject, sizeof pen, &pen), int{sizeof pen});
        EXPECT_EQ(pen.lopnStyle, UINT{PS_SOLID});
        EXPECT_EQ(pen.lopnWidth.x, wanted.width);
        EXPECT_EQ(pen.lopnColor, wanted.color);
    }
    LOGBRUSH brush = {};
    ASSERT_EQ(::GetObject(manager.Dlg.brBk.m_hObject, sizeof brush, &brush), int{sizeof brush});
    EXPECT_EQ(brush.lbStyle, UINT{BS_SOLID});
    EXPECT_EQ(brush.lbColor, RGB(255, 252, 246));
}

// Sets the width of sizing frames of this session, and the old one again.
class BorderWidthScope
{
public:
    explicit BorderWidthScope(int width)
    {
        m_old.cbSize = sizeof m_old;
        m_valid = ::SystemParametersInfo(SPI_GETNONCLIENTMETRICS, sizeof m_old, &m_old, 0) != FALSE;
        NONCLIENTMETRICS changed = m_old;
        changed.iBorderWidth = width;
        m_valid = m_valid && Set(changed);
    }
    ~BorderWidthScope()
    {
        if (m_valid)
            Set(m_old);
    }

    bool IsValid() const { return m_valid; }

private:
    static bool Set(NONCLIENTMETRICS metrics)
    {
        return ::SystemParametersInfo(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) != FALSE;
    }

    NONCLIENTMETRICS m_old = {};
    bool m_valid;
};

} // namespace

TEST(GuiManagerTest, SharedMetrics)
{
    const int frame = std::min(::GetSystemMetrics(SM_CYFRAME), 5);
    const int box = ::GetSystemMetrics(SM_CYMENU) - frame;
    EXPECT_EQ(VGM.Common.nPrevFrameWidth, 0);
    EXPECT_EQ(VGM.Common.nCtrlFrameFade, 128);
    EXPECT_EQ(VGM.Dlg.nFrameWidth, frame);
    EXPECT_EQ(VGM.Dlg.nCaptionHeight, ::GetSystemMetrics(SM_CYMENU));
    EXPECT_EQ(VGM.Btn.nCornerSize, frame);
    EXPECT_EQ(VGM.Check.nBoxSize, box);
    EXPECT_EQ(VGM.Radio.nBoxSize, box);
    EXPECT_EQ(VGM.Combo.nBtnWidth, box);
    EXPECT_EQ(VGM.Progress.nStep, 12);
}

TEST(GuiManagerTest, SharedPensAndBrush)
{
    ExpectObjects(VGM);
    EXPECT_EQ(VGM.Check.penBox.m_hObject, nullptr);
    EXPECT_EQ(VGM.Check.penMark.m_hObject, nullptr);
    EXPECT_EQ(VGM.Check.penHotBox.m_hObject, nullptr);
}

TEST(GuiManagerTest, WideSystemFramesAreCutToFivePixels)
{
    const BorderWidthScope wide(9);
    if (!wide.IsValid() || ::GetSystemMetrics(SM_CYFRAME) <= 5)
        GTEST_SKIP() << "this system does not let its frames be widened";
    const VGuiManager manager;
    EXPECT_EQ(manager.Dlg.nFrameWidth, 5);
    EXPECT_EQ(manager.Check.nBoxSize, ::GetSystemMetrics(SM_CYMENU) - 5);
}

TEST(GuiManagerTest, SystemColorsAreThoseOfTheMomentOfPreparation)
{
    const INT index = COLOR_HIGHLIGHT;
    const COLORREF old = ::GetSysColor(index);
    const COLORREF changed = RGB(1, 2, 3);
    ASSERT_TRUE(::SetSysColors(1, &index, &changed));
    const VGuiManager manager;
    ::SetSysColors(1, &index, &old);
    EXPECT_EQ(manager.PropList.clrSelBk, changed);
    EXPECT_EQ(VGM.PropList.clrSelBk, old);
}

// A copy of the library under another name is a second library to the system, and one that can be unloaded.
TEST(GuiManagerTest, ObjectsAreDeletedWhenTheLibraryIsUnloaded)
{
    wchar_t original[MAX_PATH] = {};
    wchar_t folder[MAX_PATH] = {};
    ASSERT_NE(::GetModuleFileNameW(::GetModuleHandleW(L"vgui.dll"), original, MAX_PATH), 0u);
    ASSERT_NE(::GetTempPathW(MAX_PATH, folder), 0u);
    const std::wstring copy =
        std::wstring(folder) + L"vgui-copy-" + std::to_wstring(::GetCurrentProcessId()) + L".dll";
    ASSERT_TRUE(::CopyFileW(original, copy.c_str(), FALSE));

    // The first load leaves behind what the system keeps per process.
    for (int round = 0; round < 2; ++round) {
        const support::Census census;
        const HMODULE library = ::LoadLibraryW(copy.c_str());
        ASSERT_NE(library, nullptr);
        FARPROC shared = ::GetProcAddress(library, "VGM");
        if (shared == nullptr)
            shared = ::GetProcAddress(library, "?VGM@@3VVGuiManager@@A");
        ASSERT_NE(shared, nullptr);
        const auto* manager = reinterpret_cast<const VGuiManager*>(shared);
        EXPECT_NE(manager, &VGM);
        ExpectObjects(*manager);
        const std::vector<HGDIOBJ> handles = Handles(*manager);
        EXPECT_TRUE(AreAlive(handles));

        ASSERT_TRUE(::FreeLibrary(library));
        ASSERT_EQ(::GetModuleHandleW(copy.c_str()), nullptr);
        EXPECT_TRUE(AreGone(handles));
        if (round > 0)
            census.ExpectUnchanged();
    }
    EXPECT_TRUE(AreAlive(Handles(VGM)));
    EXPECT_TRUE(::DeleteFileW(copy.c_str()));
}
