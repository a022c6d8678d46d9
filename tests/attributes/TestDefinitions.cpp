// The definitions of the tests, loaded from a file on disk.
#include "definitions/AttribDefMap.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"

void LoadTestDefinitions() {
  const CTemporaryFolder folder;
  const auto path = folder.File("definitions.txt");
  WriteBytes(path, kTestDefinitions);
  CAttribDefMap::GetAttribDefMap().LoadDefFile(PathText(path), false);
}
