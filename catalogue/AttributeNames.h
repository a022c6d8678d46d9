// The catalogue of attribute mnemonics: 612 constants that stand for the keys under which
// applications store and look up attributes, so that each key is spelled in one place. The table
// itself is AttributeNames.def.
//
//     map.SetAttribValue(ATTR_ABOVECOLOR, 255);  // the attribute "AboveColor"
#pragma once

#include <span>

#include "platform/Framework.h"
#include "values/LumAttributesExport.h"

/// The catalogue's constants: `extern const CString ATTR_...` (and four ATTRIB_..., the keys of the
/// attribute trees themselves). With this project's platform they are built by the compiler, so
/// code that runs while modules are loaded sees their texts too; with another one, before the
/// library's other objects. Compared exactly, case included; never changed.
#define LUM_ATTRIBUTE_NAME(constant, text) extern LUM_ATTRIBUTES_API const CString constant;
#include "catalogue/AttributeNames.def"
#undef LUM_ATTRIBUTE_NAME

/// Separates the parts of a composite key.
extern LUM_ATTRIBUTES_API const wchar_t KEY_DIVCHAR;
/// The first command identifier of menus that list attributes, and how many are reserved from there
/// on.
extern LUM_ATTRIBUTES_API const unsigned int MENUBASE_CMDID;
extern LUM_ATTRIBUTES_API const unsigned int MENURANGE_CMDID;

/// One entry of the catalogue: the name of a constant and its text, both with static storage.
struct AttributeName {
  const wchar_t* constant;
  const wchar_t* mnemonic;
};

/// The whole catalogue in alphabetical order of the constants, for tools that list or search it.
/// Valid while the library is loaded; may be called from any thread.
LUM_ATTRIBUTES_API std::span<const AttributeName> AttributeNames();
