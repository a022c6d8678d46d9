// Defines the catalogue's constants from the one table in AttributeNames.def.
#include "catalogue/AttributeNames.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "values/SharedObject.h"

// What the platform's strings can do: be built and taken down by the compiler, be built by it, or
// neither.
#if defined(LUM_CONSTEXPR_TEXT)
#define LUM_CATALOGUE_TEXT LUM_CONSTEXPR_TEXT
#elif defined(LUM_CONSTINIT_TEXT)
#define LUM_CATALOGUE_TEXT LUM_CONSTINIT_TEXT
#else
#define LUM_CATALOGUE_TEXT
#endif

#define LUM_ATTRIBUTE_NAME(constant, text) LUM_CATALOGUE_TEXT const CString constant(L"" text);
#include "catalogue/AttributeNames.def"
#undef LUM_ATTRIBUTE_NAME

const wchar_t KEY_DIVCHAR = L'.';
const unsigned int MENUBASE_CMDID = 44000;
const unsigned int MENURANGE_CMDID = 999;

namespace {

#define LUM_ATTRIBUTE_NAME(constant, text) +1
constexpr std::size_t kNameCount = 0
#include "catalogue/AttributeNames.def"
    ;
#undef LUM_ATTRIBUTE_NAME

// The texts of the whole table, each with a NUL behind it: a constant's name, then its mnemonic.
// Had the library a table of pointers to them, loading it would have to set every one.
#define LUM_ATTRIBUTE_NAME(constant, text) L"" #constant L"\0" text L"\0"
constexpr wchar_t kNameTexts[] =
#include "catalogue/AttributeNames.def"
    ;
#undef LUM_ATTRIBUTE_NAME

const wchar_t* TakeText(const wchar_t*& next) {
  const std::wstring_view text(next);
  next += text.size() + 1;
  return text.data();
}

struct NameTable {
  NameTable() {
    const wchar_t* next = kNameTexts;
    for (AttributeName& name : names) {
      name.constant = TakeText(next);
      name.mnemonic = TakeText(next);
    }
  }

  std::array<AttributeName, kNameCount> names;
};

constinit lum::detail::CSharedObject<NameTable> g_names;

}  // namespace

std::span<const AttributeName> AttributeNames() { return g_names.Get().names; }
