// What of a file could not be read as what it should be.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/FileObject.h"

namespace lum::detail {

/// The first `most` problems of a file, in its order.
std::vector<FileObjectProblem> FindProblems(const std::string& file, TextFileEncoding encoding,
                                            std::size_t most);

}  // namespace lum::detail
