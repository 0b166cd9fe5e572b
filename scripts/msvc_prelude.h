// Ahead of every source that scripts/check-msvc reads, and precompiled, since the framework's headers take
// longer to read than most sources.
#pragma once

// MinGW's headers give COM interfaces their ids in one of two ways, and the one for Microsoft's compiler
// needs attributes that these headers do not have; so they do not get to see that compiler while they choose.
#pragma push_macro("_MSC_VER")
#undef _MSC_VER
#include <_mingw.h>
#pragma pop_macro("_MSC_VER")

#include <afxcmn.h>
#include <afxdisp.h>
#include <afxext.h>
#include <afxhtml.h>
#include <afxtempl.h>
#include <afxwin.h>
#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>
