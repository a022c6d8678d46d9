// CTemporaryFile, the new file beside the one that it is to replace.
#pragma once

#if defined(_WIN32)
#include "platform/portable/TemporaryFileWindows.h"
#else
#include "platform/portable/TemporaryFilePosix.h"
#endif
