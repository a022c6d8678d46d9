// Text forms in a process whose locale writes numbers with a decimal comma.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <string>

#include "tests/CommaLocale.h"
#include "tests/values/ValueSamples.h"

namespace {

using lum::test::kCommaLocale;
using lum::test::TextOf;

class TextLocale : public testing::Test {
 protected:
  void SetUp() override {
    if (std::setlocale(LC_ALL, kCommaLocale) == nullptr) {
      GTEST_SKIP() << "the locale " << kCommaLocale << " is not installed";
    }
    char probe[8];
    std::snprintf(probe, sizeof probe, "%.1f", 0.5);
    ASSERT_STREQ(probe, "0,5");
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(TextLocale, TextsAreWrittenWithAPoint) {
  EXPECT_EQ(TextOf(CLumFloat(1234.5F)), "1234.500000");
  EXPECT_EQ(TextOf(CLumDouble(1234567.5)), "1234567.500000");
  EXPECT_EQ(TextOf(CLumDouble2D(0.5, -0.5)), "0.500000,-0.500000");
  EXPECT_EQ(TextOf(CLumDouble3D(0.5, -0.5, 1.5)), "0.500000,-0.500000,1.500000");
  EXPECT_EQ(TextOf(CLumDoubleArray(std::vector<double>{0.5, 1000.25})), "0.5,1000.25");
  EXPECT_EQ(TextOf(CLumCompOffset(lum::test::MakeOffset(1))),
            "1,4294967295,Bow,1,65535,4,5,1.500000,-2.250000,1000000.000000");
  EXPECT_EQ(TextOf(CLumInt(1234567)), "1234567");
}

TEST_F(TextLocale, TextsReadBackTheSame) {
  for (const auto& kind : lum::test::Kinds()) {
    const auto source = kind.make(1);
    const auto value = kind.make(0);
    CString text;
    if (source->GetValueStr(text) != 0) {
      EXPECT_TRUE(value->SetValueStr(text)) << kind.name;
      EXPECT_EQ(TextOf(*value), TextOf(*source)) << kind.name;
    }
  }
}

TEST_F(TextLocale, FreeFormTextIsScannedWithAPoint) {
  const CLumAnything value(L"1.5");
  double number = 7.0;
  EXPECT_EQ(value.GetDouble(number), 1);
  EXPECT_EQ(number, 1.5);
  float single = 7.0F;
  EXPECT_EQ(value.GetFloat(single), 1);
  EXPECT_EQ(single, 1.5F);
  EXPECT_EQ(CLumAnything(L"2,5").GetDouble(number), 1);
  EXPECT_EQ(number, 2.0);
}

}  // namespace
