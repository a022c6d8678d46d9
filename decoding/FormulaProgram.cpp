#include "decoding/FormulaProgram.h"

namespace lum::decoding {
namespace {

void BindArgument(FormulaStep& step, std::size_t place, FormulaStep& source) {
  if (step.kind != StepKind::Call) {
    step.numbers[place] = &source.number;
  } else if (source.IsLoad()) {
    source.taker = &step.arguments[place];
  } else {
    step.arguments[place] = &source.result;
    source.isTakenByCall = true;
  }
}

}  // namespace

void FormulaProgram::Bind() {
  for (FormulaStep& step : steps) {
    for (std::size_t i = 0; i < step.argumentCount; ++i) {
      if (step.sources[i] != FormulaStep::kNoStep) {
        BindArgument(step, i, steps[step.sources[i]]);
      }
    }
    if (step.kind == StepKind::CallOnCopy) {
      step.arguments[0] = &step.copy;
    }
  }
}

}  // namespace lum::decoding
