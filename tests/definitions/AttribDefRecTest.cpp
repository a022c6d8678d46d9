// One definition: its fields, and that its default value is its own.
#include "definitions/AttribDefRec.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "tests/TextPrinting.h"

namespace {

CAttribDefRec LoadedRecord() {
  CLumDouble value(12.5);
  CAttribDefRec record;
  record.LoadRec(L"Height", 17, L"Height of it", CLumType::TYPE_DOUBLE, 2, L"height.bmp", &value);
  record.SetCtlAttribs(L"0,100,0.5");
  return record;
}

void ExpectLoaded(const CAttribDefRec& record) {
  EXPECT_EQ(record.Mnemonic(), CString(L"Height"));
  EXPECT_EQ(record.Id(), 17);
  EXPECT_EQ(record.Name(), CString(L"Height of it"));
  EXPECT_EQ(record.Type(), 103u);
  EXPECT_EQ(record.ControlType(), 2u);
  EXPECT_EQ(record.BitmapFile(), CString(L"height.bmp"));
  ASSERT_NE(record.DefaultValue(), nullptr);
  double value = -1.0;
  EXPECT_EQ(record.DefaultValue()->GetDouble(value), 1);
  EXPECT_EQ(value, 12.5);
  CString text(L"untouched");
  record.GetCtlAttribs(text);
  EXPECT_EQ(text, CString(L"0,100,0.5"));
}

/// Counts its objects, so that a leak or a second destruction shows without a sanitizer too.
struct CountedValue : CLumInt {
  explicit CountedValue(int value) : CLumInt(value) { ++alive; }
  CountedValue(const CountedValue& other) : CLumInt(other) { ++alive; }
  ~CountedValue() override { --alive; }
  CountedValue* MakeCopy() const override { return new CountedValue(*this); }

  static inline int alive = 0;
};

TEST(AttribDefRec, StartsEmpty) {
  const CAttribDefRec record;
  EXPECT_TRUE(record.Mnemonic().IsEmpty());
  EXPECT_EQ(record.Id(), 0);
  EXPECT_TRUE(record.Name().IsEmpty());
  EXPECT_EQ(record.Type(), 0u);
  EXPECT_EQ(record.ControlType(), 0u);
  EXPECT_TRUE(record.BitmapFile().IsEmpty());
  EXPECT_EQ(record.DefaultValue(), nullptr);
  CString text(L"untouched");
  record.GetCtlAttribs(text);
  EXPECT_TRUE(text.IsEmpty());
}

TEST(AttribDefRec, LoadRecSetsEveryField) { ExpectLoaded(LoadedRecord()); }

TEST(AttribDefRec, LoadRecLeavesTheValueToTheCaller) {
  auto value = std::make_unique<CountedValue>(5);
  CAttribDefRec record;
  record.LoadRec(L"A", 1, L"", 101, 0, L"", value.get());
  EXPECT_EQ(CountedValue::alive, 2);
  EXPECT_NE(record.DefaultValue(), value.get());
  value.reset();
  int held = 0;
  EXPECT_EQ(record.DefaultValue()->GetInt(held), 1);
  EXPECT_EQ(held, 5);
}

TEST(AttribDefRec, LoadRecKeepsTheControlAttributes) {
  CAttribDefRec record = LoadedRecord();
  record.LoadRec(L"B", 2, L"", 0, 0, L"", nullptr);
  CString text(L"untouched");
  record.GetCtlAttribs(text);
  EXPECT_EQ(text, CString(L"0,100,0.5"));
}

TEST(AttribDefRec, LoadRecWithoutAValueRemovesTheOneBefore) {
  CountedValue value(1);
  CAttribDefRec record;
  record.LoadRec(L"A", 1, L"", 101, 0, L"", &value);
  record.LoadRec(L"A", 1, L"", 101, 0, L"", nullptr);
  EXPECT_EQ(record.DefaultValue(), nullptr);
  EXPECT_EQ(CountedValue::alive, 1);
}

TEST(AttribDefRec, LoadRecAcceptsItsOwnValue) {
  CAttribDefRec record = LoadedRecord();
  record.LoadRec(record.Mnemonic(), record.Id(), record.Name(), record.Type(), record.ControlType(),
                 record.BitmapFile(), const_cast<CLumType*>(record.DefaultValue()));
  ExpectLoaded(record);
}

TEST(AttribDefRec, CopyOwnsItsValue) {
  auto source = std::make_unique<CAttribDefRec>(LoadedRecord());
  const CAttribDefRec copy(*source);
  EXPECT_NE(copy.DefaultValue(), source->DefaultValue());
  source.reset();
  ExpectLoaded(copy);
}

TEST(AttribDefRec, CopyOfARecordWithoutAValueHasNone) {
  const CAttribDefRec source;
  EXPECT_EQ(CAttribDefRec(source).DefaultValue(), nullptr);
}

TEST(AttribDefRec, AssignmentReplacesEverythingAndFreesTheOldValue) {
  CountedValue old(9);
  CAttribDefRec target;
  target.LoadRec(L"Old", 1, L"Old name", 101, 7, L"old.bmp", &old);
  target = LoadedRecord();
  ExpectLoaded(target);
  EXPECT_EQ(CountedValue::alive, 1);
  target = CAttribDefRec();
  EXPECT_EQ(target.DefaultValue(), nullptr);
  EXPECT_TRUE(target.Mnemonic().IsEmpty());
}

TEST(AttribDefRec, AssignmentToItselfChangesNothing) {
  CAttribDefRec record = LoadedRecord();
  const CLumType* value = record.DefaultValue();
  CAttribDefRec& same = record;
  record = same;
  EXPECT_EQ(record.DefaultValue(), value);
  ExpectLoaded(record);
}

TEST(AttribDefRec, MakeCopyIsVirtualAndGivesANewRecord) {
  struct Derived : CAttribDefRec {
    CAttribDefRec* MakeCopy() const override { return new Derived(*this); }
  };
  static_assert(std::has_virtual_destructor_v<CAttribDefRec>);
  const CAttribDefRec record = LoadedRecord();
  const std::unique_ptr<CAttribDefRec> copy(record.MakeCopy());
  ASSERT_NE(copy.get(), &record);
  ExpectLoaded(*copy);
  const Derived derived;
  const CAttribDefRec& base = derived;
  const std::unique_ptr<CAttribDefRec> derivedCopy(base.MakeCopy());
  EXPECT_NE(dynamic_cast<Derived*>(derivedCopy.get()), nullptr);
}

}  // namespace
