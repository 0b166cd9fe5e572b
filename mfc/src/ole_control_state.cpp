#include "ole_control_state.h"

#include "ole_ptr.h"

#include <limits>

using namespace afx_subset;

namespace
{

// The rest of the file in movable memory, which the caller frees; null when there is nothing or not enough
// memory. The file's position is left where it was.
HGLOBAL ReadRest(CFile& file)
{
    const ULONGLONG start = file.GetPosition();
    const ULONGLONG length = file.GetLength() - start;
    if (length == 0 || length > std::numeric_limits<UINT>::max())
        return nullptr;
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(length));
    if (memory == nullptr)
        return nullptr;
    const UINT read = file.Read(::GlobalLock(memory), static_cast<UINT>(length));
    ::GlobalUnlock(memory);
    file.Seek(static_cast<LONGLONG>(start), CFile::begin);
    if (read == length)
        return memory;
    ::GlobalFree(memory);
    return nullptr;
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
    const HGLOBAL memory = ReadRest(file);
    if (memory == nullptr)
        return STG_E_READFAULT;
    ComPtr<IStream> stream;
    HRESULT result = ::CreateStreamOnHGlobal(memory, TRUE, stream.Receive());
    if (FAILED(result)) {
        ::GlobalFree(memory);
        return result;
    }
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
    const HGLOBAL memory = ReadRest(file);
    if (memory == nullptr)
        return STG_E_READFAULT;
    ComPtr<ILockBytes> bytes;
    HRESULT result = ::CreateILockBytesOnHGlobal(memory, TRUE, bytes.Receive());
    if (FAILED(result)) {
        ::GlobalFree(memory);
        return result;
    }
    ComPtr<IStorage> storage;
    result = ::StgOpenStorageOnILockBytes(bytes.Get(), nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE,
                                          nullptr, 0, storage.Receive());
    return FAILED(result) ? result : persistStorage->Load(storage.Get());
}
