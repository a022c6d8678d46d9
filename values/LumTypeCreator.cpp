// The one table of kinds: making by code, listing and naming all walk it.
#include "values/LumTypeCreator.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>

namespace {

// Calls `make`, which returns a new value; null when there is no room for it or its text.
template <typename Make>
CLumType* NullWithoutRoom(const Make& make) noexcept {
  try {
    return make();
  } catch (const std::bad_alloc&) {
    return nullptr;
  } catch (const std::length_error&) {
    return nullptr;
  }
}

template <typename Kind, typename... Arguments>
CLumType* New(Arguments&&... arguments) {
  return NullWithoutRoom([&] { return new Kind(std::forward<Arguments>(arguments)...); });
}

// Ascending by code.
constexpr LumTypeKind kKinds[] = {
    {CLumType::TYPE_UNDEFINED, L"undefined", [] { return New<CLumUndefined>(); }},
    {CLumType::TYPE_INT, L"int", [] { return New<CLumInt>(0); }},
    {CLumType::TYPE_UINT, L"uint", [] { return New<CLumUInt>(0U); }},
    {CLumType::TYPE_DOUBLE, L"double", [] { return New<CLumDouble>(0.0); }},
    {CLumType::TYPE_BOOL, L"bool", [] { return New<CLumBool>(false); }},
    {CLumType::TYPE_FLOAT, L"float", [] { return New<CLumFloat>(0.0F); }},
    {CLumType::TYPE_ULONGLONG, L"uint64", [] { return New<CLumULongLong>(std::uint64_t{0}); }},
    {CLumType::TYPE_DOUBLE2D, L"double2d", [] { return New<CLumDouble2D>(); }},
    {CLumType::TYPE_DOUBLE3D, L"double3d", [] { return New<CLumDouble3D>(); }},
    {CLumType::TYPE_DATAINFO, L"datainfo", [] { return New<CLumDataInfo>(); }},
    {CLumType::TYPE_COMPOFFSET, L"compoffset", [] { return New<CLumCompOffset>(); }},
    {CLumType::TYPE_NAME, L"name", [] { return New<CLumName>(); }},
    {CLumType::TYPE_INTARRAY, L"intarray", [] { return New<CLumIntArray>(); }},
    {CLumType::TYPE_DOUBLEARRAY, L"doublearray", [] { return New<CLumDoubleArray>(); }},
    {CLumType::TYPE_NAMEARRAY, L"namearray", [] { return New<CLumNameArray>(); }},
    {CLumType::TYPE_ANYTHING, L"anything", nullptr},
};

constexpr bool IsBelow(const LumTypeKind& kind, int type) { return kind.type < type; }

static_assert(std::is_sorted(std::begin(kKinds), std::end(kKinds),
                             [](const LumTypeKind& a, const LumTypeKind& b) {
                               return IsBelow(a, b.type);
                             }));

// The row of a code, or null.
const LumTypeKind* FindKind(int type) {
  const LumTypeKind* kind = std::lower_bound(std::begin(kKinds), std::end(kKinds), type, IsBelow);
  return kind != std::end(kKinds) && kind->type == type ? kind : nullptr;
}

}  // namespace

CLumType* LumTypeCreator::MakeLumType(int type) {
  const LumTypeKind* kind = FindKind(type);
  return kind != nullptr && kind->make != nullptr ? kind->make() : nullptr;
}

CLumType* LumTypeCreator::MakeLumType(int type, const CString& text) {
  return NullWithoutRoom([&]() -> CLumType* {
    std::unique_ptr<CLumType> value(MakeLumType(type));
    if (value != nullptr) {
      value->SetValueStr(text);
    }
    return value.release();
  });
}

CLumType* LumTypeCreator::MakeValue(bool value) { return New<CLumBool>(value); }

CLumType* LumTypeCreator::MakeValue(int value) { return New<CLumInt>(value); }

CLumType* LumTypeCreator::MakeValue(unsigned int value) { return New<CLumUInt>(value); }

CLumType* LumTypeCreator::MakeValue(std::uint64_t value) { return New<CLumULongLong>(value); }

CLumType* LumTypeCreator::MakeValue(double value) { return New<CLumDouble>(value); }

CLumType* LumTypeCreator::MakeValue(const CString& name) { return New<CLumName>(name); }

CLumType* LumTypeCreator::MakeValue(const wchar_t* name) {
  return NullWithoutRoom([&] { return new CLumName(CString(name)); });
}

CLumType* LumTypeCreator::MakeValue(const char* name) {
  return NullWithoutRoom([&] { return new CLumName(CString(name)); });
}

CLumType* LumTypeCreator::MakeValue(const CDataInfo& value) { return New<CLumDataInfo>(value); }

CLumType* LumTypeCreator::MakeValue(const CCompOffset& value) { return New<CLumCompOffset>(value); }

CLumType* LumTypeCreator::MakeValue(const std::pair<double, double>& value) {
  return New<CLumDouble2D>(value.first, value.second);
}

CLumType* LumTypeCreator::MakeValue(const Point& value) { return New<CLumDouble3D>(value); }

CLumType* LumTypeCreator::MakeValue(const std::vector<int>& values) {
  return New<CLumIntArray>(values);
}

CLumType* LumTypeCreator::MakeValue(std::vector<int>&& values) {
  return New<CLumIntArray>(std::move(values));
}

CLumType* LumTypeCreator::MakeValue(const std::vector<double>& values) {
  return New<CLumDoubleArray>(values);
}

CLumType* LumTypeCreator::MakeValue(std::vector<double>&& values) {
  return New<CLumDoubleArray>(std::move(values));
}

CLumType* LumTypeCreator::MakeValue(const std::vector<CString>& names) {
  return New<CLumNameArray>(names);
}

CLumType* LumTypeCreator::MakeValue(std::vector<CString>&& names) {
  return New<CLumNameArray>(std::move(names));
}

std::span<const LumTypeKind> LumTypeCreator::Kinds() { return kKinds; }

const wchar_t* LumTypeCreator::KindName(int type) {
  const LumTypeKind* kind = FindKind(type);
  return kind != nullptr ? kind->name : nullptr;
}
