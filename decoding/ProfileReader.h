// Reads the lines of a profile: which section an item stands in, and what holds for the file as a
// whole.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "decoding/ProfileColumns.h"
#include "decoding/ProfileMatch.h"
#include "platform/FileObject.h"

namespace lum::decoding {

class CProfileReader {
 public:
  CProfileReader(Profile& profile, CProfileFaults& faults) : m_profile(profile), m_faults(faults) {}

  void Take(const FileObjectLine& line);
  void Finish();

 private:
  enum class Section { None, Profile, Message, Unknown };

  /// A message while its items are read.
  struct Message {
    explicit Message(CProfileFaults& faults) : match(faults), columns(faults) {}
    MessageRule rule;
    PlacedText place;
    bool isKept = true;  ///< Another one of that name, or one too many, is only checked.
    CMatchReader match;
    CColumnReader columns;
  };
  /// A condition, to be held against the format, which may stand behind it.
  struct Condition {
    MatchTerm::Part part;
    PlacedText place;
    std::string key;
  };

  void OpenSection(const PlacedText& header, const PlacedText& name);
  void OpenMessage(const PlacedText& header, const PlacedText& name);
  void CloseMessage();
  void TakeItem(const PlacedText& key, const PlacedText& value);
  void TakeProfileItem(const PlacedText& key, const PlacedText& value);
  void TakeFormat(const PlacedText& value);
  void TakeSeparator(const PlacedText& key, const PlacedText& value);
  bool IsRepeated(const PlacedText& key);
  void SettleFormat();
  void CheckConditions();

  Profile& m_profile;
  CProfileFaults& m_faults;
  Section m_section = Section::None;
  std::optional<Message> m_message;
  std::map<std::string, int, std::less<>> m_sections;  // The lines they begin in.
  std::map<std::string, int, std::less<>> m_keys;      // The same of the present section's keys.
  std::vector<Condition> m_conditions;
  std::optional<PlacedText> m_separator;  // The place of its key.
  bool m_hasMessages = false;
  bool m_hasTooMany = false;
};

}  // namespace lum::decoding
