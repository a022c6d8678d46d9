// The three forms in which show prints a section's tree. All are written node by node: nothing
// grows with the size or the depth of the tree but the output.
#pragma once

#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/SectionItems.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

/// A path longer than this is left out of JSON and CSV, and a name deeper than kMaxIndentedDepth is
/// indented no further but carries its depth: the output of a deep tree would otherwise grow with
/// the square of its depth.
inline constexpr std::size_t kMaxShownPath = 4096;
inline constexpr int kMaxIndentedDepth = 32;

/// A section with everything to be shown of it.
struct ShownSection {
  std::string file;
  CString section;
  SectionItems items;
  SectionTree tree;
};

void PrintTreeTable(const ShownSection& shown, ToolContext& context);
void PrintTreeJson(const ShownSection& shown, ToolContext& context);
void PrintTreeCsv(const ShownSection& shown, ToolContext& context);

}  // namespace lum::tool
