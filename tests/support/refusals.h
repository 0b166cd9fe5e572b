// Makes the system refuse what the library and the framework ask it for.
#pragma once

#include "tests/support/import_patch.h"

#include <functional>
#include <string>
#include <vector>

namespace support
{

enum class Refused {
    Objects, // GDI objects, device contexts, images, menus, windows, timers, global blocks
    Memory,  // new and malloc
};

// What is done with some requests refused.
struct RefusedOperation {
    std::string name;
    std::function<void()> run;
    // Whether windows, graphic and user objects that stay behind are a fault. Blocks of memory always are.
    bool countsObjects = true;
};

// Runs each operation again and again: with its first request refused, with its second one, and so on; then
// the same with every request from there on refused. A request that the same functions have made before, in
// this operation or another one of the test program, is left out; VGUI_SOAK in the environment has every one
// tried. A crash report names operation and request. Expects that the process then has the graphic and user
// objects, the windows and the library's memory of before. Exceptions of the framework and, with memory
// refused, std::bad_alloc may leave an operation; message boxes are answered at once.
void ExpectRefusalsSurvived(Refused kind, const std::vector<RefusedOperation>& operations);

} // namespace support
