// The typical path of an application: load a definition file, create an attribute by its mnemonic,
// set its value, save the tree into a configuration file and load it back.
//
// Usage: typical_path DEFINITIONS OUTPUT
#include <cstdlib>
#include <iostream>

#include "attributes/AttributeMap.h"
#include "catalogue/AttributeNames.h"
#include "definitions/AttribDefMap.h"
#include "platform/LumBase.h"
#include "platform/TextEncoding.h"

namespace {

const CString kSection(L"Display");

int Fail(const char* what) {
  std::cerr << "typical_path: " << what << "\n";
  return EXIT_FAILURE;
}

void Print(const CAttributeMap& tree) {
  for (int pos = 0; pos < tree.Count(); ++pos) {
    const CAttributeMap& child = tree[pos];
    CString text;
    child.Value().GetValueStr(text);
    std::cout << "  " << WideToUtf8(child.Mnemonic()).GetString() << " = "
              << WideToUtf8(text).GetString() << "\n";
  }
}

// A tree of format version 2, with one attribute made from its definition's default value.
bool BuildTree(CAttributeMap& tree) {
  tree.Add(ATTRIB_VERSION_KEY, CLumInt(2), 0);
  if (tree.AppendNew(ATTR_ABOVECOLOR) == nullptr || tree.AppendNew(ATTR_MAXDEPTH) == nullptr) {
    return false;
  }
  return tree.SetAttribValue(ATTR_MAXDEPTH, 27.5, true, CAttributeRec::FLAG_EDITABLE);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    return Fail("give a definition file and a file to write");
  }
  const CString definitions{argv[1]};
  const CString output{argv[2]};

  if (!CAttribDefMap::GetAttribDefMap().LoadDefFile(definitions, true)) {
    return Fail("the definition file could not be loaded");
  }

  CAttributeMap tree;
  if (!BuildTree(tree)) {
    return Fail("the definition file lacks an attribute that this example uses");
  }
  std::cout << "In memory:\n";
  Print(tree);

  FileObject file;
  if (!SaveAttributes(tree, file, kSection) || !file.Save(output)) {
    return Fail("the configuration could not be saved");
  }

  FileObject reread;
  CAttributeMap loaded;
  if (!reread.Load(output) || !LoadAttributes(loaded, reread, kSection, false)) {
    return Fail("the configuration could not be loaded");
  }
  std::cout << "Loaded back:\n";
  Print(loaded);

  CAttributeMap differences;
  const bool differs = tree.Compare(loaded, differences,
                                    CAttributeMap::COMPARE_VALUES | CAttributeMap::COMPARE_ADDED |
                                        CAttributeMap::COMPARE_REMOVED);
  std::cout << (differs ? "The trees differ.\n" : "The trees are equal.\n");
  return differs ? EXIT_FAILURE : EXIT_SUCCESS;
}
