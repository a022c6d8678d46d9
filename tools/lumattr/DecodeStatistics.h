// lumattr decode --stats: what each column held, in place of the rows.
#pragma once

#include <vector>

#include "decoding/ColumnStatistics.h"
#include "decoding/Decoder.h"
#include "tools/lumattr/RowWriter.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

class CDecodeStatistics {
 public:
  /// The profile must outlive it.
  explicit CDecodeStatistics(const decoding::Profile& profile);

  void Add(const decoding::Row& row);
  void Print(RowFormat format, ToolContext& context) const;

 private:
  struct CMessage {
    std::uint64_t rows = 0;
    std::vector<decoding::CColumnStatistics> columns;
  };

  void PrintJson(ToolContext& context) const;

  const decoding::Profile& m_profile;
  std::vector<CMessage> m_messages;
};

}  // namespace lum::tool
