// Keeping previous versions of a file. POSIX systems only.
#pragma once

#include "platform/portable/FileCallsPosix.h"
#include "platform/portable/FileTargetPosix.h"

namespace lum::detail {

/// Makes the target version 1, too, and moves the versions that are there up by one: to one more
/// than `count`, so that nothing is lost before the new file is in place. With a count of 0 nothing
/// is done, else the target must exist. The target itself is not touched. False, with the reason in
/// errno, when that fails: versions may have moved then, but none is gone.
bool KeepVersions(CFileCalls& calls, const CTarget& target, int count);

/// Removes the versions that are too many. With a count of 0 nothing is done. One that cannot be
/// removed waits for the next save.
void RemoveVersionsBeyond(CFileCalls& calls, const CTarget& target, int count);

}  // namespace lum::detail
