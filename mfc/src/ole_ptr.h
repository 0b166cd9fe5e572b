// An owner for one reference to a COM object.
#pragma once

#include <unknwn.h>
#include <utility>

namespace afx_subset
{

template <class Interface>
class ComPtr
{
public:
    ComPtr() = default;
    // Takes a reference of its own.
    explicit ComPtr(Interface* object) : m_object(object)
    {
        if (m_object != nullptr)
            m_object->AddRef();
    }
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;
    ~ComPtr() { Release(); }

    void Release()
    {
        if (Interface* const object = std::exchange(m_object, nullptr))
            object->Release();
    }
    // For a function that answers an object; what is held is released before.
    Interface** Receive()
    {
        Release();
        return &m_object;
    }
    void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }
    // Asks an object, which may be null, for this interface.
    HRESULT From(IUnknown* object)
    {
        return object == nullptr ? E_POINTER : object->QueryInterface(__uuidof(Interface), ReceiveVoid());
    }
    Interface* Get() const { return m_object; }
    Interface* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    Interface* m_object = nullptr;
};

// Releases a member that holds a reference and empties it first, so that nobody sees it in between.
template <class Interface>
void ReleaseMember(Interface*& member)
{
    if (Interface* const object = std::exchange(member, nullptr))
        object->Release();
}

} // namespace afx_subset
