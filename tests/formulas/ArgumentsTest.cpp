// How the operations read their arguments: which kinds are numbers and texts, and what a missing
// one does. The table of operations below tells which of them read unchecked.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/formulas/Evaluate.h"
#include "tests/values/ValueSamples.h"

namespace {

using namespace lum::test;

double NumberOf(const CLumType& value) {
  double number = 0.0;
  value.GetDouble(number);
  return number;
}

template <typename Kind>
void ExpectServesAsNumber(Kind argument, double number) {
  CLumDouble result(kPrevious);
  EXPECT_EQ(result.Neg(argument), 1);
  EXPECT_EQ(NumberOf(result), -number);
  EXPECT_EQ(result.CheckInValid(argument, argument), 0);  // Also where reads are unchecked.
  CLumDouble other(number + 1.0);
  EXPECT_EQ(result.CheckInValid(argument, other), 1);
  EXPECT_EQ(NumberOf(result), number);
}

TEST(FormulaArguments, EveryNumberKindServes) {
  ExpectServesAsNumber(CLumDouble(2.5), 2.5);
  ExpectServesAsNumber(CLumFloat(2.5F), 2.5);
  ExpectServesAsNumber(CLumFloat(0.1F), static_cast<double>(0.1F));
  ExpectServesAsNumber(CLumInt(-7), -7.0);
  ExpectServesAsNumber(CLumUInt(4294967295U), 4294967295.0);
  ExpectServesAsNumber(CLumULongLong(9007199254740990U), 9007199254740990.0);
  ExpectServesAsNumber(CLumBool(true), 1.0);
  ExpectServesAsNumber(CLumBool(false), 0.0);
  ExpectServesAsNumber(CLumAnything(L"2.5 m"), 2.5);
}

TEST(FormulaArguments, A64BitNumberIsRoundedToTheNearestDouble) {
  CLumULongLong largest(18446744073709551615U);
  CLumDouble result;
  EXPECT_EQ(result.Val(largest, false), 1);
  EXPECT_EQ(NumberOf(result), 18446744073709551616.0);
}

bool IsNumber(const Kind& kind) {
  const std::string name = kind.name;
  return name == "bool" || name == "int" || name == "uint" || name == "uint64" || name == "float" ||
         name == "double";
}

// Values that no operation can take a number from, one of each kind that has none.
std::vector<std::unique_ptr<CLumType>> NoNumbers() {
  std::vector<std::unique_ptr<CLumType>> values;
  for (const Kind& kind : Kinds()) {
    if (!IsNumber(kind)) {
      values.push_back(kind.make(0));
    }
  }
  return values;
}

// Calls an operation with the arguments in `values`, as many as it takes; lenient where it can be.
struct Operation {
  const char* name;
  int arguments;
  int (*call)(CLumType& result, CLumType* const* values);
};

#define ONE(name)                                                                                \
  {                                                                                              \
#name, 1, [](CLumType & result, CLumType* const* values) { return result.name(*values[0]); } \
  }
#define TWO(name)                                                                   \
  {                                                                                 \
#name, 2,                                                                       \
        [](CLumType & result,                                                       \
           CLumType* const* values) { return result.name(*values[0], *values[1]); } \
  }
#define THREE(name)                                                                             \
  {                                                                                             \
#name, 3,                                                                                   \
        [](CLumType & result,                                                                   \
           CLumType* const* values) { return result.name(*values[0], *values[1], *values[2]); } \
  }

// The operations that read numbers and stop at the first argument without one.
const Operation kChecked[] = {
    ONE(Sin),
    ONE(Cos),
    ONE(Asin),
    ONE(Acos),
    ONE(Sqr1D),
    TWO(Pow1D),
    ONE(Log1D),
    ONE(Neg),
    ONE(Inverse),
    ONE(Int),
    TWO(Modulo),
    TWO(Bearing),
    ONE(Sign),
    ONE(IsNull),
    THREE(IsEqual),
    TWO(IsGreater),
    TWO(IsLess),
    THREE(ClipValue),
    THREE(GateValue),
    ONE(HmsToMsec),
    ONE(ExpandTime),
    TWO(ExpandTimeEx),
    ONE(UtcToLocal),
    ONE(LocalToUtc),
    ONE(YyToCcyy),
    {"CYMDMsecToMsec", 4,
     [](CLumType& result, CLumType* const* values) {
       return result.CYMDMsecToMsec(*values[0], *values[1], *values[2], *values[3]);
     }},
};

TEST(FormulaArguments, ACheckedReadThatFailsKeepsTheResult) {
  const auto noNumbers = NoNumbers();
  for (const Operation& operation : kChecked) {
    for (int missing = 0; missing < operation.arguments; ++missing) {
      for (const auto& noNumber : noNumbers) {
        CLumDouble numbers[] = {2000.0, 1.0, 1.0, 1.0};
        CLumType* values[] = {&numbers[0], &numbers[1], &numbers[2], &numbers[3]};
        values[missing] = noNumber.get();
        CLumDouble result(kPrevious);
        EXPECT_EQ(operation.call(result, values), 0) << operation.name << ' ' << missing;
        EXPECT_EQ(NumberOf(result), kPrevious) << operation.name << ' ' << missing;
      }
    }
  }
}

// A value whose accessor fails after others were read.
TEST(FormulaArguments, ArgumentsAreReadInOrder) {
  struct CRecorder : CLumDouble {
    explicit CRecorder(std::string& log, char name) : m_log(log), m_name(name) {}
    int GetDouble(double& value) const override {
      m_log += m_name;
      value = 2000.0;
      return 1;
    }
    std::string& m_log;
    char m_name;
  };
  std::string log;
  CRecorder a(log, 'a');
  CRecorder b(log, 'b');
  CRecorder c(log, 'c');
  CLumName none(L"none");
  CLumDouble result;
  EXPECT_EQ(result.IsEqual(a, b, c), 1);
  EXPECT_EQ(log, "abc");
  log.clear();
  EXPECT_EQ(result.IsEqual(a, none, c), 0);
  EXPECT_EQ(log, "a");
  log.clear();
  EXPECT_EQ(result.SelectValue(a, b, c), 1);
  EXPECT_EQ(log, "abc");
}

struct UncheckedCase {
  const char* name;
  Outcome outcome;
  Outcome expected;
};

TEST(FormulaArguments, AnUncheckedReadThatFailsCountsAsZero) {
  const wchar_t* const none = L"5";  // A name is no number.
  const UncheckedCase cases[] = {
      {"ValueInRange", Evaluate(&CLumType::ValueInRange, none, -1.0, 1.0), Gives(1.0)},
      {"ValueInRange", Evaluate(&CLumType::ValueInRange, -1.0, none, 5.0), Gives(0.0)},
      {"SelectValue", Evaluate(&CLumType::SelectValue, 7.0, 8.0, none), Gives(7.0)},
      {"SelectValue", Evaluate(&CLumType::SelectValue, none, 8.0, 0.0), Gives(0.0)},
      {"CheckInValid", Evaluate(&CLumType::CheckInValid, none, 1.0), Gives(0.0)},
      {"CheckInValid", Evaluate(&CLumType::CheckInValid, none, none), {0, 0.0}},
      {"FromEulerRoll", Evaluate(&CLumType::FromEulerRoll, none, 30.0), Gives(0.0)},
      {"FromEulerRoll", Evaluate(&CLumType::FromEulerRoll, 90.0, none), Gives(90.0)},
      {"BitVal", Evaluate(&CLumType::BitVal, none, 0.0), Gives(0.0)},
      {"BitVal", Evaluate(&CLumType::BitVal, 5.0, none), Gives(1.0)},
      {"BinVal", Evaluate(&CLumType::BinVal, "\x05", none, false), kKept},
      {"BinVal", Evaluate(&CLumType::BinVal, none, 6.0, false), kKept},
      {"BinVal", Evaluate(&CLumType::BinVal, 5.0, 6.0, true), Gives(kPrevious)},
      {"AdamVal", Evaluate(&CLumType::AdamVal, ">    +01.234", none), Gives(1.234)},
      {"AdamVal", Evaluate(&CLumType::AdamVal, none, 0.0), {0, 0.0}},
      {"CanVal", Evaluate(&CLumType::CanVal, "12317F", 6.0, none, false), Gives(127.0)},
      {"CanVal", Evaluate(&CLumType::CanVal, "12317F", none, 0.0, true), kLenientZero},
      {"CanVal", Evaluate(&CLumType::CanVal, none, 6.0, 0.0, false), kKept},
      {"J1939Val", Evaluate(&CLumType::J1939Val, "123456789017F1", 6.0, none, false), Gives(127.0)},
      {"J1939Val", Evaluate(&CLumType::J1939Val, none, 6.0, 0.0, true), kLenientZero},
      {"J1939BitsVal", Evaluate(&CLumType::J1939BitsVal, "123456789017F1", 6.0, none, 8.0, false),
       Gives(127.0)},
      {"J1939BitsVal", Evaluate(&CLumType::J1939BitsVal, "123456789017F1", 6.0, 0.0, none, true),
       kKept},
      {"J1939BitsVal", Evaluate(&CLumType::J1939BitsVal, none, 6.0, 0.0, 8.0, true), kLenientZero},
  };
  for (const UncheckedCase& row : cases) {
    EXPECT_EQ(row.outcome, row.expected) << row.name;
  }
}

TEST(FormulaArguments, FreeFormTextsServeAsTextAndNumber) {
  CLumAnything frame(L"12383412000000000000");
  CLumAnything typeCode(L"7");
  CLumAnything start(L"0");
  CLumDouble result;
  EXPECT_EQ(result.CanVal(frame, typeCode, start, false), 1);
  EXPECT_EQ(NumberOf(result), 4660.0);
}

struct FreeFormCase {
  std::wstring text;
  Outcome expected;
};

// Short and long texts, ASCII and others, take different ways to the same bytes.
TEST(FormulaArguments, FreeFormTextsServeAsTheirUtf8Bytes) {
  const std::wstring blanks(100, L' ');
  const FreeFormCase cases[] = {
      {L"12.5", Gives(12.5)},
      {L"12.5\u00B0", Gives(12.5)},
      {L"\u00B012.5", {0, 0.0}},
      {blanks + L"12.5", Gives(12.5)},
      {blanks + L"12.5\u00B0", Gives(12.5)},
      {L"", {0, 0.0}},
  };
  for (const FreeFormCase& row : cases) {
    CLumAnything text((CString(row.text.c_str())));
    CLumDouble result(kPrevious);
    const int code = result.Val(text, false);
    EXPECT_EQ((Outcome{code, NumberOf(result)}), row.expected) << row.text.size();
  }
}

TEST(FormulaArguments, AByteOfARecordIsAByteOfTheUtf8Form) {
  CLumAnything record(L"\u00B0");
  CLumDouble typeCode(7.0);
  CLumDouble result;
  EXPECT_EQ(result.BinVal(record, typeCode, false), 1);
  EXPECT_EQ(NumberOf(result), 0xB0C2);
}

TEST(FormulaArguments, EightBitTextsServeAsPositionsOfAnyLength) {
  const std::string blanks(100, ' ');
  for (const std::string& text : {std::string("18000"), blanks + "18000", blanks + "18000\xC2\xB0",
                                  std::string("18000\xB0")}) {
    EXPECT_EQ(Evaluate(&CLumType::NMEAPos, text, "W"), Gives(-180.0)) << text;
  }
  EXPECT_EQ(Evaluate(&CLumType::NMEAPos, "18000", "\xC3\x9C"), Gives(180.0));
}

// Kinds that applications derive answer by their own accessors, whatever their bases hold.
struct CSpokenNumber : CLumDouble {
  CSpokenNumber() : CLumDouble(1.0) {}
  int GetDouble(double& value) const override {
    value = 2.0;
    return 1;
  }
};

struct CSpokenInt : CLumInt {
  CSpokenInt() : CLumInt(1) {}
  int GetInt(int& value) const override {
    value = 2;
    return 1;
  }
};

template <typename Base>
struct CSpokenText : Base {
  explicit CSpokenText() { this->SetName(CString(L"1")); }
  int GetName(CStringA& name) const override {
    name = "2";
    return 1;
  }
  int GetName(CString& name) const override {
    name = L"20000";
    return 1;
  }
};

double ValOf(CLumType& argument) {
  CLumDouble result;
  return result.Val(argument, false) != 0 ? NumberOf(result) : kPrevious;
}

double PositionOf(CLumType& argument) {
  CLumDouble result;
  CLumName east(L"E");
  return result.NMEAPos(argument, east) != 0 ? NumberOf(result) : kPrevious;
}

TEST(FormulaArguments, DerivedNumbersAnswerByTheirOwnAccessors) {
  CSpokenNumber number;
  CSpokenInt integer;
  EXPECT_EQ(ValOf(number), 2.0);
  EXPECT_EQ(ValOf(integer), 2.0);
}

TEST(FormulaArguments, DerivedTextsAnswerByTheirOwnAccessors) {
  CSpokenText<CLumIoName> bytes;
  CSpokenText<CLumName> wide;
  CSpokenText<CLumAnything> anything;
  for (CLumType* text : std::initializer_list<CLumType*>{&bytes, &wide, &anything}) {
    EXPECT_EQ(ValOf(*text), 2.0);
    EXPECT_EQ(PositionOf(*text), 200.0);
  }
}

TEST(FormulaArguments, CompoundArithmeticStaysStrict) {
  CLumDouble value(5.0);
  value += CLumInt(4);
  EXPECT_EQ(NumberOf(value), 5.0);
}

TEST(FormulaArguments, AreLeftUnchanged) {
  for (const Operation& operation : kChecked) {
    CLumDouble numbers[] = {0.5, 0.25, 0.75, 0.125};
    CLumType* values[] = {&numbers[0], &numbers[1], &numbers[2], &numbers[3]};
    CLumDouble result;
    operation.call(result, values);
    EXPECT_EQ(NumberOf(numbers[0]), 0.5) << operation.name;
    EXPECT_EQ(NumberOf(numbers[1]), 0.25) << operation.name;
    EXPECT_EQ(NumberOf(numbers[2]), 0.75) << operation.name;
    EXPECT_EQ(NumberOf(numbers[3]), 0.125) << operation.name;
  }
}

}  // namespace
