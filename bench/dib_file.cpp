// BMP files and changes of depth, against the same bytes moved by the file system and by GDI.
#include "bench/bench.h"
#include "bench/picture.h"

#include <string>

namespace
{

class TempFile
{
public:
    TempFile()
    {
        wchar_t folder[MAX_PATH];
        bench::Require(::GetTempPathW(MAX_PATH, folder) != 0 &&
                           ::GetTempFileNameW(folder, L"vgb", 0, m_name) != 0,
                       "naming a temporary file");
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() { ::DeleteFileW(m_name); }

    LPCWSTR Name() const { return m_name; }

private:
    wchar_t m_name[MAX_PATH];
};

void MeasureFiles(int pixels)
{
    CDib dib;
    bench::MakePicture(dib, bench::PictureWidth(pixels), bench::PictureHeight(pixels), 24);
    const bench::PackedCopy packed(dib);
    const std::vector<BYTE>& bytes = packed.Bytes();
    const TempFile ours;
    const TempFile plain;
    const auto length = static_cast<UINT>(bytes.size());
    const auto write = [&] {
        CFile(plain.Name(), CFile::modeCreate | CFile::modeWrite).Write(bytes.data(), length);
    };
    const auto read = [&] {
        const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, length);
        CFile(plain.Name(), CFile::modeRead).Read(::GlobalLock(block), length);
        ::GlobalUnlock(block);
        ::GlobalFree(block);
    };
    CDib loaded;
    bench::Require(dib.Save(ours.Name()) && loaded.Load(ours.Name()) && loaded.GetWidth() == dib.GetWidth(),
                   "saving and loading a picture");
    write();
    bench::Compare("Save", pixels, "pixels", {[&] { dib.Save(ours.Name()); }},
                   {"as many bytes written to a file", {write}});
    bench::Compare("Load", pixels, "pixels", {[&] { loaded.Load(ours.Name()); }},
                   {"as many bytes read into a new block", {read}});
}

// A DIB section of a depth to draw on, with the colours that a conversion gives.
class Target
{
public:
    Target(const CDib& source, WORD bitCount)
    {
        bench::PackedCopy memory(source);
        CDib converted;
        converted.Create(memory.Data());
        bench::Require(converted.ConvertFormat(bitCount), "converting a picture");
        bench::PackedCopy form(converted);
        void* bits = nullptr;
        m_bitmap.Attach(::CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(form.Data()),
                                           DIB_RGB_COLORS, &bits, nullptr, 0));
        m_dc.CreateCompatibleDC(nullptr);
        m_from.CreateCompatibleDC(nullptr);
        m_old = ::SelectObject(m_dc.m_hDC, m_bitmap.m_hObject);
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;
    ~Target() { ::SelectObject(m_dc.m_hDC, m_old); }

    bench::Work Blitting(const CDib& source)
    {
        return {[this, &source] {
            const HGDIOBJ old = ::SelectObject(m_from.m_hDC, source.GetBitmap()->m_hObject);
            m_dc.BitBlt(0, 0, source.GetWidth(), source.GetHeight(), &m_from, 0, 0, SRCCOPY);
            ::SelectObject(m_from.m_hDC, old);
        }};
    }

private:
    CDC m_dc;
    CDC m_from;
    CBitmap m_bitmap;
    HGDIOBJ m_old = nullptr;
};

void MeasureConversion(int pixels, WORD from, WORD to)
{
    CDib picture;
    bench::MakePicture(picture, bench::PictureWidth(pixels), bench::PictureHeight(pixels), from);
    bench::PackedCopy source(picture);
    Target target(picture, to);
    CDib dib;
    bench::Compare("ConvertFormat, " + std::to_string(from) + " to " + std::to_string(to) + " bits", pixels,
                   "pixels", {[&] { dib.ConvertFormat(to); }, [&] { dib.Create(source.Data()); }},
                   {"BitBlt between DIB sections of these depths", target.Blitting(picture)});
}

void Run()
{
    for (const int pixels : bench::Sizes({10000, 100000, 1000000}))
        MeasureFiles(pixels);
    for (const int pixels : bench::Sizes({10000, 100000, 1000000}))
        MeasureConversion(pixels, 24, 8);
    const int pixels = bench::Sizes({10000, 100000}).back();
    constexpr std::pair<WORD, WORD> kOthers[] = {{24, 32}, {24, 16}, {24, 4}, {24, 1}, {8, 24}, {1, 24}};
    for (const auto& [from, to] : kOthers)
        MeasureConversion(pixels, from, to);
}

const bench::Subject g_subject("dib_file", &Run);

} // namespace
