// CFileCalls, the calls to the system through which a file is saved.
#pragma once

#if defined(_WIN32)
#include "platform/portable/FileCallsWindows.h"
#else
#include "platform/portable/FileCallsPosix.h"
#endif
