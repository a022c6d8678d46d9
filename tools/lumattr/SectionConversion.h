// Rewriting a section in the other format version by giving its items other keys in place.
#pragma once

#include <string>
#include <vector>

#include "platform/LumBase.h"

namespace lum::tool {

/// What has to be done to a section, found out before anything is changed.
struct ConversionPlan {
  struct Rename {
    CString from;
    CString to;
  };

  int fromVersion = 0;
  int toVersion = 0;
  std::vector<Rename> renames;        ///< In an order in which every new key is free in its turn.
  std::vector<std::string> findings;  ///< What the other version cannot say, or would misread.
  std::vector<std::string> notes;     ///< What changes besides the attributes.
};

/// Throws ToolError for a section of an unknown version. Items that findings speak of are no part
/// of the renames.
ConversionPlan PlanConversion(const FileObject& file, const CString& section, int toVersion);

/// Carries the plan out. Throws ToolError, with the file of use no more, when the section would not
/// read back with the same attributes; a plan with findings is carried out as far as it goes.
void CarryOut(const ConversionPlan& plan, FileObject& file, const CString& section);

}  // namespace lum::tool
