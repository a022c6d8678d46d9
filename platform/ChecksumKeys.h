// The marks of checksum lines that the host family's tools write into its text files:
//
//     @@CHECKSUM=4F2A
//     ##CRC32=8D1C09E7
#pragma once

#include "platform/PlatformExport.h"

/// A line that contains either text carries a checksum and no content: "@@CHECKSUM=" and
/// "##CRC32=", spelled so that no name, number or default value of an ordinary line holds them.
/// Never changes: any thread may read it.
LUM_PLATFORM_API extern const wchar_t* const checksumKeys[2];
