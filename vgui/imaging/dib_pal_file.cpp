// Palette files: the RIFF form "PAL " with the logical palette as its data.
#include "vgui/imaging/dib_pal.h"

#include "vgui/imaging/log_palette.h"

#include <afxdlgs.h>
#include <algorithm>
#include <cstdint>
#include <optional>

namespace
{

constexpr FOURCC kRiffId = FOURCC_RIFF;
constexpr FOURCC kPaletteForm = mmioFOURCC('P', 'A', 'L', ' ');
constexpr FOURCC kDataId = mmioFOURCC('d', 'a', 't', 'a');
constexpr LPCWSTR kFileFilter = L"Palette files (*.PAL)|*.PAL|All files (*.*)|*.*||";
// Version and count, in front of the entries.
constexpr LONG kPaletteHeaderBytes = 4;
constexpr LONG kChunkHeaderBytes = 8;

constexpr LONG PaletteBytes(int n)
{
    return kPaletteHeaderBytes + n * static_cast<LONG>(sizeof(PALETTEENTRY));
}

// Looks for a chunk between two places of a file and descends into it: for a "RIFF" chunk of a form, else
// (form 0) for a chunk of that name. This goes from chunk to chunk itself because the multimedia system's own
// search trusts the sizes it reads and may go round in circles.
std::optional<MMCKINFO> FindChunk(HMMIO hmmio, LONG begin, LONG end, FOURCC id, FOURCC form)
{
    for (int64_t at = begin; at + kChunkHeaderBytes <= end;) {
        MMCKINFO chunk{};
        if (::mmioSeek(hmmio, static_cast<LONG>(at), SEEK_SET) < 0 ||
            ::mmioDescend(hmmio, &chunk, nullptr, 0) != MMSYSERR_NOERROR)
            return std::nullopt;
        if (chunk.ckid == id && (form == 0 || chunk.fccType == form))
            return chunk;
        // Chunks of odd length have one more byte behind them.
        at += kChunkHeaderBytes + ((int64_t{chunk.cksize} + 1) & ~int64_t{1});
    }
    return std::nullopt;
}

// The logical palette in an open file from its position on; empty when there is none. Memory is only taken
// for entries that the file holds.
VOwnedPalette ReadPalette(HMMIO hmmio)
{
    const LONG start = ::mmioSeek(hmmio, 0, SEEK_CUR);
    const LONG length = ::mmioSeek(hmmio, 0, SEEK_END);
    if (start < 0 || length < start)
        return {};
    const auto riff = FindChunk(hmmio, start, length, kRiffId, kPaletteForm);
    if (!riff)
        return {};
    const auto formBytes = static_cast<LONG>(sizeof(FOURCC));
    const auto begin = static_cast<LONG>(riff->dwDataOffset) + formBytes;
    const int64_t riffEnd = int64_t{riff->dwDataOffset} + riff->cksize;
    const auto data =
        FindChunk(hmmio, begin, static_cast<LONG>(std::min<int64_t>(riffEnd, length)), kDataId, 0);
    if (!data || int64_t{data->dwDataOffset} + data->cksize > length)
        return {};

    WORD header[2]; // version and count
    if (data->cksize < sizeof header ||
        ::mmioRead(hmmio, reinterpret_cast<char*>(header), sizeof header) != kPaletteHeaderBytes)
        return {};
    const LONG bytes = PaletteBytes(header[1]);
    if (header[0] != kLogPaletteVersion || header[1] == 0 || data->cksize < static_cast<DWORD>(bytes))
        return {};

    VLogPalette palette(header[1]);
    const LONG entryBytes = bytes - kPaletteHeaderBytes;
    if (::mmioRead(hmmio, reinterpret_cast<char*>(palette.Entries()), entryBytes) != entryBytes)
        return {};
    return palette.Create();
}

// A multimedia file on a handle of the operating system. Null when it cannot be had.
HMMIO OpenOnHandle(UINT hFile, DWORD access)
{
    // Without a handle the multimedia system opens a file that goes nowhere.
    if (hFile == 0)
        return nullptr;
    MMIOINFO info{};
    info.adwInfo[0] = hFile;
    return ::mmioOpen(nullptr, &info, access | MMIO_ALLOCBUF);
}

// Closes it, the handle staying open. False when what was written could not be brought to the file.
bool CloseLeavingHandle(HMMIO hmmio)
{
    return ::mmioClose(hmmio, MMIO_FHOPEN) == MMSYSERR_NOERROR;
}

// The file's handle in the form that the multimedia system takes; 0 without one.
UINT HandleOf(const CFile* pFile)
{
    if (pFile == nullptr || pFile->m_hFile == CFile::hFileNull)
        return 0;
    return HandleToULong(pFile->m_hFile);
}

// The name, or for an empty one the user's choice, which is empty when cancelled.
CString NameOrChoice(LPCSTR fileName, BOOL open, DWORD flags)
{
    if (fileName != nullptr && *fileName != '\0')
        return CString(fileName);
    CFileDialog dialog(open, nullptr, nullptr, flags, kFileFilter);
    return dialog.DoModal() == IDOK ? dialog.GetPathName() : CString();
}

int Fail(LPCWSTR message)
{
    AfxMessageBox(message);
    return FALSE;
}

} // namespace

