// The platform's version check in a platform of the next version.
#include "platform/VersionCheck.h"

#define LUM_PLATFORM_VERSION 0x06000000U
#include "platform/portable/VersionCheck.cpp"
