// Synchronization objects and the locks that hold them.
#pragma once

#include "afx.h"

// A system object that threads wait for. Times are in milliseconds, INFINITE for ever.
class AFX_SUBSET_API CSyncObject : public CObject
{
    DECLARE_DYNAMIC(CSyncObject)

public:
    explicit CSyncObject(LPCTSTR pstrName);
    ~CSyncObject() override;

    operator HANDLE() const { return m_hObject; }
    // FALSE when the time passed or the wait failed.
    virtual BOOL Lock(DWORD dwTimeout = INFINITE);
    virtual BOOL Unlock() = 0;
    virtual BOOL Unlock(LONG lCount, LPLONG lpPrevCount = NULL);

    HANDLE m_hObject;
};

// Constructors of the following throw CResourceException* when the system refuses the object.
class AFX_SUBSET_API CSemaphore : public CSyncObject
{
    DECLARE_DYNAMIC(CSemaphore)

public:
    CSemaphore(LONG lInitialCount = 1, LONG lMaxCount = 1, LPCTSTR pstrName = NULL,
               LPSECURITY_ATTRIBUTES lpsaAttributes = NULL);
    BOOL Unlock() override { return Unlock(1, NULL); }
    BOOL Unlock(LONG lCount, LPLONG lprevCount = NULL) override;
};

class AFX_SUBSET_API CMutex : public CSyncObject
{
    DECLARE_DYNAMIC(CMutex)

public:
    explicit CMutex(BOOL bInitiallyOwn = FALSE, LPCTSTR lpszName = NULL,
                    LPSECURITY_ATTRIBUTES lpsaAttribute = NULL);
    using CSyncObject::Unlock;
    BOOL Unlock() override;
};

class AFX_SUBSET_API CEvent : public CSyncObject
{
    DECLARE_DYNAMIC(CEvent)

public:
    explicit CEvent(BOOL bInitiallyOwn = FALSE, BOOL bManualReset = FALSE, LPCTSTR lpszName = NULL,
                    LPSECURITY_ATTRIBUTES lpsaAttribute = NULL);
    BOOL SetEvent() { return ::SetEvent(m_hObject); }
    BOOL PulseEvent() { return ::PulseEvent(m_hObject); }
    BOOL ResetEvent() { return ::ResetEvent(m_hObject); }
    using CSyncObject::Unlock;
    // An event is not unlocked; TRUE.
    BOOL Unlock() override { return TRUE; }
};

class AFX_SUBSET_API CCriticalSection : public CSyncObject
{
    DECLARE_DYNAMIC(CCriticalSection)

public:
    CCriticalSection();
    ~CCriticalSection() override;

    operator CRITICAL_SECTION*() { return &m_sect; }
    BOOL Lock();
    // The time is ignored: a critical section is waited for until it is free.
    BOOL Lock(DWORD dwTimeout) override;
    using CSyncObject::Unlock;
    BOOL Unlock() override;

    CRITICAL_SECTION m_sect;
};

// Locks one object, which stays the caller's, and unlocks it at the end of the scope.
class AFX_SUBSET_API CSingleLock
{
public:
    explicit CSingleLock(CSyncObject* pObject, BOOL bInitialLock = FALSE);
    ~CSingleLock() { Unlock(); }
    CSingleLock(const CSingleLock&) = delete;
    CSingleLock& operator=(const CSingleLock&) = delete;

    BOOL Lock(DWORD dwTimeOut = INFINITE);
    // FALSE when the lock is not held or may be used once only.
    BOOL Unlock();
    BOOL Unlock(LONG lCount, LPLONG lPrevCount = NULL);
    BOOL IsLocked() const { return m_bAcquired; }

protected:
    CSyncObject* m_pObject;
    BOOL m_bAcquired;
};

// Waits for several objects at once; critical sections cannot be among them.
class AFX_SUBSET_API CMultiLock
{
public:
    CMultiLock(CSyncObject* ppObjects[], DWORD dwCount, BOOL bInitialLock = FALSE);
    ~CMultiLock();
    CMultiLock(const CMultiLock&) = delete;
    CMultiLock& operator=(const CMultiLock&) = delete;

    // As WaitForMultipleObjects: WAIT_OBJECT_0 + the index of the object that ended the wait, WAIT_TIMEOUT …
    DWORD Lock(DWORD dwTimeOut = INFINITE, BOOL bWaitForAll = TRUE, DWORD dwWakeMask = 0);
    BOOL Unlock();
    BOOL Unlock(LONG lCount, LPLONG lPrevCount = NULL);
    BOOL IsLocked(DWORD dwItem);

protected:
    CSyncObject* const* m_ppObjectArray;
    DWORD m_dwCount;
    HANDLE m_hObjects[MAXIMUM_WAIT_OBJECTS];
    BOOL m_bLocked[MAXIMUM_WAIT_OBJECTS];
};
