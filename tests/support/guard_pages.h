// Guard pages behind the blocks of the heap.
#pragma once

#include "tests/support/wait.h"

namespace support
{

// From now on every block that this program, the library, the framework and the C++ run-time allocate
// (malloc, new), and every global block of the library, ends before a page that nobody may touch, and a block
// that is freed becomes such pages for a while: what reads or writes beyond a block, or after its end,
// crashes. Blocks that the system makes are left to it, and so are those beyond the number that the machine
// has mappings for. The environment variable VGUI_GUARD_PAGES makes the test main call this.
void InstallGuardPages();

} // namespace support
