// What the library would have the system open.
#pragma once

#include "vgui/foundation/window_helpers.h"

#include <string>
#include <vector>

// Notes what would be opened, for as long as it lives; nothing is opened.
class OpenedLinks
{
public:
    struct Request {
        std::wstring verb;
        std::wstring file;
        int show;
        ULONG mask;
    };

    OpenedLinks()
    {
        Requests().clear();
        m_previous = VGSetShellOpener(&Note);
    }
    ~OpenedLinks() { VGSetShellOpener(m_previous); }
    OpenedLinks(const OpenedLinks&) = delete;
    OpenedLinks& operator=(const OpenedLinks&) = delete;

    static std::vector<Request>& Requests()
    {
        static std::vector<Request> requests;
        return requests;
    }
    static BOOL WINAPI Note(SHELLEXECUTEINFOW* request)
    {
        Requests().push_back({request->lpVerb != nullptr ? request->lpVerb : L"", request->lpFile,
                              request->nShow, request->fMask});
        return request->cbSize == sizeof *request;
    }

private:
    VGShellOpener m_previous;
};
