// Defines the catalogue's constants from the one table in AttributeNames.def.
#include "catalogue/AttributeNames.h"

// Only a platform whose strings the compiler can build defines it.
#ifndef LUM_CONSTINIT_TEXT
#define LUM_CONSTINIT_TEXT
#endif

#define LUM_ATTRIBUTE_NAME(constant, text) LUM_CONSTINIT_TEXT const CString constant(L"" text);
#include "catalogue/AttributeNames.def"
#undef LUM_ATTRIBUTE_NAME

const wchar_t KEY_DIVCHAR = L'.';
const unsigned int MENUBASE_CMDID = 44000;
const unsigned int MENURANGE_CMDID = 999;

namespace {

constexpr AttributeName kNames[] = {
#define LUM_ATTRIBUTE_NAME(constant, text) {L"" #constant, L"" text},
#include "catalogue/AttributeNames.def"
#undef LUM_ATTRIBUTE_NAME
};

}  // namespace

std::span<const AttributeName> AttributeNames() { return kNames; }
