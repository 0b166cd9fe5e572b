// Synchronization objects, their locks, and times.
#include <afxmt.h>
#include <gtest/gtest.h>

#include <thread>

TEST(SyncObjectLock, KeepsThreadsApart)
{
    CCriticalSection section;
    int count = 0;
    const auto work = [&] {
        for (int i = 0; i < 20000; ++i) {
            CSingleLock lock(&section, TRUE);
            ++count;
        }
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
    EXPECT_EQ(count, 40000);
}

TEST(SyncObjectLock, SingleLockTracksItsState)
{
    CEvent event; // automatic reset, not signalled
    CSingleLock lock(&event);
    EXPECT_FALSE(lock.Lock(0));
    EXPECT_FALSE(lock.IsLocked());
    EXPECT_FALSE(lock.Unlock());
    event.SetEvent();
    EXPECT_TRUE(lock.Lock(0));
    EXPECT_TRUE(lock.IsLocked());
    EXPECT_TRUE(lock.Unlock());
    EXPECT_FALSE(lock.Lock(0)); // taken by the first
    EXPECT_THROW(CSingleLock(nullptr), CInvalidArgException*);
}

TEST(SyncObjectLock, MutexAndSemaphore)
{
    CMutex mutex;
    EXPECT_TRUE(mutex.Lock(0));
    std::thread([&] { EXPECT_FALSE(mutex.Lock(0)); }).join();
    EXPECT_TRUE(mutex.Unlock());
    EXPECT_FALSE(mutex.Unlock()); // no longer ours

    CSemaphore semaphore(1, 2);
    EXPECT_TRUE(semaphore.Lock(0));
    EXPECT_FALSE(semaphore.Lock(0));
    LONG previous = -1;
    EXPECT_TRUE(semaphore.Unlock(2, &previous));
    EXPECT_EQ(previous, 0);
    EXPECT_FALSE(semaphore.Unlock()); // above the maximum
    EXPECT_THROW(CSemaphore(3, 2), CInvalidArgException*);
}

TEST(SyncObjectLock, SeveralAtOnce)
{
    CEvent first(FALSE, TRUE);
    CEvent second(TRUE, TRUE);
    CSyncObject* objects[] = {&first, &second};
    CMultiLock lock(objects, 2);
    EXPECT_EQ(lock.Lock(0, TRUE), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(lock.Lock(0, FALSE), WAIT_OBJECT_0 + 1);
    EXPECT_TRUE(lock.IsLocked(1));
    EXPECT_FALSE(lock.IsLocked(0));
    EXPECT_FALSE(lock.IsLocked(2));
    lock.Unlock();
    first.SetEvent();
    EXPECT_EQ(lock.Lock(0, TRUE), WAIT_OBJECT_0);
    CCriticalSection section;
    CSyncObject* withSection[] = {&section};
    EXPECT_THROW(CMultiLock(withSection, 1), CInvalidArgException*);
}

TEST(SyncObjectTime, PartsAndSpans)
{
    const CTime time(2024, 2, 29, 13, 14, 15);
    EXPECT_EQ(time.GetYear(), 2024);
    EXPECT_EQ(time.GetMonth(), 2);
    EXPECT_EQ(time.GetDay(), 29);
    EXPECT_EQ(time.GetHour(), 13);
    EXPECT_EQ(time.GetDayOfWeek(), 5); // a Thursday
    const CTimeSpan span = CTime(2024, 3, 1, 14, 0, 0) - time;
    EXPECT_EQ(span.GetDays(), 1);
    EXPECT_EQ(span.GetHours(), 0);
    EXPECT_EQ(span.GetMinutes(), 45);
    EXPECT_EQ(span.GetSeconds(), 45);
    EXPECT_EQ(time + span - span, time);
    SYSTEMTIME system;
    ASSERT_TRUE(time.GetAsSystemTime(system));
    EXPECT_EQ(CTime(system), time);
    EXPECT_THROW(CTime(2023, 2, 29, 0, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(2023, 13, 1, 0, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(FILETIME{0, 0}), CInvalidArgException*);
}
