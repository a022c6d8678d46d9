// The attribute record: ownership, flags, copies and moves.
#include "attributes/AttributeRec.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/attributes/TreeTesting.h"

namespace {

constexpr auto kBoth = static_cast<CAttributeRec::FLAGS>(0x0401);

/// Counts how many of its kind are alive.
class CCountedValue : public CLumInt {
 public:
  explicit CCountedValue(int& alive) : CLumInt(1), m_alive(alive) { ++m_alive; }
  CCountedValue(const CCountedValue& other) : CLumInt(other), m_alive(other.m_alive) { ++m_alive; }
  ~CCountedValue() override { --m_alive; }
  CCountedValue* MakeCopy() const override { return new CCountedValue(*this); }

 private:
  int& m_alive;
};

TEST(AttributeRec, HoldsACopyOfTheValue) {
  CLumInt value(5);
  const CAttributeRec record(L"Depth", value, 0x8001);
  value.SetInt(6);
  EXPECT_EQ(record.Mnemonic(), L"Depth");
  EXPECT_EQ(TextOf(record.Value()), "5");
  EXPECT_EQ(record.Flags(), 0x8001u);
}

TEST(AttributeRec, SettingAValueReplacesTheKind) {
  CAttributeRec record(L"A", CLumInt(5), 3);
  record.SetValue(CLumName(L"text"));
  EXPECT_EQ(record.Value().Type(), CLumType::TYPE_NAME);
  EXPECT_EQ(TextOf(record.Value()), "text");
  EXPECT_EQ(record.Flags(), 3u);
}

TEST(AttributeRec, SettingItsOwnValueKeepsTheVeryObject) {
  CAttributeRec record(L"A", CLumInt(5), 0);
  const CLumType* before = &record.Value();
  record.SetValue(record.Value());
  EXPECT_EQ(&record.Value(), before);
  EXPECT_EQ(TextOf(record.Value()), "5");
}

TEST(AttributeRec, ValueCanBeChangedInPlace) {
  CAttributeRec record(L"A", CLumInt(5), 0);
  record.Value().SetInt(9);
  EXPECT_EQ(TextOf(record.Value()), "9");
  record.Value() = CLumDouble(1.5);
  EXPECT_EQ(record.Value().Type(), CLumType::TYPE_INT);
  EXPECT_EQ(TextOf(record.Value()), "9");
}

TEST(AttributeRec, CopiesAreIndependent) {
  CAttributeRec a(L"A", CLumInt(5), 3);
  CAttributeRec b(a);
  b.Value().SetInt(6);
  b.SetMnemonic(L"B");
  b.SetFlags(4);
  EXPECT_EQ(TextOf(a.Value()), "5");
  EXPECT_EQ(a.Mnemonic(), L"A");
  EXPECT_EQ(a.Flags(), 3u);
}

TEST(AttributeRec, CopyAssignmentTakesNameValueAndFlags) {
  const CAttributeRec a(L"A", CLumInt(5), 3);
  CAttributeRec b(L"B", CLumName(L"b"), 8);
  b = a;
  EXPECT_EQ(b.Mnemonic(), L"A");
  EXPECT_EQ(TextOf(b.Value()), "5");
  EXPECT_EQ(b.Value().Type(), CLumType::TYPE_INT);
  EXPECT_EQ(b.Flags(), 3u);
}

TEST(AttributeRec, SelfAssignmentKeepsTheVeryObject) {
  CAttributeRec record(L"A", CLumInt(5), 3);
  const CLumType* before = &record.Value();
  CAttributeRec& same = record;
  record = same;
  record = std::move(same);
  EXPECT_EQ(&record.Value(), before);
  EXPECT_EQ(TextOf(record.Value()), "5");
}

TEST(AttributeRec, MovedFromRecordKeepsItsNameAndFlags) {
  CAttributeRec a(L"A", CLumInt(5), 3);
  const CLumType* value = &a.Value();
  const CAttributeRec b(std::move(a));
  EXPECT_EQ(a.Mnemonic(), L"A");
  EXPECT_EQ(a.Flags(), 3u);
  EXPECT_EQ(&b.Value(), value);
  EXPECT_EQ(b.Mnemonic(), L"A");
  EXPECT_EQ(b.Flags(), 3u);
}

TEST(AttributeRec, MoveAssignmentTakesTheVeryValue) {
  CAttributeRec a(L"A", CLumInt(5), 3);
  const CLumType* value = &a.Value();
  CAttributeRec b(L"B", CLumInt(6), 0);
  b = std::move(a);
  EXPECT_EQ(&b.Value(), value);
  EXPECT_EQ(a.Mnemonic(), L"A");
}

TEST(AttributeRec, CopyOfAMovedFromRecordIsUndefined) {
  CAttributeRec a(L"A", CLumInt(5), 3);
  const CAttributeRec b(std::move(a));
  const CAttributeRec copy(a);
  EXPECT_EQ(copy.Value().Type(), CLumType::TYPE_UNDEFINED);
  EXPECT_EQ(copy.Mnemonic(), L"A");
  CAttributeRec assigned(L"X", CLumInt(1), 0);
  assigned = a;
  EXPECT_EQ(assigned.Value().Type(), CLumType::TYPE_UNDEFINED);
  a = b;
  EXPECT_EQ(TextOf(a.Value()), "5");
}

TEST(AttributeRec, DeletesEveryValueItOwns) {
  int alive = 0;
  {
    const CCountedValue value(alive);
    CAttributeRec a(L"A", value, 0);
    CAttributeRec b(a);
    b = a;
    a.SetValue(value);
    CAttributeRec c(std::move(a));
    b = std::move(c);
    EXPECT_EQ(alive, 2);  // The one here and that of `b`.
  }
  EXPECT_EQ(alive, 0);
}

TEST(AttributeRec, FlagMasksMayHoldSeveralBits) {
  CAttributeRec record(L"A", CLumUndefined(), 0x8401);
  record.SetFlag(kBoth, false);
  EXPECT_EQ(record.Flags(), 0x8000u);
  EXPECT_FALSE(record.IsFlagSet(kBoth));
  record.SetFlag(kBoth, true);
  EXPECT_EQ(record.Flags(), 0x8401u);
  for (const unsigned int flags : {0x0001u, 0x0400u, 0x0401u, 0xFFFFFFFFu}) {
    record.SetFlags(flags);
    EXPECT_TRUE(record.IsFlagSet(kBoth)) << flags;
  }
}

TEST(AttributeRec, DisablingTouchesItsBitOnly) {
  CAttributeRec record(L"A", CLumUndefined(), 0x0001);
  record.Disable(true);
  EXPECT_EQ(record.Flags(), 0x0041u);
  EXPECT_TRUE(record.IsDisabled());
  record.Disable(false);
  EXPECT_EQ(record.Flags(), 0x0001u);
  EXPECT_FALSE(record.IsDisabled());
}

TEST(AttributeRec, EveryFlagBitIsCarried) {
  CAttributeRec record(L"A", CLumUndefined(), 0);
  for (int bit = 0; bit < 32; ++bit) {
    record.SetFlags(1u << bit);
    EXPECT_EQ(CAttributeRec(record).Flags(), 1u << bit);
    EXPECT_EQ(record.IsDisabled(), bit == 6);
  }
}

TEST(AttributeRec, IsDeletedThroughItsVirtualDestructor) {
  static_assert(std::has_virtual_destructor_v<CAttributeRec>);
  int alive = 0;
  CAttributeRec* record = nullptr;
  {
    auto* map = new CAttributeMap(L"A", CCountedValue(alive), 0);
    map->Add(L"B", CCountedValue(alive), 0);
    record = map;
  }
  EXPECT_EQ(alive, 2);
  delete record;
  EXPECT_EQ(alive, 0);
}

}  // namespace
