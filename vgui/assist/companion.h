// A progress dialog on behalf of another process, which drives it through a named pipe.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// Connects to the other process, the pipe's server, shows the shell's progress dialog and follows the server
// until it closes the pipe or the user cancels. Returns 1 when the user cancelled; 0 when the exchange ended
// otherwise, or when there was no pipe or no dialog, of which a message box tells.
//
// Blocks the calling thread, which only handles messages that other threads send to its windows meanwhile.
// Initialises COM for the call. The dialog stands where it stood the last time, as kept in the file
// "cfg\CompanionInfomation.his" under the parent of the folder of the host's program.
//
// owner: the dialog's owner, may be null. The second argument is not used. mode 10000 writes the results
// into the profile after every message that carries one, other modes at the end only.
//
// arguments, and each message of the server, are fields: "?", a key, one character that is not looked at
// ("=" by custom), and a value up to the next "?" or the end. The first occurrence of a key counts. Longer
// values than allowed are cut.
//
//     arguments only
//     ?PipeName          the pipe, at most 258 characters; "\\.\pipe\CompanionNamePipe" by default
//     ?EnableCancel      a number; other than 0 lets the user cancel, 0 by default
//     ?Title             the dialog's title
//     ?Profile           the INI file that receives the results, a full path of at most 258 characters
//     both
//     ?Total             a number: begins a step that ends with it; 100 by default
//     ?Message           what is being done, at most 259 characters: line 3 of the dialog, where Windows may
//                        write its estimate of the time left over it, and line 1, too, until the time used
//                        stands there
//     messages only; texts of at most 259 characters
//     ?Process           a number: how far the current step is
//     ?EndProcess        ends the newest step
//     ?CurObject         the object being worked on, line 2 of the dialog
//     ?ShowWindow        a number: 0 hides the dialog, others show it
//     ?Record            the lines of the profile's section "Analysis", each ended by ";", the last by ";;"
//     ?LastAnalysisInfo  the same for the section "AnalysisInfo"
//
// Texts are UTF-16. The pipe is read by at most 260 bytes at a time and each time is answered, before the
// message is applied, with the first half of "Continue" (8 bytes, "Cont") or, once the user has cancelled,
// "Cancel" (6 bytes, "Can"), after which nothing more is read. A server that writes its message and then
// waits for the answer has all of its fields applied; a longer message gets an answer for each part. A
// server that is silent when the user cancels has two more seconds to come for its answer; one that closes
// the pipe instead has ended the exchange, which then does not count as cancelled. After cancelling, what the
// pipe's name has beyond the default name becomes a global atom.
//
// The server has to read its answers. With its end of the pipe full of them the exchange stands still until
// it reads some, closes the pipe or ends, or the user cancels.
VGUI_API UINT CompanionInfomation(HWND owner, UINT, const wchar_t* arguments, UINT mode);
