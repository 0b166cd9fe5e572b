// The addresses through which a module calls functions of other modules.
#pragma once

#include "tests/support/wait.h"

#include <string_view>

namespace support
{

// The place in a module's import tables that holds the address of a function; null when the module does not
// import it by name.
[[nodiscard]] void** ImportSlot(HMODULE module, std::string_view function);
void WriteSlot(void** slot, void* value);

} // namespace support
