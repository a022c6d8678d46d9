// Keys and names of sections whose hashes are equal, when memory runs out: those that find no place
// in a table stand elsewhere, which needs more of it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/FileObject.h"
#include "tests/Allocations.h"
#include "tests/CollidingNames.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/memory/RefusalWalk.h"

namespace {

using lum::test::Guarantee;
using lum::test::Operation;
using lum::test::WalkRefusals;

constexpr int kItems = 140;
/// With the lines above all sections a power of two: what holds them is full.
constexpr int kSections = 255;

const CString& Name(int number) {
  static const std::vector<CString> names =
      lum::test::CCollidingNames::MakeKeys(static_cast<std::size_t>(kSections) + 1);
  return names[static_cast<std::size_t>(number)];
}

void AddItems(FileObject& file) {
  for (int i = 0; i < kItems; ++i) {
    file.SetItem(L"S", Name(i), L"1", true);
  }
}

void AddSections(FileObject& file) {
  for (int i = 0; i < kSections; ++i) {
    file.SetItem(Name(i), L"key", L"1", true);
  }
}

std::string Describe(const FileObject& file) {
  std::string text = file.HasSection(Name(kSections)) ? "new " : "";
  for (const CString& section : file.SectionNames()) {
    text += "[" + Narrow(section) + "]" + Items(file, section);
  }
  return text;
}

TEST(CollisionsMemory, ItemsStayAsTheyWere) {
  const Operation<FileObject> operations[] = {
      {"SetItem", Guarantee::Unchanged,
       [](FileObject& file) { return file.SetItem(L"S", Name(kItems), L"1", true); }, AddItems},
      {"RenameItem", Guarantee::Unchanged,
       [](FileObject& file) { return file.RenameItem(L"S", Name(kItems - 1), Name(kItems)); },
       AddItems},
      {"InsertItem", Guarantee::Unchanged,
       [](FileObject& file) { return file.InsertItem(L"S", Name(0), Name(kItems), L"1"); },
       AddItems},
      {"RemoveItem", Guarantee::Unchanged,
       [](FileObject& file) { return file.RemoveItem(L"S", Name(kItems - 1)); }, AddItems},
  };
  for (const Operation<FileObject>& operation : operations) {
    WalkRefusals(operation, Describe);
  }
}

TEST(CollisionsMemory, SectionsStayAsTheyWere) {
  const Operation<FileObject> operations[] = {
      {"CreateSection", Guarantee::Unchanged,
       [](FileObject& file) { return file.CreateSection(Name(kSections), false); }, AddSections},
      {"RemoveSection", Guarantee::Unchanged,
       [](FileObject& file) { return file.RemoveSection(Name(kSections - 1)); }, AddSections},
  };
  for (const Operation<FileObject>& operation : operations) {
    WalkRefusals(operation, Describe);
  }
}

}  // namespace
