#include "decoding/FormulaProgram.h"

namespace lum::decoding {
namespace {

void BindArguments(FormulaStep& step, std::vector<FormulaStep>& steps) {
  for (std::size_t i = 0; i < step.argumentCount; ++i) {
    if (step.sources[i] == FormulaStep::kNoStep) {
      continue;
    }
    FormulaStep& source = steps[step.sources[i]];
    if (source.IsLoad()) {
      source.taker = &step.Argument(i);
    } else {
      step.Argument(i) = &source.result;
    }
  }
  if (step.kind == StepKind::CallOnCopy) {
    step.arguments[0] = &step.copy;
  }
}

}  // namespace

void FormulaProgram::Bind() {
  for (FormulaStep& step : steps) {
    BindArguments(step, steps);
  }
  FormulaStep& last = steps.back();
  if (last.IsLoad()) {
    last.taker = last.arguments.data();
  }
}

}  // namespace lum::decoding
