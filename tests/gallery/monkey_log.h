// What the monkey did last, for the report of a crash.
#pragma once

#include <string>

namespace monkey
{

// Begins a log: what was noted is written after the report of any crash from now on.
void BeginLog(unsigned seed);
// Notes an action. The oldest of fifty makes room.
void Log(int index, const std::string& action);
// Writes the log to the standard output.
void WriteLog();

} // namespace monkey
