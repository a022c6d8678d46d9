// The sizes and alignments of the public types, the same on Linux and on Windows (MinGW-w64).
// Programs built earlier reserve the space for them and find their members by these.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "catalogue/AttributeNames.h"
#include "definitions/AttribDefMap.h"
#include "platform/Error.h"
#include "platform/ExTime.h"
#include "platform/FileObject.h"
#include "platform/Framework.h"
#include "platform/LumBase.h"
#include "platform/Tokenizer.h"
#include "platform/Translator.h"
#include "tests/interface/LayoutTesting.h"
#include "values/LumType.h"
#include "values/LumTypeCreator.h"

namespace {

using lum::test::ExpectReleasedLayouts;
using lum::test::TypeLayout;

TEST(Layout, TypesOfThePlatformKeepTheirSizes) {
  const TypeLayout kTypes[] = {
      LUM_LAYOUT(CString, 16, 8),
      LUM_LAYOUT(CStringA, 16, 8),
      LUM_LAYOUT(CStringArray, 24, 8),
      LUM_LAYOUT(CDataId, 8, 2),
      LUM_LAYOUT(CDataInfo, 12, 2),
      LUM_LAYOUT(CCompOffset, 56, 8),
      LUM_LAYOUT(Point, 24, 8),
      LUM_LAYOUT(Error, 24, 8),
      LUM_LAYOUT(FileError, 48, 8),
      LUM_LAYOUT(FileError::CODE, 4, 4),
      LUM_LAYOUT(AFX_EXTENSION_MODULE, 16, 8),
      LUM_LAYOUT(CDynLinkLibrary, 16, 8),
      LUM_LAYOUT(FobjSection, 16, 8),
      LUM_LAYOUT(TextFileEncoding, 4, 4),
      LUM_LAYOUT(FileObjectLine::Kind, 4, 4),
      LUM_LAYOUT(FileObjectLine, 88, 8),
      LUM_LAYOUT(FileObject, 16, 8),
      LUM_LAYOUT(CStdioFile, 8, 8),
      LUM_LAYOUT(CStdioFile::OpenFlags, 4, 4),
      LUM_LAYOUT(CLumString, 48, 8),
      LUM_LAYOUT(Translator, 8, 8),
      LUM_LAYOUT(CLumUnitCnv, 16, 8),
      LUM_LAYOUT(CExTime, 1, 1),
  };
  ExpectReleasedLayouts(kTypes);
}

TEST(Layout, ValuesKeepTheirSizes) {
  const TypeLayout kTypes[] = {
      LUM_LAYOUT(CLumType, 8, 8),           LUM_LAYOUT(CLumUndefined, 8, 8),
      LUM_LAYOUT(CLumBool, 16, 8),          LUM_LAYOUT(CLumInt, 16, 8),
      LUM_LAYOUT(CLumUInt, 16, 8),          LUM_LAYOUT(CLumULongLong, 16, 8),
      LUM_LAYOUT(CLumFloat, 16, 8),         LUM_LAYOUT(CLumDouble, 16, 8),
      LUM_LAYOUT(CLumDouble2D, 24, 8),      LUM_LAYOUT(CLumDouble3D, 32, 8),
      LUM_LAYOUT(CLumDataInfo, 24, 8),      LUM_LAYOUT(CLumCompOffset, 64, 8),
      LUM_LAYOUT(CLumName, 24, 8),          LUM_LAYOUT(CLumIoName, 24, 8),
      LUM_LAYOUT(CLumIntArray, 32, 8),      LUM_LAYOUT(CLumDoubleArray, 32, 8),
      LUM_LAYOUT(CLumNameArray, 32, 8),     LUM_LAYOUT(CLumAnything, 24, 8),
      LUM_LAYOUT(CLumType::LUM_TYPE, 4, 4), LUM_LAYOUT(LumTypeKind, 24, 8),
  };
  ExpectReleasedLayouts(kTypes);
}

TEST(Layout, AttributesAndDefinitionsKeepTheirSizes) {
  const TypeLayout kTypes[] = {
      LUM_LAYOUT(CAttributeRec, 48, 8),
      LUM_LAYOUT(CAttributeMap, 56, 8),
      LUM_LAYOUT(CAttributeRec::FLAGS, 4, 4),
      LUM_LAYOUT(CAttributeMap::OVERLOAD_FLAGS, 4, 4),
      LUM_LAYOUT(CAttribDefRec, 96, 8),
      LUM_LAYOUT(CAttribDefMap, 168, 8),
      LUM_LAYOUT(CAttribDefMap::FillFunction, 8, 8),
      LUM_LAYOUT(AttributeName, 16, 8),
  };
  ExpectReleasedLayouts(kTypes);
}

}  // namespace
