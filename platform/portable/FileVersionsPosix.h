// Keeping previous versions of a file. POSIX systems only.
#pragma once

#include "platform/portable/FileCallsPosix.h"
#include "platform/portable/FileTargetPosix.h"

namespace lum::detail {

/// Makes the target version 1, too, moves the versions that are there up by one and removes those
/// beyond `count`. With a count of 0 nothing is done. The target itself is not touched. False, with
/// the reason in errno, when that fails: versions may have moved then, but none but the oldest is
/// gone.
bool KeepVersions(CFileCalls& calls, const CTarget& target, int count);

}  // namespace lum::detail
