// CRuntimeClass and the list of classes that archives and CreateObject find by name.
#include "afx.h"

namespace
{

constinit CRuntimeClass* g_classes = nullptr;
constinit SRWLOCK g_classesLock = SRWLOCK_INIT;

// Names in an archive are not trusted; no class name is longer.
constexpr WORD kMaxClassName = 255;

HMODULE ModuleOf(const void* address)
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(address), &module);
    return module;
}

} // namespace

void AFXAPI AfxClassInit(CRuntimeClass* pNewClass)
{
    if (pNewClass == nullptr)
        return;
    AcquireSRWLockExclusive(&g_classesLock);
    CRuntimeClass* known = g_classes;
    while (known != nullptr && known != pNewClass)
        known = known->m_pNextClass;
    if (known == nullptr) {
        pNewClass->m_pNextClass = g_classes;
        g_classes = pNewClass;
    }
    ReleaseSRWLockExclusive(&g_classesLock);
}

void afx_subset::RemoveClasses(HMODULE module)
{
    AcquireSRWLockExclusive(&g_classesLock);
    for (CRuntimeClass** link = &g_classes; *link != nullptr;) {
        CRuntimeClass* const entry = *link;
        if (ModuleOf(entry) == module) {
            *link = entry->m_pNextClass;
            entry->m_pNextClass = nullptr;
        } else {
            link = &entry->m_pNextClass;
        }
    }
    ReleaseSRWLockExclusive(&g_classesLock);
}

CRuntimeClass* PASCAL CRuntimeClass::FromName(LPCSTR lpszClassName)
{
    if (lpszClassName == nullptr)
        return nullptr;
    AcquireSRWLockShared(&g_classesLock);
    CRuntimeClass* found = g_classes;
    while (found != nullptr && strcmp(found->m_lpszClassName, lpszClassName) != 0)
        found = found->m_pNextClass;
    ReleaseSRWLockShared(&g_classesLock);
    return found;
}

CRuntimeClass* PASCAL CRuntimeClass::FromName(LPCWSTR lpszClassName)
{
    return lpszClassName == nullptr ? nullptr : FromName(CStringA(lpszClassName).GetString());
}

CObject* CRuntimeClass::CreateObject()
{
    if (m_pfnCreateObject == nullptr)
        return nullptr;
    try {
        return m_pfnCreateObject();
    } catch (CMemoryException* e) {
        e->Delete();
    } catch (const std::bad_alloc&) {
        // As above, from a member's constructor.
    }
    return nullptr;
}

CObject* PASCAL CRuntimeClass::CreateObject(LPCSTR lpszClassName)
{
    CRuntimeClass* const found = FromName(lpszClassName);
    return found != nullptr ? found->CreateObject() : nullptr;
}

CObject* PASCAL CRuntimeClass::CreateObject(LPCWSTR lpszClassName)
{
    CRuntimeClass* const found = FromName(lpszClassName);
    return found != nullptr ? found->CreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const
{
    if (pBaseClass == nullptr)
        return FALSE;
    const CRuntimeClass* step = this;
    while (step != nullptr && step != pBaseClass)
        step = step->m_pfnGetBaseClass != nullptr ? step->m_pfnGetBaseClass() : nullptr;
    return step != nullptr;
}

void CRuntimeClass::Store(CArchive& ar) const
{
    const WORD length = static_cast<WORD>(strlen(m_lpszClassName));
    ar << static_cast<WORD>(m_wSchema) << length;
    ar.Write(m_lpszClassName, length);
}

CRuntimeClass* PASCAL CRuntimeClass::Load(CArchive& ar, UINT* pwSchemaNum)
{
    WORD schema = 0;
    WORD length = 0;
    ar >> schema >> length;
    char name[kMaxClassName + 1];
    if (length > kMaxClassName || ar.Read(name, length) != length)
        return nullptr;
    name[length] = '\0';
    if (pwSchemaNum != nullptr)
        *pwSchemaNum = schema;
    return FromName(name);
}