int CDIBPal::Load(HMMIO hmmio)
{
    return hmmio != nullptr && Replace(ReadPalette(hmmio).Release());
}

int CDIBPal::Save(HMMIO hmmio)
{
    const int n = GetNumColors();
    if (hmmio == nullptr || n == 0)
        return FALSE;
    VLogPalette palette(static_cast<size_t>(n));
    GetPaletteEntries(0, static_cast<UINT>(n), palette.Entries());

    MMCKINFO riff{};
    riff.fccType = kPaletteForm;
    if (::mmioCreateChunk(hmmio, &riff, MMIO_CREATERIFF) != MMSYSERR_NOERROR)
        return FALSE;
    MMCKINFO data{};
    data.ckid = kDataId;
    data.cksize = static_cast<DWORD>(palette.Bytes());
    if (::mmioCreateChunk(hmmio, &data, 0) != MMSYSERR_NOERROR)
        return FALSE;
    const auto bytes = static_cast<LONG>(palette.Bytes());
    return ::mmioWrite(hmmio, reinterpret_cast<const char*>(palette.Get()), bytes) == bytes &&
           ::mmioAscend(hmmio, &data, 0) == MMSYSERR_NOERROR &&
           ::mmioAscend(hmmio, &riff, 0) == MMSYSERR_NOERROR;
}

int CDIBPal::Load(UINT hFile)
{
    const HMMIO hmmio = OpenOnHandle(hFile, MMIO_READ);
    if (hmmio == nullptr)
        return FALSE;
    const int loaded = Load(hmmio);
    CloseLeavingHandle(hmmio);
    return loaded;
}

int CDIBPal::Save(UINT hFile)
{
    const HMMIO hmmio = OpenOnHandle(hFile, MMIO_READWRITE);
    if (hmmio == nullptr)
        return FALSE;
    const int saved = Save(hmmio);
    return CloseLeavingHandle(hmmio) && saved;
}

int CDIBPal::Load(CFile* pFile)
{
    return Load(HandleOf(pFile));
}

int CDIBPal::Save(CFile* pFile)
{
    return Save(HandleOf(pFile));
}

int CDIBPal::Load(LPCSTR fileName)
{
    const CString name = NameOrChoice(fileName, TRUE, OFN_FILEMUSTEXIST | OFN_HIDEREADONLY);
    if (name.IsEmpty())
        return FALSE;
    int loaded = FALSE;
    // The file is closed before the user is told.
    {
        CFile file;
        if (!file.Open(name, CFile::modeRead | CFile::shareDenyWrite))
            return Fail(L"Failed to open file");
        loaded = Load(&file);
    }
    return loaded || Fail(L"Failed to load file");
}

int CDIBPal::Save(LPCSTR fileName)
{
    const CString name = NameOrChoice(fileName, FALSE, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT);
    if (name.IsEmpty())
        return FALSE;
    // Before the file of that name is emptied.
    if (GetNumColors() == 0)
        return Fail(L"Failed to save file");
    int saved = FALSE;
    {
        CFile file;
        if (!file.Open(name, CFile::modeCreate | CFile::modeReadWrite | CFile::shareExclusive))
            return Fail(L"Failed to open file");
        saved = Save(&file);
    }
    return saved || Fail(L"Failed to save file");
}
