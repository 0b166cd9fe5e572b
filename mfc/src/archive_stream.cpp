#include "archive_stream.h"

#include <algorithm>

namespace afx_subset
{

STDMETHODIMP ArchiveStream::QueryInterface(REFIID riid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    const bool known = riid == IID_IUnknown || riid == IID_ISequentialStream || riid == IID_IStream;
    *object = known ? static_cast<IStream*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) ArchiveStream::AddRef()
{
    return 1;
}

STDMETHODIMP_(ULONG) ArchiveStream::Release()
{
    return 1;
}

STDMETHODIMP ArchiveStream::Read(void* buffer, ULONG bytes, ULONG* bytesRead)
{
    UINT count = 0;
    try {
        count = m_archive.Read(buffer, bytes);
    } catch (CException* failure) {
        failure->Delete();
        m_failed = true;
    }
    // Readers of image lists take what an early end of the archive left out for pixels, so it is a failure.
    m_failed = m_failed || count < bytes;
    m_position += count;
    if (bytesRead != nullptr)
        *bytesRead = count;
    return m_failed ? STG_E_READFAULT : S_OK;
}

STDMETHODIMP ArchiveStream::Write(const void* buffer, ULONG bytes, ULONG* bytesWritten)
{
    ULONG count = 0;
    try {
        m_archive.Write(buffer, bytes);
        count = bytes;
    } catch (CException* failure) {
        failure->Delete();
        m_failed = true;
    }
    m_position += count;
    if (bytesWritten != nullptr)
        *bytesWritten = count;
    return m_failed ? STG_E_WRITEFAULT : S_OK;
}

bool ArchiveStream::SkipForward(LONGLONG bytes)
{
    BYTE waste[512];
    while (bytes > 0) {
        ULONG got = 0;
        Read(waste, static_cast<ULONG>(std::min<LONGLONG>(bytes, sizeof(waste))), &got);
        if (got == 0)
            return false;
        bytes -= got;
    }
    return true;
}

STDMETHODIMP ArchiveStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position)
{
    LONGLONG distance = move.QuadPart;
    if (origin == STREAM_SEEK_SET)
        distance -= static_cast<LONGLONG>(m_position);
    else if (origin != STREAM_SEEK_CUR)
        return STG_E_INVALIDFUNCTION;
    if (distance < 0 || (distance > 0 && !m_archive.IsLoading()))
        return STG_E_INVALIDFUNCTION;
    if (!SkipForward(distance))
        return STG_E_READFAULT;
    if (position != nullptr)
        position->QuadPart = m_position;
    return S_OK;
}

STDMETHODIMP ArchiveStream::SetSize(ULARGE_INTEGER)
{
    return E_NOTIMPL;
}

STDMETHODIMP ArchiveStream::CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*)
{
    return E_NOTIMPL;
}

STDMETHODIMP ArchiveStream::Commit(DWORD)
{
    return S_OK;
}

STDMETHODIMP ArchiveStream::Revert()
{
    return E_NOTIMPL;
}

STDMETHODIMP ArchiveStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD)
{
    return E_NOTIMPL;
}

STDMETHODIMP ArchiveStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD)
{
    return E_NOTIMPL;
}

STDMETHODIMP ArchiveStream::Stat(STATSTG*, DWORD)
{
    return E_NOTIMPL;
}

STDMETHODIMP ArchiveStream::Clone(IStream**)
{
    return E_NOTIMPL;
}

} // namespace afx_subset
