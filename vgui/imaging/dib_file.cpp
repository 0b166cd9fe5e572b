// The DIB object and BMP files: reading, writing, resources and archives.
#include "vgui/imaging/dib.h"

#include "vgui/imaging/dib_block.h"

#include <afxext.h>
#include <algorithm>
#include <climits>
#include <cstring>

namespace
{

constexpr WORD kBmpSignature = 0x4D42; // "BM"
constexpr size_t kFileHeaderBytes = sizeof(BITMAPFILEHEADER);
constexpr size_t kInfoHeaderBytes = sizeof(BITMAPINFOHEADER);
static_assert(kFileHeaderBytes == 14);
constexpr ULONGLONG kFileEnd = ULLONG_MAX;

// The colour-table entries of a file that does not state their number. Hosts rely on the shift by the bit
// count modulo 32, which gives one entry at 32 bits.
DWORD ImpliedColors(WORD bitCount)
{
    return bitCount == 24 ? 0 : 1U << bitCount % 32;
}

// What follows the file header of a BMP file.
struct FileDib {
    VOwnedGlobal block;
    size_t length = 0;
};

// Reads so many bytes. The block is empty when the file is short or has another header than the usual one.
FileDib ReadFileDib(CFile& file, ULONGLONG fileBytes)
{
    if (fileBytes < kInfoHeaderBytes || fileBytes > kMaxDibImageBytes)
        return {};
    BITMAPINFOHEADER header;
    if (file.Read(&header, sizeof header) != sizeof header || header.biSize != kInfoHeaderBytes)
        return {};
    auto length = static_cast<size_t>(fileBytes);
    const auto rest = static_cast<UINT>(length - kInfoHeaderBytes);
    if (header.biClrUsed == 0) {
        header.biClrUsed = ImpliedColors(header.biBitCount);
        // A 32-bit file that states no colours lacks the entry that it is taken to have. Its pixels begin in
        // the entry's place, and zeroes make up for what is then missing at the end.
        if (header.biBitCount == 32)
            length += sizeof(RGBQUAD);
    }
    FileDib dib = {NewGlobalBlock(length), length};
    BYTE* const memory = dib.block ? static_cast<BYTE*>(::GlobalLock(dib.block.Get())) : nullptr;
    if (memory == nullptr)
        return {};
    std::memcpy(memory, &header, sizeof header);
    const bool isRead = file.Read(memory + sizeof header, rest) == rest;
    ::GlobalUnlock(dib.block.Get());
    return isRead ? std::move(dib) : FileDib();
}

// Reads from the file's position to a place in it, or to its end if that comes first.
FileDib ReadBmp(CFile& file, ULONGLONG end)
{
    BITMAPFILEHEADER header;
    if (file.Read(&header, sizeof header) != sizeof header || header.bfType != kBmpSignature)
        return {};
    const ULONGLONG position = file.GetPosition();
    end = std::min(end, file.GetLength());
    return position < end ? ReadFileDib(file, end - position) : FileDib();
}

bool IsWritable(const VDibView& dib)
{
    return dib && !dib.HasCoreHeader();
}

void WriteBmp(CFile& file, const VDibView& dib)
{
    const size_t bitsOffset = kInfoHeaderBytes + PaletteSize(dib.Block());
    const size_t dibBytes = bitsOffset + dib.ImageBytes();
    dib.UpdateSizeImage();
    BITMAPFILEHEADER header = {};
    header.bfType = kBmpSignature;
    header.bfSize = static_cast<DWORD>(sizeof header + dibBytes);
    header.bfOffBits = static_cast<DWORD>(sizeof header + bitsOffset);
    file.Write(&header, sizeof header);
    file.Write(dib.Block(), static_cast<UINT>(dibBytes));
}

// Where the BMP file that begins at the file's position ends, as it states it, or the file's end when that
// cannot be true; the position itself when there is none. The position stays.
ULONGLONG StoredEnd(CFile& file)
{
    const ULONGLONG start = file.GetPosition();
    BITMAPFILEHEADER header;
    const bool isBmp = file.Read(&header, sizeof header) == sizeof header && header.bfType == kBmpSignature;
    file.Seek(static_cast<LONGLONG>(start), CFile::begin);
    if (!isBmp)
        return start;
    const ULONGLONG fileEnd = file.GetLength();
    const bool isPossible =
        header.bfSize >= kFileHeaderBytes + kInfoHeaderBytes && header.bfSize <= fileEnd - start;
    return isPossible ? start + header.bfSize : fileEnd;
}

} // namespace

int CDib::Read(CFile* pFile)
{
    return pFile != nullptr && ReadUpTo(*pFile, kFileEnd);
}

int CDib::ReadUpTo(CFile& file, ULONGLONG end)
{
    const CWaitCursor wait;
    FileDib dib;
    TRY
    {
        dib = ReadBmp(file, end);
    }
    CATCH_ALL(e)
    {
        return FALSE;
    }
    END_CATCH_ALL
    return ReplaceDib(TakePackedDib(std::move(dib.block), dib.length).Release());
}

int CDib::Write(CFile* pFile) const
{
    const CWaitCursor wait;
    const VLockedDib dib(m_hDib);
    if (pFile == nullptr || !IsWritable(dib))
        return FALSE;
    TRY
    {
        WriteBmp(*pFile, dib);
    }
    CATCH_ALL(e)
    {
        return FALSE;
    }
    END_CATCH_ALL
    return TRUE;
}

int CDib::Load(LPCWSTR fileName)
{
    if (fileName == nullptr)
        return FALSE;
    CFile file;
    CFileException failure;
    if (!file.Open(fileName, CFile::modeRead | CFile::shareDenyNone, &failure)) {
        failure.ReportError();
        return FALSE;
    }
    return Read(&file);
}

int CDib::Save(LPCWSTR fileName) const
{
    // Opening empties a file of that name.
    if (!IsWritable(VLockedDib(m_hDib)))
        return FALSE;
    CFile file;
    if (fileName == nullptr || !file.Open(fileName, CFile::modeCreate | CFile::modeWrite))
        return FALSE;
    return Write(&file);
}

int CDib::Load(LPCWSTR resourceName, LPCWSTR resourceType)
{
    const HINSTANCE module = AfxGetResourceHandle();
    const HRSRC resource = ::FindResourceW(module, resourceName, resourceType);
    const HGLOBAL loaded = resource != nullptr ? ::LoadResource(module, resource) : nullptr;
    const auto* const memory = loaded != nullptr ? static_cast<const BYTE*>(::LockResource(loaded)) : nullptr;
    const size_t length = memory != nullptr ? ::SizeofResource(module, resource) : 0;
    WORD signature = 0;
    if (length <= kFileHeaderBytes)
        return FALSE;
    std::memcpy(&signature, memory, sizeof signature);
    if (signature != kBmpSignature)
        return FALSE;
    return CreateFromMemory(memory + kFileHeaderBytes, length - kFileHeaderBytes);
}

int CDib::Load(UINT resourceId, LPCWSTR resourceType)
{
    return Load(MAKEINTRESOURCEW(resourceId), resourceType);
}

void CDib::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    ar.Flush();
    CFile* const file = ar.GetFile();
    if (file == nullptr)
        return;
    if (ar.IsStoring()) {
        Write(file);
        return;
    }
    // What the archive holds behind the image follows.
    const ULONGLONG end = StoredEnd(*file);
    ReadUpTo(*file, end);
    file->Seek(static_cast<LONGLONG>(end), CFile::begin);
}
