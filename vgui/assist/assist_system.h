// The video help of host applications.
#pragma once

#include "vgui/assist/assist_system_dlg.h"
#include "vgui/export.h"
#include "vgui/foundation/window_helpers.h"

#include <afxwin.h>

// Opens the help on a topic, maximised and in front; there is one help dialog per process, and when it is
// open already it changes to the topic. The third argument is not used. True when the dialog shows the topic.
// Otherwise a message box has told why, or the user has cancelled the choice of a file, and no help dialog is
// open any more. User-interface thread only.
//
// parent: the owner of a new dialog, null for the main window. When its window goes while a message box or
// the choice of a file is up, no dialog opens and the result is false, as it is when the help dialog is
// closed while it comes to the front: its owner is told that it is not active any more. It also is false,
// with nothing changed, when this is called while the help dialog is only just being opened, from a hook,
// say.
//
// Where things are found:
//   the host's folder     the parent of the program's folder, see vgui/assist/host_paths.h
//   sys\product.ini       there; section "产品信息", key "注册表位置": the host's registry key below
//                         HKEY_LOCAL_MACHINE, such as "Software\Company\Product", of which the 32-bit view
//                         (SOFTWARE\Wow6432Node) is used
//   AssistVideo           string value of that key: the folder of all videos. When it is missing, the user is
//                         asked for the file AssistSystem.ini in that folder, and it takes effect with the
//                         next call
//   AssistSystem.ini      in the folder of the videos, else in sys: a section for each topic, with the keys
//                         "Directory", the topic's folder relative to that of the videos, and "Caption"
// Each file NAME.swf in the topic's folder is a video, NAME.txt holds its instructions (UTF-16 or UTF-8, or
// else the system's code page; at most 1 MiB of it is shown). With the bit 0x1000 in key "CustomFlag" of
// section "Product" of product.ini a notice shows the record that a topic without "Directory" lacks.
VGUI_API bool EnterAssistSystem(const wchar_t* topic, CWnd* parent, const CWnd* reserved);
