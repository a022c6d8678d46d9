#include "decoding/FormulaNames.h"

#include "decoding/FormulaInputs.h"
#include "decoding/NearMiss.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

void OfferOperations(CNearMiss& nearMiss) {
  for (const Operation& operation : Operations()) {
    if (operation.isSupported) {
      nearMiss.Offer(FromUtf8(operation.name));
    }
  }
  nearMiss.Offer(FromUtf8(kFieldName));
}

FormulaFault Unknown(std::string_view what, const FormulaToken& name, const CNearMiss& nearMiss) {
  FormulaFault fault;
  fault.place = name.begin;
  fault.found = std::string(what) + " " + QuotedPart(name.text);
  fault.suggestion = nearMiss.Best() ? ToUtf8(*nearMiss.Best()) : std::string();
  return fault;
}

}  // namespace

bool IsLenientWord(std::string_view word) {
  return word == "lenient" || word == "true" || word == "false";
}

std::string CallText(const Operation& operation) {
  std::string text(operation.name);
  text += '(';
  for (const OperationArgument& argument : operation.Arguments()) {
    text += text.back() == '(' ? "" : ", ";
    text += argument.name;
  }
  return text + ")";
}

std::string Counted(std::size_t arguments) {
  return std::to_string(arguments) + (arguments == 1 ? " argument" : " arguments");
}

std::string CountedArguments(const Operation& operation) {
  return Counted(operation.argumentCount) + ": " + CallText(operation);
}

FormulaFault UnknownOperation(const FormulaToken& name) {
  CNearMiss nearMiss(FromUtf8(name.text));
  OfferOperations(nearMiss);
  return Unknown("unknown operation", name, nearMiss);
}

FormulaFault UnknownName(const FormulaToken& name) {
  CNearMiss nearMiss(FromUtf8(name.text));
  for (const InputName& input : InputTable()) {
    nearMiss.Offer(FromUtf8(input.name));
  }
  OfferOperations(nearMiss);
  return Unknown("unknown name", name, nearMiss);
}

}  // namespace lum::decoding
