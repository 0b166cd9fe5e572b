// Windows opened and closed many times.
#pragma once

#include "tests/support/recorder.h"

#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace support
{

struct WindowRound {
    const char* name;
    // Opens a window, child of the host, and closes it. index counts from 0.
    std::function<void(HostWnd& host, int index)> run;
};

// Runs each round a few times and then many times, which must leave nothing behind. The environment variable
// VGUI_SOAK says how often; without it there are a hundred.
void ExpectNothingLeft(HostWnd& host, const std::vector<WindowRound>& rounds);

// A round for a class that dresses a window of the system: created, or in every other round put around a
// window that is there; painted and destroyed.
template <class Control>
WindowRound DressedRound(const char* name, const wchar_t* windowClass, DWORD style = 0)
{
    return {name, [=](HostWnd& host, int index) {
                const CRect kPlace(10, 10, 130, 40);
                const DWORD all = WS_CHILD | WS_VISIBLE | WS_TABSTOP | style;
                Control control;
                if (index % 2 == 0) {
                    static_cast<CWnd&>(control).CreateEx(0, windowClass, L"text", all, kPlace, &host, 1000);
                } else {
                    control.SubclassWindow(::CreateWindow(windowClass, L"text", all, kPlace.left, kPlace.top,
                                                          kPlace.Width(), kPlace.Height(), host.m_hWnd,
                                                          nullptr, nullptr, nullptr));
                }
                ASSERT_TRUE(::IsWindow(control.m_hWnd));
                control.UpdateWindow();
            }};
}

} // namespace support
