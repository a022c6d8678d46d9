// The list kinds of value: ints, doubles and names of any number.
#pragma once

#include <utility>

#include "values/LumTypeBase.h"

/// Ints; the text is the numbers joined by commas. Reading replaces the list by the items up to the
/// first that is no int, and always succeeds.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumIntArray : public CLumType {
 public:
  CLumIntArray() = default;
  CLumIntArray(const std::vector<int>& values) : m_values(values) {}
  CLumIntArray(std::vector<int>&& values) noexcept : m_values(std::move(values)) { values.clear(); }
  CLumIntArray(const CLumIntArray&) = default;
  CLumIntArray(CLumIntArray&&) = default;
  CLumIntArray& operator=(const CLumIntArray&) = default;
  CLumIntArray& operator=(CLumIntArray&&) = default;
  ~CLumIntArray() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumIntArray* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  CLumType& operator=(const CLumType& source) override;
  int GetIntArray(std::vector<int>& values) const override;
  int SetIntArray(const std::vector<int>& values) override;

 private:
  std::vector<int> m_values;
};

/// Doubles; the text is the shortest exact forms joined by commas. Reading replaces the list by the
/// items up to the first that is no double, and always succeeds.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumDoubleArray : public CLumType {
 public:
  CLumDoubleArray() = default;
  CLumDoubleArray(const std::vector<double>& values) : m_values(values) {}
  CLumDoubleArray(std::vector<double>&& values) noexcept : m_values(std::move(values)) {
    values.clear();
  }
  CLumDoubleArray(const CLumDoubleArray&) = default;
  CLumDoubleArray(CLumDoubleArray&&) = default;
  CLumDoubleArray& operator=(const CLumDoubleArray&) = default;
  CLumDoubleArray& operator=(CLumDoubleArray&&) = default;
  ~CLumDoubleArray() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumDoubleArray* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  CLumType& operator=(const CLumType& source) override;
  int GetDoubleArray(std::vector<double>& values) const override;
  int SetDoubleArray(const std::vector<double>& values) override;

 private:
  std::vector<double> m_values;
};

/// Names; the text is the names joined by commas, not quoted: a name that holds a comma reads back
/// as two.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumNameArray : public CLumType {
 public:
  CLumNameArray() = default;
  CLumNameArray(const std::vector<CString>& values) : m_values(values) {}
  CLumNameArray(std::vector<CString>&& values) noexcept : m_values(std::move(values)) {
    values.clear();
  }
  CLumNameArray(const CLumNameArray&) = default;
  CLumNameArray(CLumNameArray&&) = default;
  CLumNameArray& operator=(const CLumNameArray&) = default;
  CLumNameArray& operator=(CLumNameArray&&) = default;
  ~CLumNameArray() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumNameArray* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  CLumType& operator=(const CLumType& source) override;
  int GetNameArray(std::vector<CString>& values) const override;
  int SetNameArray(const std::vector<CString>& values) override;

 private:
  std::vector<CString> m_values;
};
