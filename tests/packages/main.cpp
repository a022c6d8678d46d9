// Uses a bit of each part: a name of the catalogue, a tree, a value and the platform's strings.
// Prints "AboveColor = 37.500000, LumAttributes 5.5.1.0"; scripts/check-packages compares it.
#include <iostream>

#include "attributes/AttributeMap.h"
#include "catalogue/AttributeNames.h"
#include "catalogue/LumAttributes.h"
#include "platform/TextEncoding.h"
#include "values/LumType.h"

int main() {
  CAttributeMap tree;
  tree.AppendNew(ATTR_ABOVECOLOR, CLumDouble(37.5));
  CString text;
  tree.FindValue(L"AboveColor").GetValueStr(text);
  std::cout << WideToUtf8(ATTR_ABOVECOLOR).GetString() << " = " << WideToUtf8(text).GetString()
            << ", LumAttributes " << LumAttributesVersion() << "\n";
  return LumAttributesAttached() ? 0 : 1;
}
