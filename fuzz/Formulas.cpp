// The operations of formulas that read device data and texts, against their literal versions: code,
// and result to the last bit.
#include <gtest/gtest.h>

#include "fuzz/FuzzInput.h"
#include "tests/RuntimeComparison.h"
#include "tests/formulas/Decoders.h"

namespace {

using namespace lum::test;

void Compare(const Decoder& decoder, const DecoderInput& input) {
  CDecoderArguments arguments(input);
  (arguments.*decoder.setTexts)();
  arguments.SetNumbers();
  arguments.SetPrevious();
  const LiteralOutcome expected = decoder.literal(input);
  EXPECT_EQ(decoder.call(arguments, input.isLenient), expected.code)
      << decoder.name << " " << ToText(input);
  double result = 0.0;
  arguments.Result().GetDouble(result);
  EXPECT_PRED2(IsSame<double>, result, expected.result) << decoder.name << " " << ToText(input);
}

}  // namespace

// Operation, lenient or strict, three numbers, a hemisphere with its length before it, the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  const Decoder& decoder = *kDecoders[in.Below(kDecoders.size())];
  DecoderInput input;
  input.isLenient = in.Bool();
  input.previous = 123.25;
  for (double& number : input.numbers) {
    number = in.Number();
  }
  input.hemisphere = in.Take(in.Below(4));
  input.text = in.Rest();
  Compare(decoder, input);
  return 0;
}
