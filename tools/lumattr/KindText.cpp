#include "tools/lumattr/KindText.h"

#include <memory>

#include "definitions/AttribDefMap.h"
#include "tools/lumattr/Text.h"
#include "values/LumTypeCreator.h"

namespace lum::tool {
namespace {

constexpr const char* kNotReadable = "it cannot be read as one";

/// How many items the text of a kind has: -1 for any number, 0 for kinds whose text is not a list.
int ItemCountOf(int kind) {
  switch (kind) {
    case CLumType::TYPE_BOOL:
    case CLumType::TYPE_INT:
    case CLumType::TYPE_UINT:
    case CLumType::TYPE_ULONGLONG:
    case CLumType::TYPE_FLOAT:
    case CLumType::TYPE_DOUBLE:
      return 1;
    case CLumType::TYPE_DOUBLE2D:
      return 2;
    case CLumType::TYPE_DOUBLE3D:
      return 3;
    case CLumType::TYPE_DATAINFO:
      return 6;
    case CLumType::TYPE_COMPOFFSET:
      return 10;
    case CLumType::TYPE_INTARRAY:
    case CLumType::TYPE_DOUBLEARRAY:
      return -1;
    default:
      return 0;
  }
}

template <typename Number>
bool ReadsFirst(const CLumString& items) {
  Number number{};
  return items.GetItem(0, number);
}

/// Whether the first item is one number in the range of a scalar kind; true for other kinds. The
/// 64-bit kind itself also takes the beginning of a longer text.
bool ReadsScalar(int kind, const CLumString& items) {
  switch (kind) {
    case CLumType::TYPE_BOOL:
      return ReadsFirst<bool>(items);
    case CLumType::TYPE_INT:
      return ReadsFirst<int>(items);
    case CLumType::TYPE_UINT:
      return ReadsFirst<unsigned int>(items);
    case CLumType::TYPE_ULONGLONG:
      return ReadsFirst<std::uint64_t>(items);
    case CLumType::TYPE_FLOAT:
      return ReadsFirst<float>(items);
    case CLumType::TYPE_DOUBLE:
      return ReadsFirst<double>(items);
    default:
      return true;
  }
}

template <typename Number>
std::optional<std::string> WhyItemsRefused(const CLumString& items, const char* what) {
  for (int i = 0; i < items.Count(); ++i) {
    Number number{};
    if (!items.GetItem(i, number)) {
      CString item;
      items.GetItem(i, item);
      return "item " + std::to_string(i + 1) + ", " + Quoted(item) + ", is no " + what;
    }
  }
  return std::nullopt;
}

/// List kinds stop reading at the first item that is no number and call that a success.
std::optional<std::string> WhyListRefuses(int kind, const CLumString& items) {
  return kind == CLumType::TYPE_INTARRAY ? WhyItemsRefused<int>(items, "int")
                                         : WhyItemsRefused<double>(items, "double");
}

std::string WrongCount(int expected, int found) {
  return "it takes " + std::to_string(expected) + (expected == 1 ? " item" : " items") + ", not " +
         std::to_string(found);
}

}  // namespace

std::string KindName(int kind) {
  const wchar_t* name = LumTypeCreator::KindName(kind);
  return name != nullptr ? ToUtf8(name) : std::to_string(kind);
}

CLumType::LUM_TYPE KindOfName(const CString& name) {
  if (!name.IsEmpty() && name[0] == L'@') {
    return CLumType::TYPE_NAME;
  }
  const CAttribDefRec* definition = CAttribDefMap::GetAttribDefMap().GetAttribDefRec(name);
  const CLumType* value = definition != nullptr ? definition->DefaultValue() : nullptr;
  return value != nullptr ? value->Type() : CLumType::TYPE_ANYTHING;
}

std::optional<std::string> WhyKindRefuses(int kind, const CString& text) {
  if (kind == CLumType::TYPE_ANYTHING) {
    return std::nullopt;
  }
  const int expected = ItemCountOf(kind);
  if (expected != 0) {
    const CLumString items(text, L',', true, false);
    if (expected < 0) {
      return WhyListRefuses(kind, items);
    }
    if (items.Count() != expected) {
      return WrongCount(expected, items.Count());
    }
    if (!ReadsScalar(kind, items)) {
      return kNotReadable;
    }
  }
  const std::unique_ptr<CLumType> value(LumTypeCreator::MakeLumType(kind));
  if (value == nullptr || !value->SetValueStr(text)) {
    return kNotReadable;
  }
  return std::nullopt;
}

std::optional<std::string> WhyFileRefuses(const CString& text) {
  if (text.FindOneOf(L"\r\n") >= 0) {
    return "a file cannot hold line breaks in a value";
  }
  if (text.Find(L'\0') >= 0) {
    return "a file cannot hold NUL characters in a value";
  }
  CString trimmed = text;
  if (trimmed.TrimLeft() != text) {
    return "readers drop blanks at the beginning of a value";
  }
  return std::nullopt;
}

}  // namespace lum::tool
