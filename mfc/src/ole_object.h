// What the COM objects of the framework have in common.
#pragma once

#include <afxdisp.h>

namespace afx_subset
{

// A counted object on the heap, born with one reference. It is used on one thread. The derived class says in
// QueryInterface, by Answer, which interfaces it has.
template <class... Interfaces>
class Counted : public Interfaces...
{
public:
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++m_references); }
    STDMETHODIMP_(ULONG) Release() override
    {
        const LONG left = --m_references;
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }

protected:
    virtual ~Counted() = default;

private:
    LONG m_references = 1;
};

// QueryInterface's answer: the face that was asked for, with a reference, or null for none such.
inline HRESULT Answer(IUnknown* face, void** object)
{
    *object = face;
    if (face == nullptr)
        return E_NOINTERFACE;
    face->AddRef();
    return S_OK;
}

// Exceptions of the framework end here: COM gets their status code.
template <class Call>
HRESULT WithoutExceptions(Call call)
{
    try {
        return call();
    } catch (CException* e) {
        const HRESULT result = COleException::Process(e);
        e->Delete();
        return result;
    }
}

} // namespace afx_subset
