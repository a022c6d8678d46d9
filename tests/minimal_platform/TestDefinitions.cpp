// The definitions of the tests of attribute trees, loaded from a file in memory.
#include "definitions/AttribDefMap.h"
#include "tests/attributes/TreeTesting.h"

void LoadTestDefinitions() {
  MemoryFiles::Write(L"test definitions", kTestDefinitions);
  CAttribDefMap::GetAttribDefMap().LoadDefFile(L"test definitions", false);
}
