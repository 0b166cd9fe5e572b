// CObject: allocation, run-time type questions, diagnostics.
#include "afx.h"

CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), 0xFFFF, nullptr, nullptr, nullptr};
static const AFX_CLASSINIT _init_CObject(&CObject::classCObject);

CObject::CObject() = default;
CObject::~CObject() = default;

CRuntimeClass* PASCAL CObject::GetThisClass()
{
    return &classCObject;
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return &classCObject;
}

void* PASCAL CObject::operator new(size_t nSize)
{
    void* memory = ::operator new(nSize, std::nothrow);
    if (memory == nullptr)
        AfxThrowMemoryException();
    return memory;
}

void* PASCAL CObject::operator new(size_t nSize, LPCSTR, int)
{
    return CObject::operator new(nSize);
}

void PASCAL CObject::operator delete(void* p)
{
    ::operator delete(p);
}

void PASCAL CObject::operator delete(void* p, LPCSTR, int)
{
    ::operator delete(p);
}

BOOL CObject::IsSerializable() const
{
    return GetRuntimeClass()->m_wSchema != 0xFFFF;
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& dc) const
{
    dc << "a " << GetRuntimeClass()->m_lpszClassName << " at " << static_cast<const void*>(this) << "\n";
}

CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject)
{
    return pObject != nullptr && pObject->IsKindOf(pClass) ? pObject : nullptr;
}

CObject* AFXAPI AfxStaticDownCast(CRuntimeClass* pClass, CObject* pObject)
{
    ASSERT(pObject == nullptr || pObject->IsKindOf(pClass));
    UNUSED(pClass);
    return pObject;
}
