// Bringing two programs' changes of one file together, item by item.
#pragma once

#include "platform/portable/FileDocument.h"

namespace lum::detail {

/// Makes in `theirs` the changes that lead from `base` to `mine`: of an item that both changed,
/// mine is taken. An item that mine added stands before the one that follows it in mine. Lines that
/// have no meaning are theirs.
void MergeChanges(const CFileDocument& base, const CFileDocument& mine, CFileDocument& theirs);

bool HasItems(const CFileDocument& document);

}  // namespace lum::detail
