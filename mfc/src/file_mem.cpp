// CMemFile: files in memory.
#include "afx.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(UINT nGrowBytes)
    : m_nGrowBytes(nGrowBytes), m_nPosition(0), m_nBufferSize(0), m_nFileSize(0), m_lpBuffer(nullptr),
      m_bAutoDelete(TRUE)
{
}

CMemFile::CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) : CMemFile(nGrowBytes)
{
    Attach(lpBuffer, nBufferSize, nGrowBytes);
}

CMemFile::~CMemFile()
{
    CMemFile::Abort();
}

void CMemFile::Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes)
{
    if (lpBuffer == nullptr && nBufferSize > 0)
        AfxThrowInvalidArgException();
    CMemFile::Abort();
    m_nGrowBytes = nGrowBytes;
    m_nBufferSize = nBufferSize;
    m_nFileSize = nGrowBytes == 0 ? nBufferSize : 0;
    m_lpBuffer = lpBuffer;
    m_bAutoDelete = FALSE;
}

BYTE* CMemFile::Detach()
{
    BYTE* const buffer = m_lpBuffer;
    m_lpBuffer = nullptr;
    m_nBufferSize = m_nFileSize = m_nPosition = 0;
    return buffer;
}

BOOL CMemFile::GetStatus(CFileStatus& rStatus) const
{
    rStatus = CFileStatus();
    rStatus.m_size = m_nFileSize;
    return TRUE;
}

UINT CMemFile::Read(void* lpBuf, UINT nCount)
{
    if (lpBuf == nullptr && nCount > 0)
        AfxThrowInvalidArgException();
    if (nCount == 0 || m_nPosition >= m_nFileSize)
        return 0;
    const SIZE_T count = std::min(static_cast<SIZE_T>(nCount), m_nFileSize - m_nPosition);
    Memcpy(static_cast<BYTE*>(lpBuf), m_lpBuffer + m_nPosition, count);
    m_nPosition += count;
    return static_cast<UINT>(count);
}

void CMemFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_nPosition > MAXSIZE_T - nCount)
        AfxThrowMemoryException();
    const SIZE_T end = m_nPosition + nCount;
    const SIZE_T position = m_nPosition;
    if (end > m_nFileSize)
        CMemFile::SetLength(end);
    Memcpy(m_lpBuffer + position, static_cast<const BYTE*>(lpBuf), nCount);
    m_nPosition = end;
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom)
{
    SIZE_T base = 0;
    if (nFrom == CFile::current)
        base = m_nPosition;
    else if (nFrom == CFile::end)
        base = m_nFileSize;
    else if (nFrom != CFile::begin)
        AfxThrowInvalidArgException();
    const SIZE_T back = lOff < 0 ? 0 - static_cast<SIZE_T>(lOff) : 0;
    const SIZE_T forward = lOff > 0 ? static_cast<SIZE_T>(lOff) : 0;
    if (back > base || forward > MAXSIZE_T - base)
        AfxThrowFileException(CFileException::badSeek);
    m_nPosition = base - back + forward;
    return m_nPosition;
}

ULONGLONG CMemFile::GetPosition() const
{
    return m_nPosition;
}

ULONGLONG CMemFile::GetLength() const
{
    return m_nFileSize;
}

void CMemFile::SetLength(ULONGLONG dwNewLen)
{
    const SIZE_T length = static_cast<SIZE_T>(dwNewLen);
    if (length > m_nBufferSize)
        GrowFile(length);
    // New room reads as zero, whatever the memory held.
    if (length > m_nFileSize)
        memset(m_lpBuffer + m_nFileSize, 0, length - m_nFileSize);
    m_nFileSize = length;
    if (m_nPosition > length)
        m_nPosition = length;
}

void CMemFile::Flush() {}

void CMemFile::Close()
{
    CMemFile::Abort();
}

void CMemFile::Abort()
{
    if (m_bAutoDelete && m_lpBuffer != nullptr)
        Free(m_lpBuffer);
    CMemFile::Detach();
}

CFile* CMemFile::Duplicate() const
{
    AfxThrowNotSupportedException();
}

void CMemFile::LockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

void CMemFile::UnlockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

UINT CMemFile::GetBufferPtr(UINT nCommand, UINT nCount, void** ppBufStart, void** ppBufMax)
{
    if (nCommand == bufferCheck)
        return bufferDirect;
    if (nCommand == bufferCommit) {
        const SIZE_T end = m_nPosition + nCount;
        if (end < m_nPosition || end > m_nBufferSize)
            AfxThrowInvalidArgException();
        m_nPosition = end;
        m_nFileSize = std::max(m_nFileSize, end);
        return 0;
    }
    if (nCommand > bufferCommit || ppBufStart == nullptr || ppBufMax == nullptr)
        AfxThrowInvalidArgException();
    if (nCommand == bufferWrite &&
        (m_nPosition > MAXSIZE_T - nCount || m_nPosition + nCount > m_nBufferSize)) {
        if (m_nPosition > MAXSIZE_T - nCount)
            AfxThrowMemoryException();
        GrowFile(m_nPosition + nCount);
    }
    const SIZE_T limit = nCommand == bufferWrite ? m_nBufferSize : m_nFileSize;
    const SIZE_T available = limit > m_nPosition ? limit - m_nPosition : 0;
    const UINT count = static_cast<UINT>(std::min(available, static_cast<SIZE_T>(nCount)));
    BYTE* const start = available > 0 ? m_lpBuffer + m_nPosition : m_lpBuffer;
    *ppBufStart = start;
    *ppBufMax = start + count;
    if (nCommand == bufferRead)
        m_nPosition += count;
    return count;
}

BYTE* CMemFile::Alloc(SIZE_T nBytes)
{
    return static_cast<BYTE*>(malloc(nBytes));
}

BYTE* CMemFile::Realloc(BYTE* lpMem, SIZE_T nBytes)
{
    return static_cast<BYTE*>(realloc(lpMem, nBytes));
}

BYTE* CMemFile::Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes)
{
    return static_cast<BYTE*>(memmove(lpMemTarget, lpMemSource, nBytes));
}

void CMemFile::Free(BYTE* lpMem)
{
    free(lpMem);
}

void CMemFile::GrowFile(SIZE_T dwNewLen)
{
    if (dwNewLen <= m_nBufferSize)
        return;
    if (m_nGrowBytes == 0 || dwNewLen > MAXSIZE_T - m_nGrowBytes)
        AfxThrowMemoryException();
    const SIZE_T size = (dwNewLen + m_nGrowBytes - 1) / m_nGrowBytes * m_nGrowBytes;
    BYTE* const buffer = m_lpBuffer == nullptr ? Alloc(size) : Realloc(m_lpBuffer, size);
    if (buffer == nullptr)
        AfxThrowMemoryException();
    m_lpBuffer = buffer;
    m_nBufferSize = size;
}
