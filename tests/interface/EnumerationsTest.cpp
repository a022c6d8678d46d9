// The numbers behind the public enumerations: they stand in files and in programs built earlier.
// The codes of the kinds of value are held fast where the kinds are tested.
#include <gtest/gtest.h>

#include <type_traits>

#include "attributes/AttributeMap.h"
#include "platform/Error.h"
#include "platform/FileObject.h"
#include "platform/Framework.h"
#include "values/LumType.h"

namespace {

struct Enumerator {
  const char* name;
  unsigned int releasedValue;
  unsigned int value;
};

#define LUM_ENUMERATOR(name, released) \
  { #name, released, static_cast < unsigned int>(name) }

TEST(Enumerations, EnumeratorsKeepTheirValues) {
  const Enumerator kEnumerators[] = {
      LUM_ENUMERATOR(CAttributeRec::FLAG_EDITABLE, 0x0001),
      LUM_ENUMERATOR(CAttributeRec::FLAG_GROUP, 0x0010),
      LUM_ENUMERATOR(CAttributeRec::FLAG_DISABLED, 0x0040),
      LUM_ENUMERATOR(CAttributeRec::FLAG_SKIP_ON_LOAD, 0x0080),
      LUM_ENUMERATOR(CAttributeRec::FLAG_KEEP_VALUE, 0x0400),
      LUM_ENUMERATOR(CAttributeRec::FLAG_KEEP_VALUE_STRICT, 0x1000),
      LUM_ENUMERATOR(CAttributeRec::FLAG_TRANSIENT, 0x8000),
      LUM_ENUMERATOR(CAttributeMap::OVERLOAD_COPY_FLAGS, 0x01),
      LUM_ENUMERATOR(CAttributeMap::OVERLOAD_ORDER_INFO, 0x02),
      LUM_ENUMERATOR(CAttributeMap::OVERLOAD_ADD_NEW, 0x04),
      LUM_ENUMERATOR(CAttributeMap::OVERLOAD_STRICT, 0x10),
      LUM_ENUMERATOR(CAttributeMap::OVERLOAD_REPLACE, 15),
      LUM_ENUMERATOR(CAttributeMap::COMPARE_VALUES, 0x01),
      LUM_ENUMERATOR(CAttributeMap::COMPARE_ADDED, 0x02),
      LUM_ENUMERATOR(CAttributeMap::COMPARE_REMOVED, 0x04),
      LUM_ENUMERATOR(FileError::CANNOT_OPEN, 0),
      LUM_ENUMERATOR(FileError::CANNOT_READ, 1),
      LUM_ENUMERATOR(FileError::CANNOT_WRITE, 2),
      LUM_ENUMERATOR(CStdioFile::modeRead, 0x0000),
      LUM_ENUMERATOR(CStdioFile::shareDenyWrite, 0x0020),
      LUM_ENUMERATOR(CStdioFile::typeText, 0x4000),
      LUM_ENUMERATOR(TextFileEncoding::Utf8, 0),
      LUM_ENUMERATOR(TextFileEncoding::Utf8WithMark, 1),
      LUM_ENUMERATOR(TextFileEncoding::Utf16LittleEndian, 2),
      LUM_ENUMERATOR(TextFileEncoding::Utf16BigEndian, 3),
      LUM_ENUMERATOR(TextFileEncoding::Ansi, 4),
      LUM_ENUMERATOR(FileObjectLine::Kind::Blank, 0),
      LUM_ENUMERATOR(FileObjectLine::Kind::Comment, 1),
      LUM_ENUMERATOR(FileObjectLine::Kind::Section, 2),
      LUM_ENUMERATOR(FileObjectLine::Kind::Item, 3),
      LUM_ENUMERATOR(FileObjectLine::Kind::Unknown, 4),
  };
  for (const Enumerator& enumerator : kEnumerators) {
    EXPECT_EQ(enumerator.value, enumerator.releasedValue) << enumerator.name;
  }
}

template <typename Enumeration, typename Number>
constexpr bool kHolds = std::is_same_v<std::underlying_type_t<Enumeration>, Number>;

TEST(Enumerations, EnumerationsKeepTheirTypesOfNumber) {
  EXPECT_TRUE((kHolds<CLumType::LUM_TYPE, int>));
  EXPECT_TRUE((kHolds<CAttributeRec::FLAGS, unsigned int>));
  EXPECT_TRUE((kHolds<CAttributeMap::OVERLOAD_FLAGS, unsigned int>));
  EXPECT_TRUE((kHolds<CAttributeMap::COMPARE_FLAGS, unsigned int>));
  EXPECT_TRUE((kHolds<CStdioFile::OpenFlags, unsigned int>));
  EXPECT_TRUE((kHolds<TextFileEncoding, int>));
  EXPECT_TRUE((kHolds<FileObjectLine::Kind, int>));
}

}  // namespace
