// Writing surfaces as PNG files, through GDI+.
#include "tests/support/pixels.h"

#include <algorithm>

// GDI+'s headers count on the names that NOMINMAX takes away.
using std::max;
using std::min;
#include <gdiplus.h>

namespace support
{

namespace
{

// GDI+ keeps threads and objects of its own; it lives only while a picture is written.
class GdiPlus
{
public:
    GdiPlus()
    {
        const Gdiplus::GdiplusStartupInput input;
        m_started = Gdiplus::GdiplusStartup(&m_token, &input, nullptr) == Gdiplus::Ok;
    }
    ~GdiPlus()
    {
        if (m_started)
            Gdiplus::GdiplusShutdown(m_token);
    }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;
    [[nodiscard]] bool Started() const { return m_started; }

private:
    ULONG_PTR m_token = 0;
    bool m_started = false;
};

// The system's PNG encoder.
constexpr CLSID kPngEncoder = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

std::wstring ArtifactFolder()
{
    wchar_t folder[MAX_PATH] = L"";
    const DWORD length = ::GetEnvironmentVariable(L"VGUI_TEST_ARTIFACTS", folder, MAX_PATH);
    return length < MAX_PATH ? std::wstring(folder, length) : std::wstring();
}

// The running test's name as a file name: parameterised tests have slashes in theirs.
std::wstring TestFileName()
{
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    if (test == nullptr)
        return L"test";
    const std::string name = std::string(test->test_suite_name()) + "." + test->name();
    std::wstring fileName(name.begin(), name.end());
    std::replace(fileName.begin(), fileName.end(), L'/', L'_');
    return fileName;
}

} // namespace

bool SavePng(const DibSurface& surface, const std::wstring& path)
{
    const GdiPlus gdiPlus;
    if (!gdiPlus.Started())
        return false;
    ::GdiFlush();
    BITMAP bitmap{};
    ::GetObject(surface.Bitmap(), sizeof bitmap, &bitmap);
    using namespace Gdiplus::DllExports;
    Gdiplus::GpBitmap* picture = nullptr;
    if (GdipCreateBitmapFromScan0(surface.Width(), surface.Height(), bitmap.bmWidthBytes, PixelFormat32bppRGB,
                                  static_cast<BYTE*>(bitmap.bmBits), &picture) != Gdiplus::Ok)
        return false;
    const bool saved = GdipSaveImageToFile(picture, path.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
    GdipDisposeImage(picture);
    return saved;
}

std::wstring SaveArtifact(const DibSurface& surface, const std::wstring& name)
{
    const std::wstring folder = ArtifactFolder();
    if (folder.empty())
        return {};
    const std::wstring path = folder + L"\\" + TestFileName() + L"-" + name + L".png";
    return SavePng(surface, path) ? path : std::wstring();
}

} // namespace support
