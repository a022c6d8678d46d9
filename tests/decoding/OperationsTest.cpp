// The table of operations against the declarations of CLumType, and its calls against a kind of
// value that remembers how it was called.
#include "decoding/Operations.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <vector>

#include "values/LumType.h"

namespace lum::decoding {
namespace {

// "CanVal(frame typeCode startByte) lenient"
std::string Signature(const Operation& operation) {
  std::string text(operation.name);
  text += '(';
  for (const OperationArgument& argument : operation.Arguments()) {
    text += text.back() == '(' ? "" : " ";
    text += argument.name;
  }
  return text + (operation.takesLenient ? ") lenient" : ")");
}

// The operations as the header declares them, top down.
std::vector<std::string> DeclaredSignatures() {
  std::ifstream file(LUM_VALUE_BASE_HEADER);
  const std::string header{std::istreambuf_iterator<char>(file), {}};
  const std::regex declaration(R"(virtual int (\w+)\(CLumType& ([^)]*?)(, bool lenient)?\);)");
  const std::regex separator(R"(,\s+CLumType& )");
  std::vector<std::string> signatures;
  for (std::sregex_iterator match(header.begin(), header.end(), declaration), end; match != end;
       ++match) {
    signatures.push_back((*match)[1].str() + '(' +
                         std::regex_replace((*match)[2].str(), separator, " ") +
                         ((*match)[3].matched ? ") lenient" : ")"));
  }
  return signatures;
}

TEST(Operations, AreThoseOfTheValuesInTheOrderOfTheirSlots) {
  std::vector<std::string> signatures;
  for (const Operation& operation : Operations()) {
    signatures.push_back(Signature(operation));
  }
  EXPECT_EQ(signatures, DeclaredSignatures());
  EXPECT_EQ(signatures.size(), 43U);
}

struct RecordedCall {
  std::string name;
  std::vector<const CLumType*> arguments;
  bool lenient = false;
};

constexpr int kRecordedCode = 17;

#define ONE(name) \
  int name(CLumType& a) override { return Record(#name, {&a}); }
#define TWO(name) \
  int name(CLumType& a, CLumType& b) override { return Record(#name, {&a, &b}); }
#define THREE(name) \
  int name(CLumType& a, CLumType& b, CLumType& c) override { return Record(#name, {&a, &b, &c}); }

class CCallRecorder : public CLumType {
 public:
  using CLumType::operator=;
  CLumType* MakeCopy() const override { return new CCallRecorder(*this); }

  THREE(ClipValue)
  THREE(GateValue)
  TWO(NMEAPos)
  int Val(CLumType& a, bool lenient) override { return Record("Val", {&a}, lenient); }
  ONE(TimeConv)
  ONE(Inverse)
  ONE(ExpandTime)
  TWO(ExpandTimeEx)
  ONE(HmsToMsec)
  ONE(UtcToLocal)
  ONE(LocalToUtc)
  ONE(YyToCcyy)
  int CYMDMsecToMsec(CLumType& a, CLumType& b, CLumType& c, CLumType& d) override {
    return Record("CYMDMsecToMsec", {&a, &b, &c, &d});
  }
  TWO(Pow1D)
  ONE(Sqr1D)
  ONE(Log1D)
  ONE(Neg)
  ONE(Int)
  ONE(ValToStr)
  TWO(ValToMyStr)
  ONE(IsNull)
  THREE(IsEqual)
  TWO(IsGreater)
  TWO(IsLess)
  ONE(Sign)
  int BinVal(CLumType& a, CLumType& b, bool lenient) override {
    return Record("BinVal", {&a, &b}, lenient);
  }
  int CanVal(CLumType& a, CLumType& b, CLumType& c, bool lenient) override {
    return Record("CanVal", {&a, &b, &c}, lenient);
  }
  TWO(AdamVal)
  TWO(CheckInValid)
  int J1939Val(CLumType& a, CLumType& b, CLumType& c, bool lenient) override {
    return Record("J1939Val", {&a, &b, &c}, lenient);
  }
  int J1939BitsVal(CLumType& a, CLumType& b, CLumType& c, CLumType& d, bool lenient) override {
    return Record("J1939BitsVal", {&a, &b, &c, &d}, lenient);
  }
  TWO(BitVal)
  TWO(FromEulerRoll)
  ONE(OutString)
  THREE(FormatGeogsDMS)
  ONE(Sin)
  ONE(Cos)
  ONE(Asin)
  ONE(Acos)
  TWO(Bearing)
  TWO(Modulo)
  THREE(ValueInRange)
  THREE(SelectValue)

  const RecordedCall& Last() const { return m_last; }

 private:
  int Record(const char* name, std::vector<const CLumType*> arguments, bool lenient = false) {
    m_last = {name, std::move(arguments), lenient};
    return kRecordedCode;
  }

  RecordedCall m_last;
};

#undef ONE
#undef TWO
#undef THREE

using Values = std::array<CLumDouble, Operation::kMaxArguments>;

// As many of the values as the operation takes.
std::vector<CLumType*> ArgumentsFor(const Operation& operation, Values& values) {
  std::vector<CLumType*> arguments;
  for (std::size_t i = 0; i < operation.argumentCount; ++i) {
    arguments.push_back(&values[i]);
  }
  return arguments;
}

TEST(Operations, CallTheOneTheyNameWithTheArgumentsInOrder) {
  Values values;
  for (const Operation& operation : Operations()) {
    const std::vector<CLumType*> arguments = ArgumentsFor(operation, values);
    for (const bool lenient : {false, true}) {
      SCOPED_TRACE(operation.name);
      CCallRecorder recorder;
      EXPECT_EQ(operation.call(recorder, arguments, lenient), kRecordedCode);
      EXPECT_EQ(recorder.Last().name, operation.name);
      EXPECT_EQ(recorder.Last().arguments,
                std::vector<const CLumType*>(arguments.begin(), arguments.end()));
      EXPECT_EQ(recorder.Last().lenient, lenient && operation.takesLenient);
    }
  }
}

TEST(Operations, ComputeWhatADirectCallDoes) {
  CLumIoName frame(CStringA("98FEF1008FFFFFFFFFFFFFFFF"));
  CLumDouble code(7.0);
  CLumDouble start(0.0);
  CLumDouble direct;
  CLumDouble called;
  const std::vector<CLumType*> arguments = {&frame, &code, &start};
  EXPECT_EQ(direct.CanVal(frame, code, start, false), 1);
  EXPECT_EQ(FindOperation("CanVal")->call(called, arguments, false), 1);
  double expected = 0.0;
  double number = 0.0;
  EXPECT_TRUE(direct.Get(expected));
  EXPECT_TRUE(called.Get(number));
  EXPECT_EQ(expected, 65535.0);
  EXPECT_EQ(number, expected);
}

TEST(Operations, AreUnsupportedWhereTheWorkingKindOfFormulasHasNone) {
  std::set<std::string_view> unsupported;
  for (const Operation& operation : Operations()) {
    EXPECT_FALSE(operation.result.empty()) << operation.name;
    if (!operation.isSupported) {
      unsupported.insert(operation.name);
      Values values;
      CLumDouble result(5.0);
      EXPECT_EQ(operation.call(result, ArgumentsFor(operation, values), true), 0) << operation.name;
    }
  }
  EXPECT_EQ(unsupported,
            (std::set<std::string_view>{"ValToStr", "ValToMyStr", "OutString", "FormatGeogsDMS"}));
}

TEST(Operations, MarkThoseThatWriteIntoTheirArgument) {
  for (const Operation& operation : Operations()) {
    Values values;
    values.fill(2.0);
    CLumDouble result;
    operation.call(result, ArgumentsFor(operation, values), true);
    bool isChanged = false;
    for (const CLumDouble& value : values) {
      double number = 0.0;
      value.GetDouble(number);
      isChanged = isChanged || number != 2.0;
    }
    EXPECT_EQ(operation.changesArgument, isChanged) << operation.name;
  }
}

TEST(Operations, TakeANumberForATextWhereOneIsWanted) {
  for (const Operation& operation : Operations()) {
    for (const OperationArgument& argument : operation.Arguments()) {
      EXPECT_EQ(argument.takesNumber, operation.name == "Val") << operation.name;
    }
  }
}

TEST(Operations, AreFoundByTheirExactName) {
  EXPECT_EQ(FindOperation("Sin")->name, "Sin");
  EXPECT_EQ(FindOperation("J1939Val")->name, "J1939Val");
  for (const char* name : {"", "sin", "Sin ", "Tan"}) {
    EXPECT_EQ(FindOperation(name), nullptr) << name;
  }
}

TEST(Operations, ListTheirArgumentsWithTheFormOfTexts) {
  EXPECT_EQ(ArgumentsText(*FindOperation("CanVal")), "frame:text typeCode startByte");
  EXPECT_EQ(ArgumentsText(*FindOperation("Neg")), "value:vector");
  EXPECT_EQ(ArgumentsText(*FindOperation("Sin")), "degrees");
}

}  // namespace
}  // namespace lum::decoding
