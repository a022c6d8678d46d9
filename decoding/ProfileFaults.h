// Faults of a profile while it is read: collected in any order, handed over in the order of their
// places; and texts of a profile with the places they stand at.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/FormulaLexer.h"
#include "decoding/Profile.h"

namespace lum::decoding {

/// A text and the place of its first character in the profile.
struct PlacedText {
  std::string_view text;
  int line = 1;
  int column = 1;
  /// The same text without its first `bytes`.
  PlacedText From(std::size_t bytes) const;
  PlacedText First(std::size_t bytes) const { return {text.substr(0, bytes), line, column}; }
  PlacedText WithoutBlanks() const;
  /// The place alone, which may outlive the text.
  PlacedText WithoutText() const { return {{}, line, column}; }
};

/// How many characters a text of UTF-8 has.
int CharacterCount(std::string_view text);
/// The known word that was probably meant, or nothing.
std::string Nearest(std::string_view text, std::span<const std::string_view> known);

class CProfileFaults {
 public:
  explicit CProfileFaults(std::vector<ProfileFault>& faults) : m_faults(faults) {
    m_faults.clear();
  }

  void Add(const PlacedText& place, std::string found, std::string expected,
           std::string suggestion = {});
  /// Once there are so many faults that further ones are not kept.
  bool IsFull() const { return m_faults.size() >= kMaxProfileFaults; }
  /// Tells that what follows was not looked at.
  void CutOff() { m_isCut = true; }
  /// Puts them into the order of their places.
  void Finish();

 private:
  std::vector<ProfileFault>& m_faults;
  bool m_isCut = false;
};

}  // namespace lum::decoding
