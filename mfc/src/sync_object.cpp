// Synchronization objects and locks.
#include "afxmt.h"

IMPLEMENT_DYNAMIC(CSyncObject, CObject)
IMPLEMENT_DYNAMIC(CSemaphore, CSyncObject)
IMPLEMENT_DYNAMIC(CMutex, CSyncObject)
IMPLEMENT_DYNAMIC(CEvent, CSyncObject)
IMPLEMENT_DYNAMIC(CCriticalSection, CSyncObject)

CSyncObject::CSyncObject(LPCTSTR) : m_hObject(nullptr) {}

CSyncObject::~CSyncObject()
{
    if (m_hObject != nullptr)
        ::CloseHandle(m_hObject);
}

BOOL CSyncObject::Lock(DWORD dwTimeout)
{
    const DWORD result = ::WaitForSingleObject(m_hObject, dwTimeout);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

BOOL CSyncObject::Unlock(LONG, LPLONG)
{
    return TRUE;
}

CSemaphore::CSemaphore(LONG lInitialCount, LONG lMaxCount, LPCTSTR pstrName,
                       LPSECURITY_ATTRIBUTES lpsaAttributes)
    : CSyncObject(pstrName)
{
    if (lMaxCount <= 0 || lInitialCount < 0 || lInitialCount > lMaxCount)
        AfxThrowInvalidArgException();
    m_hObject = ::CreateSemaphore(lpsaAttributes, lInitialCount, lMaxCount, pstrName);
    if (m_hObject == nullptr)
        AfxThrowResourceException();
}

BOOL CSemaphore::Unlock(LONG lCount, LPLONG lprevCount)
{
    return ::ReleaseSemaphore(m_hObject, lCount, lprevCount);
}

CMutex::CMutex(BOOL bInitiallyOwn, LPCTSTR lpszName, LPSECURITY_ATTRIBUTES lpsaAttribute)
    : CSyncObject(lpszName)
{
    m_hObject = ::CreateMutex(lpsaAttribute, bInitiallyOwn, lpszName);
    if (m_hObject == nullptr)
        AfxThrowResourceException();
}

BOOL CMutex::Unlock()
{
    return ::ReleaseMutex(m_hObject);
}

CEvent::CEvent(BOOL bInitiallyOwn, BOOL bManualReset, LPCTSTR lpszName, LPSECURITY_ATTRIBUTES lpsaAttribute)
    : CSyncObject(lpszName)
{
    m_hObject = ::CreateEvent(lpsaAttribute, bManualReset, bInitiallyOwn, lpszName);
    if (m_hObject == nullptr)
        AfxThrowResourceException();
}

CCriticalSection::CCriticalSection() : CSyncObject(nullptr)
{
    ::InitializeCriticalSection(&m_sect);
}

CCriticalSection::~CCriticalSection()
{
    ::DeleteCriticalSection(&m_sect);
}

BOOL CCriticalSection::Lock()
{
    ::EnterCriticalSection(&m_sect);
    return TRUE;
}

BOOL CCriticalSection::Lock(DWORD)
{
    return Lock();
}

BOOL CCriticalSection::Unlock()
{
    ::LeaveCriticalSection(&m_sect);
    return TRUE;
}

// ---- Locks
// -------------------------------------------------------------------------------------------------

CSingleLock::CSingleLock(CSyncObject* pObject, BOOL bInitialLock) : m_pObject(pObject), m_bAcquired(FALSE)
{
    if (pObject == nullptr)
        AfxThrowInvalidArgException();
    if (bInitialLock)
        Lock();
}

BOOL CSingleLock::Lock(DWORD dwTimeOut)
{
    if (m_bAcquired)
        return FALSE;
    m_bAcquired = m_pObject->Lock(dwTimeOut);
    return m_bAcquired;
}

BOOL CSingleLock::Unlock()
{
    if (!m_bAcquired)
        return FALSE;
    m_bAcquired = !m_pObject->Unlock();
    return !m_bAcquired;
}

BOOL CSingleLock::Unlock(LONG lCount, LPLONG lPrevCount)
{
    if (!m_bAcquired)
        return FALSE;
    m_bAcquired = !m_pObject->Unlock(lCount, lPrevCount);
    return !m_bAcquired;
}

CMultiLock::CMultiLock(CSyncObject* ppObjects[], DWORD dwCount, BOOL bInitialLock)
    : m_ppObjectArray(ppObjects), m_dwCount(dwCount), m_hObjects(), m_bLocked()
{
    if (ppObjects == nullptr || dwCount == 0 || dwCount > MAXIMUM_WAIT_OBJECTS)
        AfxThrowInvalidArgException();
    for (DWORD i = 0; i < dwCount; ++i) {
        if (ppObjects[i] == nullptr || ppObjects[i]->m_hObject == nullptr)
            AfxThrowInvalidArgException();
        m_hObjects[i] = ppObjects[i]->m_hObject;
    }
    if (bInitialLock)
        Lock();
}

CMultiLock::~CMultiLock()
{
    Unlock();
}

DWORD CMultiLock::Lock(DWORD dwTimeOut, BOOL bWaitForAll, DWORD dwWakeMask)
{
    const DWORD result =
        dwWakeMask == 0
            ? ::WaitForMultipleObjects(m_dwCount, m_hObjects, bWaitForAll, dwTimeOut)
            : ::MsgWaitForMultipleObjects(m_dwCount, m_hObjects, bWaitForAll, dwTimeOut, dwWakeMask);
    const bool ended = result < WAIT_OBJECT_0 + m_dwCount;
    const bool abandoned = result >= WAIT_ABANDONED_0 && result < WAIT_ABANDONED_0 + m_dwCount;
    if (!ended && !abandoned)
        return result;
    if (bWaitForAll) {
        for (DWORD i = 0; i < m_dwCount; ++i)
            m_bLocked[i] = TRUE;
    } else {
        m_bLocked[result - (ended ? WAIT_OBJECT_0 : WAIT_ABANDONED_0)] = TRUE;
    }
    return result;
}

BOOL CMultiLock::Unlock()
{
    for (DWORD i = 0; i < m_dwCount; ++i) {
        if (m_bLocked[i])
            m_bLocked[i] = !m_ppObjectArray[i]->Unlock();
    }
    return TRUE;
}

BOOL CMultiLock::Unlock(LONG lCount, LPLONG lPrevCount)
{
    BOOL any = FALSE;
    for (DWORD i = 0; i < m_dwCount; ++i) {
        CSemaphore* const semaphore =
            m_bLocked[i] ? DYNAMIC_DOWNCAST(CSemaphore, m_ppObjectArray[i]) : nullptr;
        if (semaphore == nullptr)
            continue;
        m_bLocked[i] = !semaphore->Unlock(lCount, lPrevCount);
        any = any || !m_bLocked[i];
    }
    return any;
}

BOOL CMultiLock::IsLocked(DWORD dwItem)
{
    return dwItem < m_dwCount && m_bLocked[dwItem];
}
