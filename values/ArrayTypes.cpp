// The lists read and write comma-separated texts without blanks. An int or double list ends at the
// first item that is no number; a name list takes every item as it stands.
#include "values/ArrayTypes.h"

#include <utility>

#include "values/NumberItems.h"
#include "values/NumberText.h"

namespace {

template <typename T>
std::vector<T> ReadNumbers(const CString& text) {
  // A list grows by chunks: most are then allocated once.
  constexpr std::size_t kChunk = 64;
  T chunk[kChunk];
  lum::detail::CNumberItems items(text);
  std::vector<T> values;
  for (std::size_t count = kChunk; count == kChunk;) {
    for (count = 0; count < kChunk && items.Take(chunk[count]); ++count) {
    }
    values.insert(values.end(), chunk, chunk + count);
  }
  return values;
}

}  // namespace

// ---- CLumIntArray

CLumIntArray::~CLumIntArray() = default;

bool CLumIntArray::SetValueStr(CString text) {
  m_values = ReadNumbers<int>(text);
  return true;
}

CLumType::LUM_TYPE CLumIntArray::Type() const { return TYPE_INTARRAY; }

CLumIntArray* CLumIntArray::MakeCopy() const { return new CLumIntArray(*this); }

int CLumIntArray::GetValueStr(CString& text) const {
  lum::detail::ReplaceByDecimal(text, m_values);
  return 1;
}

CLumType& CLumIntArray::operator=(const CLumType& source) {
  source.GetIntArray(m_values);
  return *this;
}

int CLumIntArray::GetIntArray(std::vector<int>& values) const {
  values = m_values;
  return 1;
}

int CLumIntArray::SetIntArray(const std::vector<int>& values) {
  m_values = values;
  return 1;
}

// ---- CLumDoubleArray

CLumDoubleArray::~CLumDoubleArray() = default;

bool CLumDoubleArray::SetValueStr(CString text) {
  m_values = ReadNumbers<double>(text);
  return true;
}

CLumType::LUM_TYPE CLumDoubleArray::Type() const { return TYPE_DOUBLEARRAY; }

CLumDoubleArray* CLumDoubleArray::MakeCopy() const { return new CLumDoubleArray(*this); }

int CLumDoubleArray::GetValueStr(CString& text) const {
  lum::detail::ReplaceByShortest(text, m_values);
  return 1;
}

CLumType& CLumDoubleArray::operator=(const CLumType& source) {
  source.GetDoubleArray(m_values);
  return *this;
}

int CLumDoubleArray::GetDoubleArray(std::vector<double>& values) const {
  values = m_values;
  return 1;
}

int CLumDoubleArray::SetDoubleArray(const std::vector<double>& values) {
  m_values = values;
  return 1;
}

// ---- CLumNameArray

CLumNameArray::~CLumNameArray() = default;

bool CLumNameArray::SetValueStr(CString text) {
  if (text.IsEmpty()) {
    m_values.clear();
  } else {
    m_values = CLumString(text, L',', false, false).Items();
  }
  return true;
}

CLumType::LUM_TYPE CLumNameArray::Type() const { return TYPE_NAMEARRAY; }

CLumNameArray* CLumNameArray::MakeCopy() const { return new CLumNameArray(*this); }

int CLumNameArray::GetValueStr(CString& text) const {
  CString joined;
  for (const CString& value : m_values) {
    if (&value != m_values.data()) {
      joined.AppendChar(L',');
    }
    joined.Append(value);
  }
  text = std::move(joined);
  return 1;
}

CLumType& CLumNameArray::operator=(const CLumType& source) {
  source.GetNameArray(m_values);
  return *this;
}

int CLumNameArray::GetNameArray(std::vector<CString>& values) const {
  values = m_values;
  return 1;
}

int CLumNameArray::SetNameArray(const std::vector<CString>& values) {
  m_values = values;
  return 1;
}
