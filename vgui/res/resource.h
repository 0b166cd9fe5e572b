// Identifiers of the library's resources. Read by the resource compiler, too.
#pragma once

#define IDB_HELP_GLYPH 5016 // picture of the help caption button
