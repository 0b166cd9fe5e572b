// CTime and CTimeSpan: points and lengths of time in whole seconds.
#pragma once

#include "afxver_.h"

#include <ctime>
#include <tchar.h>
#include <windows.h>

// A length of time.
class CTimeSpan
{
public:
    CTimeSpan() throw() : m_timeSpan(0) {}
    CTimeSpan(__time64_t time) throw() : m_timeSpan(time) {}
    CTimeSpan(LONG lDays, int nHours, int nMins, int nSecs) throw()
        : m_timeSpan(nSecs + 60LL * (nMins + 60LL * (nHours + 24LL * lDays)))
    {
    }

    // Whole days, then what is left of them in hours, minutes and seconds.
    LONGLONG GetDays() const throw() { return m_timeSpan / 86400; }
    LONGLONG GetTotalHours() const throw() { return m_timeSpan / 3600; }
    LONG GetHours() const throw() { return static_cast<LONG>(GetTotalHours() % 24); }
    LONGLONG GetTotalMinutes() const throw() { return m_timeSpan / 60; }
    LONG GetMinutes() const throw() { return static_cast<LONG>(GetTotalMinutes() % 60); }
    LONGLONG GetTotalSeconds() const throw() { return m_timeSpan; }
    LONG GetSeconds() const throw() { return static_cast<LONG>(m_timeSpan % 60); }
    __time64_t GetTimeSpan() const throw() { return m_timeSpan; }

    CTimeSpan operator+(CTimeSpan span) const throw() { return m_timeSpan + span.m_timeSpan; }
    CTimeSpan operator-(CTimeSpan span) const throw() { return m_timeSpan - span.m_timeSpan; }
    CTimeSpan& operator+=(CTimeSpan span) throw() { return *this = *this + span; }
    CTimeSpan& operator-=(CTimeSpan span) throw() { return *this = *this - span; }
    bool operator==(CTimeSpan span) const throw() { return m_timeSpan == span.m_timeSpan; }
    bool operator!=(CTimeSpan span) const throw() { return m_timeSpan != span.m_timeSpan; }
    bool operator<(CTimeSpan span) const throw() { return m_timeSpan < span.m_timeSpan; }
    bool operator>(CTimeSpan span) const throw() { return m_timeSpan > span.m_timeSpan; }
    bool operator<=(CTimeSpan span) const throw() { return m_timeSpan <= span.m_timeSpan; }
    bool operator>=(CTimeSpan span) const throw() { return m_timeSpan >= span.m_timeSpan; }

private:
    __time64_t m_timeSpan;
};

// A point in time: seconds since 1970 in universal time. The parts (year, hour …) are local time.
class AFX_SUBSET_API CTime
{
public:
    static CTime WINAPI GetCurrentTime() throw();
    // Whether CTime can hold the moment.
    static BOOL WINAPI IsValidFILETIME(const FILETIME& ft) throw();

    CTime() throw() : m_time(0) {}
    CTime(__time64_t time) throw() : m_time(time) {}
    // Local time. A date that does not exist throws CInvalidArgException*.
    CTime(int nYear, int nMonth, int nDay, int nHour, int nMin, int nSec, int nDST = -1);
    CTime(const SYSTEMTIME& sysTime, int nDST = -1);
    // Universal time. Before 1970 it throws CInvalidArgException*.
    CTime(const FILETIME& fileTime, int nDST = -1);

    CTime& operator=(__time64_t time) throw()
    {
        m_time = time;
        return *this;
    }
    CTime& operator+=(CTimeSpan span) throw() { return *this = *this + span; }
    CTime& operator-=(CTimeSpan span) throw() { return *this = *this - span; }
    CTimeSpan operator-(CTime time) const throw() { return CTimeSpan(m_time - time.m_time); }
    CTime operator-(CTimeSpan span) const throw() { return CTime(m_time - span.GetTimeSpan()); }
    CTime operator+(CTimeSpan span) const throw() { return CTime(m_time + span.GetTimeSpan()); }
    bool operator==(CTime time) const throw() { return m_time == time.m_time; }
    bool operator!=(CTime time) const throw() { return m_time != time.m_time; }
    bool operator<(CTime time) const throw() { return m_time < time.m_time; }
    bool operator>(CTime time) const throw() { return m_time > time.m_time; }
    bool operator<=(CTime time) const throw() { return m_time <= time.m_time; }
    bool operator>=(CTime time) const throw() { return m_time >= time.m_time; }

    // FALSE when the time cannot be expressed. The system time is local.
    bool GetAsSystemTime(SYSTEMTIME& st) const throw();
    struct tm* GetLocalTm(struct tm* ptm) const;
    __time64_t GetTime() const throw() { return m_time; }
    int GetYear() const throw();      // 1970 …
    int GetMonth() const throw();     // 1 to 12
    int GetDay() const throw();       // 1 to 31
    int GetHour() const throw();      // 0 to 23
    int GetMinute() const throw();    // 0 to 59
    int GetSecond() const throw();    // 0 to 59
    int GetDayOfWeek() const throw(); // 1 = Sunday

private:
    __time64_t m_time;
};
