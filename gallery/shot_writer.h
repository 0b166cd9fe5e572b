// Pictures of windows, written without a user.
#pragma once

#include <afxwin.h>

// Writes a line to the standard output as UTF-8; to nowhere when the program has none.
void PrintLine(const CString& line);

// Takes pictures of windows and writes them as PNG files. GDI+ must have been started.
class ShotWriter
{
public:
    // folder: any path, relative ones count from the current folder; it is made when it does not exist.
    explicit ShotWriter(const CString& folder);

    // Shows the window fully on the screen, makes it the active one, lets it paint and writes what it shows,
    // frame included, to name.png. Prints a line that says whether it worked.
    bool Take(CWnd& window, const CString& name);
    // The same without activating it, for a window that stands free already.
    bool TakeAsItIs(CWnd& window, const CString& name);
    // Counts a picture that could not be tried, as when its window does not open.
    void Fail(const CString& name);

    // Prints the number of pictures. True when there are some and none has failed.
    bool PrintSummary() const;

private:
    bool Write(HBITMAP picture, const CString& name) const;

    CString m_folder; // without a separator at the end
    int m_written = 0;
    int m_failed = 0;
};

// Lets every window of the thread handle what is waiting for it.
void HandlePendingMessages();
