// The marks of checksum lines.
#include "platform/ChecksumKeys.h"

#include <gtest/gtest.h>

#include "platform/FrameworkString.h"

TEST(ChecksumKeys, AreTwoDifferentTexts) {
  EXPECT_STREQ(checksumKeys[0], L"@@CHECKSUM=");
  EXPECT_STREQ(checksumKeys[1], L"##CRC32=");
}

TEST(ChecksumKeys, DoNotStandInOrdinaryLines) {
  for (const wchar_t* line : {L"DEPTH_LIMIT,17,Depth limit,103,2,,12.5", L"@DEPTH_LIMIT,0,100,0.5",
                              L"CHECKSUM,5,Checksum of the file,101,1,,0", L"@CHECKSUM,1,2",
                              L"CRC32,6,CRC32=on,501,1,,#CRC32=", L"// a comment"}) {
    for (const wchar_t* key : checksumKeys) {
      EXPECT_EQ(CString(line).Find(key), -1) << CStringA(line).GetString();
    }
  }
}
