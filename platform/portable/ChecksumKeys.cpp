// The marks of checksum lines.
#include "platform/ChecksumKeys.h"

const wchar_t* const checksumKeys[2] = {L"@@CHECKSUM=", L"##CRC32="};
