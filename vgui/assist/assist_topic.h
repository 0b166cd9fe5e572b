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
// Runs message boxes and file dialogs.
std::optional<AssistTopic> LoadAssistTopic(const CString& topic, const CString& caption);

// The titles of a folder's videos, in the order of the file system.
std::vector<CString> ListAssistVideos(const CString& folder);

// A text file's lines, each ended by "\r\n" and cut into lines of at most 2047 characters; "无" for a file
// that is empty or cannot be read.
CString ReadAssistInstructions(const CString& path);
