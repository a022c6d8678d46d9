// Keys and names of sections whose hashes are equal, as somebody chooses them who wants a file to
// be slow: each is found, changed and removed by itself.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/portable/KeyIndex.h"
#include "tests/CollidingNames.h"
#include "tests/platform/FileObjectTesting.h"

namespace {

using lum::detail::CKeyIndex;
using lum::detail::HashKey;
using lum::test::CCollidingNames;

constexpr std::size_t kRun = CKeyIndex::kLongestRun;
// What the index of a section has for a few more items than a run is long.
constexpr std::uint32_t kSlots = 512;

CString NameAt(std::uint32_t home) {
  return lum::test::NameAt([](const CString& name) { return HashKey(name); }, kSlots, home);
}

class FileObjectCollisions : public FileObjectTesting {
 protected:
  void Set(const CString& key, const CString& value) {
    EXPECT_TRUE(m_file.SetItem(L"S", key, value, true));
    m_expected[key] = value;
  }
  void Set(const std::vector<CString>& keys, const CString& value) {
    for (const CString& key : keys) {
      Set(key, value);
    }
  }
  void Remove(const CString& key) {
    EXPECT_TRUE(m_file.RemoveItem(L"S", key));
    m_expected.erase(key);
  }
  void Rename(const CString& key, const CString& newKey) {
    EXPECT_TRUE(m_file.RenameItem(L"S", key, newKey));
    m_expected[newKey] = m_expected.at(key);
    m_expected.erase(key);
  }

  void ExpectItems(const std::vector<CString>& keys) const {
    ASSERT_EQ(m_file.ItemCount(L"S"), static_cast<int>(m_expected.size()));
    for (const CString& key : keys) {
      CString value = L"none";
      m_file.GetItem(L"S", key, value);
      const auto found = m_expected.find(key);
      ASSERT_EQ(value, found == m_expected.end() ? CString(L"none") : found->second);
    }
  }

  FileObject m_file;
  std::map<CString, CString> m_expected;
};

TEST_F(FileObjectCollisions, AreWhatTheNamesAreMadeFor) {
  const std::vector<CString> keys = CCollidingNames::MakeKeys(3 * kRun);
  EXPECT_EQ(std::set<CString>(keys.begin(), keys.end()).size(), keys.size());
  for (const CString& key : keys) {
    ASSERT_EQ(HashKey(key), CCollidingNames::kHash);
  }
}

TEST_F(FileObjectCollisions, OfItemsAreToldApart) {
  const std::vector<CString> keys = CCollidingNames::MakeKeys(3 * kRun);
  Set({keys.begin(), keys.end() - 1}, L"1");
  ASSERT_NO_FATAL_FAILURE(ExpectItems(keys));
  for (std::size_t i = 0; i < keys.size(); i += 3) {
    Set(keys[i], L"2");
    Remove(keys[i + 1]);
  }
  ASSERT_NO_FATAL_FAILURE(ExpectItems(keys));
  Rename(keys[0], keys[1]);
  Rename(keys[3 * kRun - 3], keys[3 * kRun - 2]);
  ASSERT_NO_FATAL_FAILURE(ExpectItems(keys));
  m_file = Loaded(Saved(m_file));
  ASSERT_NO_FATAL_FAILURE(ExpectItems(keys));
}

TEST_F(FileObjectCollisions, OfItemsThatALaterLineOverridesAreToldApart) {
  const std::vector<CString> keys = CCollidingNames::MakeKeys(2 * kRun);
  Set(keys, L"first");
  const std::string first = Saved(m_file);
  Set(keys, L"second");
  m_file = Loaded(first + Saved(m_file));
  ASSERT_NO_FATAL_FAILURE(ExpectItems(keys));
  for (const CString& key : keys) {
    Remove(key);
  }
  ASSERT_NO_FATAL_FAILURE(ExpectItems(keys));
}

TEST_F(FileObjectCollisions, OfSectionsAreToldApart) {
  const std::vector<CString> names = CCollidingNames::MakeKeys(2 * kRun);
  FileObject file;
  for (const CString& name : names) {
    EXPECT_TRUE(file.SetItem(name, L"name", name, true));
  }
  for (std::size_t i = 0; i < names.size(); i += 2) {
    EXPECT_TRUE(file.RemoveSection(names[i]));
  }
  for (const FileObject& each : {file, Loaded(Saved(file))}) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      ASSERT_EQ(each.HasSection(names[i]), i % 2 == 1) << i;
      ASSERT_EQ(Value(each, names[i], L"name"), i % 2 == 1 ? names[i] : CString(L"untouched")) << i;
    }
    EXPECT_EQ(each.SectionNames().size(), kRun);
  }
}

TEST_F(FileObjectCollisions, LeaveWhatStandsBehindALongRunWhereItIsFound) {
  std::vector<CString> keys = CCollidingNames::MakeKeys(kRun);
  keys.insert(keys.begin(), NameAt(CCollidingNames::kHash - 1));
  // Its home is in the run, so it stands behind it.
  keys.push_back(NameAt(CCollidingNames::kHash + kRun / 2));
  Set(keys, L"1");
  Remove(keys[0]);
  ExpectItems(keys);
}

TEST_F(FileObjectCollisions, AreFoundByANewKeyThatFitsNoRun) {
  std::vector<CString> keys = CCollidingNames::MakeKeys(kRun);
  keys.push_back(L"Plain");
  Set(keys, L"1");
  keys.push_back(CCollidingNames::MakeKeys(kRun + 1).back());
  Rename(L"Plain", keys.back());
  ExpectItems(keys);
}

// For a moment a renamed item has two entries. The new one may stand where the old one, which found
// no place in the run, is looked for.
TEST_F(FileObjectCollisions, AreLeftByARenamedItem) {
  const std::vector<CString> names = CCollidingNames::MakeKeys(kRun + 2);
  for (const CString& newKey : {NameAt(CCollidingNames::kHash + kRun - 1), names[kRun + 1]}) {
    m_file = FileObject();
    m_expected.clear();
    std::vector<CString> keys(names.begin(), names.begin() + kRun + 1);
    Set(keys, L"1");
    Set(keys.back(), L"last");
    Remove(keys[0]);
    Rename(keys.back(), newKey);
    keys.push_back(newKey);
    ExpectItems(keys);
  }
}

}  // namespace
