// CTarget, the file that a save is to replace, and what is done with it.
#pragma once

#if defined(_WIN32)
#include "platform/portable/FileTargetWindows.h"
#else
#include "platform/portable/FileTargetPosix.h"
#endif
