// Texts as values of every kind: what is written reads back as the same text, what is refused
// changes nothing, and assignment gives what the accessors of the two kinds give.
#include <gtest/gtest.h>

#include <cstdint>
#include <cwchar>
#include <memory>
#include <utility>
#include <vector>

#include "fuzz/FuzzInput.h"
#include "tests/TextPrinting.h"
#include "tests/values/ValueSamples.h"
#include "values/LumTypeCreator.h"

namespace {

using Value = std::unique_ptr<CLumType>;

/// All of a value that can be seen: both texts and both names.
struct CSeen {
  explicit CSeen(const CLumType& value) : type(value.Type()) {
    hasText = value.GetValueStr(text) != 0;
    hasBytes = value.GetValueStr(bytes) != 0;
    hasName = value.GetName(name) != 0;
  }
  friend bool operator==(const CSeen&, const CSeen&) = default;

  CLumType::LUM_TYPE type;
  bool hasText, hasBytes, hasName;
  CString text, name;
  CStringA bytes;
};

void PrintTo(const CSeen& seen, std::ostream* out) {
  *out << seen.type << " " << testing::PrintToString(seen.text) << " "
       << testing::PrintToString(seen.bytes);
}

bool SetText(CLumType& value, const CString& text, const CStringA& bytes) {
  return CSeen(value).hasBytes ? value.SetValueStr(bytes) : value.SetValueStr(text);
}

void CheckText(CLumType& value, const lum::test::Kind& kind, const CString& text,
               const CStringA& bytes) {
  const CSeen before(value);
  if (!SetText(value, text, bytes)) {
    EXPECT_EQ(CSeen(value), before);
    return;
  }
  const CSeen read(value);
  EXPECT_EQ(CSeen(*Value(value.MakeCopy())), read);
  const Value again = kind.make(1);
  EXPECT_TRUE(SetText(*again, read.text, read.bytes));
  EXPECT_EQ(CSeen(*again), read);
}

// ---- The free-form kind

template <typename T>
void ExpectScan(const CLumType& value, const CString& text, const wchar_t* format) {
  T expected = 77;
  T found = 77;
  const bool isRead = std::swscanf(text.GetString(), format, &expected) == 1;
  EXPECT_EQ(value.Get(found), isRead) << testing::PrintToString(text);
  EXPECT_EQ(found, expected) << testing::PrintToString(text);
}

void CheckScans(const CString& text) {
  const CLumAnything value(text);
  ExpectScan<int>(value, text, L"%d");
  ExpectScan<unsigned int>(value, text, L"%u");
  ExpectScan<std::uint64_t>(value, text, L"%lu");
}

// ---- Typed access

/// Gives `target` what `source` has of the type, if it has it.
template <typename T>
bool Transfer(const CLumType& source, CLumType& target) {
  T value{};
  return source.Get(value) && target.Set(value);
}

bool TransferPair(const CLumType& source, CLumType& target) {
  double first = 0.0;
  double second = 0.0;
  return source.GetDouble2D(first, second) != 0 && target.SetDouble2D(first, second) != 0;
}

bool TransferBytes(const CLumType& source, CLumType& target) {
  CStringA name;
  return source.GetName(name) != 0 && target.SetName(name) != 0;
}

bool TransferText(const CLumType& source, CLumType& target) {
  CString text;
  return source.GetValueStr(text) != 0 && target.SetValueStr(text);
}

using TransferFunction = bool (*)(const CLumType&, CLumType&);

/// How a kind is assigned to: by the accessor of its own type.
TransferFunction AssignmentOf(const CLumType& target) {
  switch (target.Type()) {
    case CLumType::TYPE_INT:
      return Transfer<int>;
    case CLumType::TYPE_UINT:
      return Transfer<unsigned int>;
    case CLumType::TYPE_DOUBLE:
      return Transfer<double>;
    case CLumType::TYPE_BOOL:
      return Transfer<bool>;
    case CLumType::TYPE_FLOAT:
      return Transfer<float>;
    case CLumType::TYPE_ULONGLONG:
      return Transfer<std::uint64_t>;
    case CLumType::TYPE_DOUBLE2D:
      return TransferPair;
    case CLumType::TYPE_DOUBLE3D:
      return Transfer<Point>;
    case CLumType::TYPE_DATAINFO:
      return Transfer<CDataInfo>;
    case CLumType::TYPE_COMPOFFSET:
      return Transfer<CCompOffset>;
    case CLumType::TYPE_NAME:
      return CSeen(target).hasBytes ? TransferBytes : Transfer<CString>;
    case CLumType::TYPE_INTARRAY:
      return Transfer<std::vector<int>>;
    case CLumType::TYPE_DOUBLEARRAY:
      return Transfer<std::vector<double>>;
    case CLumType::TYPE_NAMEARRAY:
      return Transfer<std::vector<CString>>;
    case CLumType::TYPE_ANYTHING:
      return TransferText;
    default:
      return [](const CLumType&, CLumType&) { return false; };
  }
}

void CheckAssignment(const CLumType& source, const CLumType& target) {
  const Value assigned(target.MakeCopy());
  const Value expected(target.MakeCopy());
  AssignmentOf(target)(source, *expected);
  *assigned = source;
  EXPECT_EQ(CSeen(*assigned), CSeen(*expected));
  // To itself it changes nothing.
  const CSeen before(*assigned);
  *assigned = *std::as_const(assigned);
  EXPECT_EQ(CSeen(*assigned), before);
}

/// What a value gives it takes back unchanged.
void CheckOwnAccess(const CLumType& value) {
  const Value copy(value.MakeCopy());
  AssignmentOf(value)(value, *copy);
  EXPECT_EQ(CSeen(*copy), CSeen(value));
}

void CheckArithmetic(const CLumType& source, const CLumType& target) {
  for (const int operation : {0, 1, 2, 3}) {
    const Value value(target.MakeCopy());
    switch (operation) {
      case 0:
        *value += source;
        break;
      case 1:
        *value -= source;
        break;
      case 2:
        *value *= source;
        break;
      default:
        *value /= source;
    }
    EXPECT_EQ(value->Type(), target.Type());
    const Value again(target.MakeCopy());
    const CSeen seen(*value);
    EXPECT_TRUE(SetText(*again, seen.text, seen.bytes) ||
                target.Type() == CLumType::TYPE_UNDEFINED);
  }
}

void CheckFactory(CLumType::LUM_TYPE type, const CString& text) {
  const Value made(LumTypeCreator::MakeLumType(type, text));
  const Value empty(LumTypeCreator::MakeLumType(type));
  ASSERT_EQ(made == nullptr, empty == nullptr);
  if (empty != nullptr) {
    empty->SetValueStr(text);
    EXPECT_EQ(CSeen(*made), CSeen(*empty));
  }
}

}  // namespace

// The kinds of target and source, the target's text up to a line feed, the source's text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  const std::vector<lum::test::Kind>& kinds = lum::test::Kinds();
  const lum::test::Kind& targetKind = kinds[in.Below(kinds.size())];
  const lum::test::Kind& sourceKind = kinds[in.Below(kinds.size())];
  const std::string_view first = in.Line();
  const std::string_view second = in.Rest();
  const Value target = targetKind.make(0);
  const Value source = sourceKind.make(0);
  CheckText(*target, targetKind, lum::fuzz::ToWide(first), lum::fuzz::ToBytes(first));
  CheckText(*source, sourceKind, lum::fuzz::ToWide(second), lum::fuzz::ToBytes(second));
  CheckAssignment(*source, *target);
  CheckOwnAccess(*source);
  CheckArithmetic(*source, *target);
  CheckFactory(sourceKind.type, lum::fuzz::ToWide(second));
  CheckScans(lum::fuzz::ToWide(second));
  return 0;
}
