#include "ole_control_state.h"

#include "ole_ptr.h"

#include <limits>
#include <memory>

using namespace afx_subset;

namespace
{

struct MemoryFree {
    void operator()(HGLOBAL memory) const { ::GlobalFree(memory); }
};
using Memory = std::unique_ptr<void, MemoryFree>;

// The rest of the file in movable memory; null when there is nothing or not enough memory. The file's
// position is left where it was. Throws what the file throws.
Memory ReadRest(CFile& file)
{
    const ULONGLONG start = file.GetPosition();
    const ULONGLONG length = file.GetLength() - start;
    Memory memory;
    if (length == 0 || length > std::numeric_limits<UINT>::max())
        return memory;
    memory.reset(::GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(length)));
    if (memory == nullptr)
        return memory;
    // Locked memory is freed as well as other, should the file throw.
    const UINT read = file.Read(::GlobalLock(memory.get()), static_cast<UINT>(length));
    ::GlobalUnlock(memory.get());
    file.Seek(static_cast<LONGLONG>(start), CFile::begin);
    if (read != length)
        memory.reset();
    return memory;
}

HRESULT NewStorage(IStorage** storage)
{
    ComPtr<ILockBytes> bytes;
    const HRESULT result = ::CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.Receive());
    if (FAILED(result))
        return result;
    return ::StgCreateDocfileOnILockBytes(bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0,
                                          storage);
}

} // namespace

HRESULT afx_subset::InitControlState(IUnknown* control)
{
    ComPtr<IPersistStreamInit> streamInit;
    if (SUCCEEDED(streamInit.From(control))) {
        const HRESULT result = streamInit->InitNew();
        return result == E_NOTIMPL ? S_OK : result;
    }
    ComPtr<IPersistStorage> persistStorage;
    if (FAILED(persistStorage.From(control)))
        return S_OK;
    ComPtr<IStorage> storage;
    const HRESULT result = NewStorage(storage.Receive());
    return FAILED(result) ? result : persistStorage->InitNew(storage.Get());
}

HRESULT afx_subset::LoadControlStream(IUnknown* control, CFile& file)
{
    ComPtr<IPersistStreamInit> streamInit;
    ComPtr<IPersistStream> persistStream;
    if (FAILED(streamInit.From(control)) && FAILED(persistStream.From(control)))
        return E_NOINTERFACE;
    Memory memory = ReadRest(file);
    if (memory == nullptr)
        return STG_E_READFAULT;
    ComPtr<IStream> stream;
    HRESULT result = ::CreateStreamOnHGlobal(memory.get(), TRUE, stream.Receive());
    if (FAILED(result))
        return result;
    memory.release(); // the stream's now
    result = streamInit ? streamInit->Load(stream.Get()) : persistStream->Load(stream.Get());
    ULARGE_INTEGER used{};
    if (SUCCEEDED(result) && SUCCEEDED(stream->Seek({}, STREAM_SEEK_CUR, &used)))
        file.Seek(static_cast<LONGLONG>(used.QuadPart), CFile::current);
    return result;
}

HRESULT afx_subset::LoadControlStorage(IUnknown* control, CFile& file)
{
    ComPtr<IPersistStorage> persistStorage;
    if (FAILED(persistStorage.From(control)))
        return E_NOINTERFACE;
    Memory memory = ReadRest(file);
    if (memory == nullptr)
        return STG_E_READFAULT;
    ComPtr<ILockBytes> bytes;
    HRESULT result = ::CreateILockBytesOnHGlobal(memory.get(), TRUE, bytes.Receive());
    if (FAILED(result))
        return result;
    memory.release(); // the byte array's now
    ComPtr<IStorage> storage;
    result = ::StgOpenStorageOnILockBytes(bytes.Get(), nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE,
                                          nullptr, 0, storage.Receive());
    return FAILED(result) ? result : persistStorage->Load(storage.Get());
}
