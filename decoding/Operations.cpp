#include "decoding/Operations.h"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace lum::decoding {
namespace {

// How many values an operation takes.
template <typename... Parameters>
constexpr std::size_t CountValues(int (CLumType::*)(Parameters...)) {
  return (std::size_t{0} + ... + (std::is_same_v<Parameters, CLumType&> ? 1 : 0));
}

template <typename... Parameters>
constexpr bool TakesLenient(int (CLumType::*)(Parameters...)) {
  return (std::is_same_v<Parameters, bool> || ...);
}

template <auto kMember, std::size_t... kPlaces>
int CallWith(CLumType& result, std::span<CLumType* const> arguments, bool lenient,
             std::index_sequence<kPlaces...>) {
  if constexpr (TakesLenient(kMember)) {
    return (result.*kMember)(*arguments[kPlaces]..., lenient);
  } else {
    return (result.*kMember)(*arguments[kPlaces]...);
  }
}

template <auto kMember>
int Call(CLumType& result, std::span<CLumType* const> arguments, bool lenient) {
  constexpr std::size_t kCount = CountValues(kMember);
  return CallWith<kMember>(result, arguments, lenient, std::make_index_sequence<kCount>());
}

template <auto kMember, std::size_t kCount>
constexpr Operation OperationRow(std::string_view name,
                                 const OperationArgument (&arguments)[kCount],
                                 std::string_view result) {
  static_assert(kCount == CountValues(kMember));
  Operation operation;
  operation.name = name;
  std::copy(arguments, arguments + kCount, operation.arguments.begin());
  operation.argumentCount = kCount;
  operation.takesLenient = TakesLenient(kMember);
  operation.result = result;
  operation.call = Call<kMember>;
  return operation;
}

/// An operation that writes the bound to which it clamps back into its argument.
template <auto kMember>
constexpr Operation ClampingRow(std::string_view name, const OperationArgument (&arguments)[1],
                                std::string_view result) {
  Operation operation = OperationRow<kMember>(name, arguments, result);
  operation.changesArgument = true;
  return operation;
}

template <auto kMember, std::size_t kCount>
constexpr Operation UnsupportedRow(std::string_view name,
                                   const OperationArgument (&arguments)[kCount]) {
  Operation operation =
      OperationRow<kMember>(name, arguments, "unsupported: no kind of value has it");
  operation.isSupported = false;
  return operation;
}

constexpr ArgumentForm kVector = ArgumentForm::kVector;
constexpr ArgumentForm kText = ArgumentForm::kText;

constexpr Operation kOperations[] = {
    OperationRow<&CLumType::ClipValue>("ClipValue", {{"value"}, {"lower"}, {"upper"}},
                                       "the value, no larger than upper and no smaller than lower"),
    OperationRow<&CLumType::GateValue>("GateValue", {{"value"}, {"lower"}, {"upper"}},
                                       "the value; none when it is not between the bounds"),
    OperationRow<&CLumType::NMEAPos>("NMEAPos", {{"position", kText}, {"hemisphere", kText}},
                                     "decimal degrees of ddmm.mmm and N, S, E or W"),
    OperationRow<&CLumType::Val>("Val", {{"textOrNumber", kText, true}},
                                 "the number that the text begins with"),
    OperationRow<&CLumType::TimeConv>("TimeConv", {{"text", kText}},
                                      "the seconds since midnight of hhmmss.ss"),
    OperationRow<&CLumType::Inverse>("Inverse", {{"value"}}, "the value with its sign changed"),
    OperationRow<&CLumType::ExpandTime>("ExpandTime", {{"timeOfDay"}},
                                        "the absolute time nearest to now with this time of day"),
    OperationRow<&CLumType::ExpandTimeEx>(
        "ExpandTimeEx", {{"timeOfDay"}, {"reference"}},
        "the absolute time nearest to reference with this time of day"),
    OperationRow<&CLumType::HmsToMsec>("HmsToMsec", {{"value"}},
                                       "the milliseconds of the number hhmmss.sss"),
    OperationRow<&CLumType::UtcToLocal>("UtcToLocal", {{"time"}}, "the time in UTC as local time"),
    OperationRow<&CLumType::LocalToUtc>("LocalToUtc", {{"time"}}, "the local time as UTC"),
    OperationRow<&CLumType::YyToCcyy>("YyToCcyy", {{"year"}},
                                      "the two-digit year with its century"),
    OperationRow<&CLumType::CYMDMsecToMsec>("CYMDMsecToMsec",
                                            {{"year"}, {"month"}, {"day"}, {"msecOfDay"}},
                                            "the absolute time of a UTC date and a time of day"),
    OperationRow<&CLumType::Pow1D>("Pow1D", {{"base"}, {"exponent"}},
                                   "base to the power of exponent"),
    OperationRow<&CLumType::Sqr1D>("Sqr1D", {{"value"}}, "the square root"),
    OperationRow<&CLumType::Log1D>("Log1D", {{"value"}}, "the base-10 logarithm"),
    OperationRow<&CLumType::Neg>("Neg", {{"value", kVector}}, "each number with its sign changed"),
    OperationRow<&CLumType::Int>("Int", {{"value"}}, "the integer part"),
    UnsupportedRow<&CLumType::ValToStr>("ValToStr", {{"value"}}),
    UnsupportedRow<&CLumType::ValToMyStr>("ValToMyStr", {{"value"}, {"format", kText}}),
    OperationRow<&CLumType::IsNull>("IsNull", {{"value"}}, "1 for 0, else 0"),
    OperationRow<&CLumType::IsEqual>("IsEqual", {{"first"}, {"second"}, {"tolerance"}},
                                     "1 when they are no further apart than tolerance, else 0"),
    OperationRow<&CLumType::IsGreater>("IsGreater", {{"first"}, {"second"}},
                                       "1 when first is greater, else 0"),
    OperationRow<&CLumType::IsLess>("IsLess", {{"first"}, {"second"}},
                                    "1 when first is less, else 0"),
    OperationRow<&CLumType::Sign>("Sign", {{"value"}}, "1 for 0 and above, else -1"),
    OperationRow<&CLumType::BinVal>("BinVal", {{"record", kText}, {"typeCode"}},
                                    "the number that a record or hexadecimal text begins with"),
    OperationRow<&CLumType::CanVal>("CanVal", {{"frame", kText}, {"typeCode"}, {"startByte"}},
                                    "a field out of the data of a CAN frame"),
    OperationRow<&CLumType::AdamVal>("AdamVal", {{"response", kText}, {"channel"}},
                                     "the reading of a channel in an input module's response"),
    OperationRow<&CLumType::CheckInValid>("CheckInValid", {{"value"}, {"invalidMarker"}},
                                          "the value; none when it is the marker"),
    OperationRow<&CLumType::J1939Val>("J1939Val", {{"message", kText}, {"typeCode"}, {"startByte"}},
                                      "a field out of the data of a J1939 message"),
    OperationRow<&CLumType::J1939BitsVal>(
        "J1939BitsVal", {{"message", kText}, {"typeCode"}, {"startBit"}, {"bitLength"}},
        "a bit field out of the data of a J1939 message"),
    OperationRow<&CLumType::BitVal>("BitVal", {{"value"}, {"bit"}},
                                    "a bit of the value's integer part"),
    OperationRow<&CLumType::FromEulerRoll>("FromEulerRoll", {{"roll"}, {"pitch"}},
                                           "the roll about the vessel's own axis, in degrees"),
    UnsupportedRow<&CLumType::OutString>("OutString", {{"value"}}),
    UnsupportedRow<&CLumType::FormatGeogsDMS>("FormatGeogsDMS", {{"first"}, {"second"}, {"third"}}),
    OperationRow<&CLumType::Sin>("Sin", {{"degrees"}}, "the sine"),
    OperationRow<&CLumType::Cos>("Cos", {{"degrees"}}, "the cosine"),
    ClampingRow<&CLumType::Asin>("Asin", {{"value"}}, "the arc sine, in degrees"),
    ClampingRow<&CLumType::Acos>("Acos", {{"value"}}, "the arc cosine, in degrees"),
    OperationRow<&CLumType::Bearing>("Bearing", {{"first"}, {"second"}},
                                     "the direction of first east and second north, in degrees"),
    OperationRow<&CLumType::Modulo>("Modulo", {{"dividend"}, {"divisor"}},
                                    "the remainder of the division"),
    OperationRow<&CLumType::ValueInRange>("ValueInRange",
                                          {{"value"}, {"firstBound"}, {"secondBound"}},
                                          "1 when the value lies between the bounds, else 0"),
    OperationRow<&CLumType::SelectValue>("SelectValue",
                                         {{"firstChoice"}, {"secondChoice"}, {"selector"}},
                                         "firstChoice when the selector is 0, else secondChoice"),
};

std::string_view FormMark(ArgumentForm form) {
  switch (form) {
    case ArgumentForm::kVector:
      return ":vector";
    case ArgumentForm::kText:
      return ":text";
    default:
      return "";
  }
}

}  // namespace

std::span<const Operation> Operations() { return kOperations; }

const Operation* FindOperation(std::string_view name) {
  const auto found =
      std::find_if(std::begin(kOperations), std::end(kOperations),
                   [name](const Operation& operation) { return operation.name == name; });
  return found == std::end(kOperations) ? nullptr : &*found;
}

std::string ArgumentsText(const Operation& operation) {
  std::string text;
  for (const OperationArgument& argument : operation.Arguments()) {
    text += text.empty() ? "" : " ";
    text += argument.name;
    text += FormMark(argument.form);
  }
  return text;
}

}  // namespace lum::decoding
