// Identifiers of the library's resources. Read by the resource compiler, too.
#pragma once

#define IDI_CHECK_NONE 131 // check boxes of trees
#define IDI_CHECK_ALL 134
#define IDI_CHECK_PART 135
#define IDB_HELP_GLYPH 5016 // picture of the help caption button
