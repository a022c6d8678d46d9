// What tests of formulas share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "decoding/Expression.h"

namespace lum::test {

/// Compiles a formula that must be one.
inline decoding::CExpression Compiled(std::string_view text) {
  auto compiled = decoding::CExpression::Compile(text);
  if (const auto* error = std::get_if<decoding::ExpressionError>(&compiled)) {
    ADD_FAILURE() << text << ": " << error->Message();
    return std::get<decoding::CExpression>(decoding::CExpression::Compile("nan"));
  }
  return std::get<decoding::CExpression>(std::move(compiled));
}

}  // namespace lum::test
