// A COM stream over an archive, for system functions that read or write streams.
#pragma once

#include <afx.h>
#include <objidl.h>

namespace afx_subset
{

// Lives on the caller's stack, so references are not counted. No exception leaves it, because the system's
// frames above it could not pass one on: a failing archive is reported by result codes and by Failed().
// Of the positions only the present one can be asked for, and a loading archive can be moved forward.
class ArchiveStream : public IStream
{
public:
    explicit ArchiveStream(CArchive& archive) : m_archive(archive) {}
    ArchiveStream(const ArchiveStream&) = delete;
    ArchiveStream& operator=(const ArchiveStream&) = delete;
    virtual ~ArchiveStream() = default;

    // Whether the archive has thrown or ended before all that was asked for had been read.
    [[nodiscard]] bool Failed() const { return m_failed; }

    STDMETHOD(QueryInterface)(REFIID riid, void** object) override;
    STDMETHOD_(ULONG, AddRef)() override;
    STDMETHOD_(ULONG, Release)() override;
    STDMETHOD(Read)(void* buffer, ULONG bytes, ULONG* bytesRead) override;
    STDMETHOD(Write)(const void* buffer, ULONG bytes, ULONG* bytesWritten) override;
    STDMETHOD(Seek)(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override;
    STDMETHOD(SetSize)(ULARGE_INTEGER size) override;
    STDMETHOD(CopyTo)
    (IStream* target, ULARGE_INTEGER bytes, ULARGE_INTEGER* bytesRead, ULARGE_INTEGER* bytesWritten) override;
    STDMETHOD(Commit)(DWORD flags) override;
    STDMETHOD(Revert)() override;
    STDMETHOD(LockRegion)(ULARGE_INTEGER offset, ULARGE_INTEGER bytes, DWORD type) override;
    STDMETHOD(UnlockRegion)(ULARGE_INTEGER offset, ULARGE_INTEGER bytes, DWORD type) override;
    STDMETHOD(Stat)(STATSTG* statistics, DWORD flags) override;
    STDMETHOD(Clone)(IStream** clone) override;

private:
    bool SkipForward(LONGLONG bytes);

    CArchive& m_archive;
    ULONGLONG m_position = 0; // bytes since the stream was made
    bool m_failed = false;
};

} // namespace afx_subset
