// CPlainLoad: the definitions of a file one line after the other, each split by the platform's list
// of items.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "definitions/AttribDefMap.h"
#include "tests/definitions/DefinitionFile.h"

/// Makes the plain way of splitting a line reachable.
struct OpenTable : CAttribDefMap {
  using CAttribDefMap::GetAttributeItems;
};

/// What one line after the other gives.
class CPlainLoad {
 public:
  void Load(const CString& line) {
    m_mnemonic.Empty();
    m_name.Empty();
    m_bitmapFile.Empty();
    CLumType* made = nullptr;
    m_table.GetAttributeItems(line, m_mnemonic, m_id, m_name, m_type, m_controlType, m_bitmapFile,
                              made, m_result);
    m_value.reset(made);
  }

  void ExpectSame(const CAttribDefRec& record) const {
    EXPECT_EQ(record.Mnemonic(), m_mnemonic);
    EXPECT_EQ(record.Id(), m_id);
    EXPECT_EQ(record.Name(), m_name);
    EXPECT_EQ(record.Type(), static_cast<unsigned int>(m_type));
    EXPECT_EQ(record.ControlType(), static_cast<unsigned int>(m_controlType));
    EXPECT_EQ(record.BitmapFile(), m_bitmapFile);
    EXPECT_EQ(ValueText(record), Text());
  }

  bool Result() const { return m_result; }

 private:
  CString Text() const {
    CString text(L"untouched");
    if (m_value == nullptr) {
      return L"no value";
    }
    m_value->GetValueStr(text);
    return text;
  }

  OpenTable m_table;
  CString m_mnemonic;
  unsigned short m_id = 0;
  CString m_name;
  int m_type = 0;
  int m_controlType = 0;
  CString m_bitmapFile;
  std::unique_ptr<CLumType> m_value;
  bool m_result = true;
};
