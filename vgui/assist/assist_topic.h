// Finds the videos of a help topic.
#pragma once

#include <afxwin.h>
#include <optional>
#include <vector>

struct AssistTopic {
    CString folder; // of the videos, with a separator at the end
    CString caption;
};

// Finds a topic as told at EnterAssistSystem; its caption is the given one when it has none of its own.
// Nothing when that fails, of which a message box has told, or when the user cancelled the choice of a file.
// Runs message boxes and file dialogs, during which whoever has the caption may go: hence a copy of it.
std::optional<AssistTopic> LoadAssistTopic(const CString& topic, CString caption);

// Whether there is a file, and not a folder, of this path.
bool AssistFileExists(const CString& path);

// The titles of a folder's videos, in the order of the file system.
std::vector<CString> ListAssistVideos(const CString& folder);

// A text file's lines, each ended by "\r\n" and cut into lines of at most 2047 characters; "无" for a file
// that is empty or cannot be read. Of a longer file only the first 1 MiB is read; the line cut there goes,
// except in UTF-16.
CString ReadAssistInstructions(const CString& path);
