// Single calls of operations as a program in C++ makes them, each by its name and with values made
// for it alone.
#pragma once

#include <optional>
#include <string_view>

#include "tests/decoding/SingleCalls.h"

namespace lum::test {

bool HasDirectCall(std::string_view operation);

/// What the operation sets; nothing when it answers 0. Precondition: HasDirectCall.
std::optional<double> CallDirectly(const SingleCall& call);

}  // namespace lum::test
