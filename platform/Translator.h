// Translator: display names and control-attribute texts in the user's language.
#pragma once

#include <memory>

#include "platform/FrameworkString.h"

/// The translations of one process.
///
/// Threads: set up at start-up; afterwards it may be read in several threads while none changes it.
class LUM_PLATFORM_API Translator {
 public:
  /// The process-wide translator, made when the platform is loaded; its language is not foreign
  /// until SetLanguageForeign says so.
  static Translator& Instance();

  Translator(const Translator&) = delete;
  Translator& operator=(const Translator&) = delete;

  bool IsLanguageForeign() const noexcept;
  void SetLanguageForeign(bool foreign) noexcept;

  /// The translated display name of an attribute, or the empty text when there is none.
  CString GetAttribDefV2String(const CString& mnemonic) const;
  /// The translated control-attribute text of an attribute, or the empty text when there is none.
  CString GetAttribDefV2CtrlString(const CString& mnemonic) const;

  /// Adds or replaces one translation.
  void SetString(const CString& mnemonic, const CString& text);
  void SetCtrlString(const CString& mnemonic, const CString& text);

  /// Adds the translations of a sectioned UTF-8 file:
  ///
  ///     [AttribDefV2]
  ///     Height=Höhe
  ///     [AttribDefV2Ctrl]
  ///     Height=0,100,0.5
  ///
  /// False, with nothing changed, when the file cannot be read; nor is anything when memory runs
  /// out.
  bool Load(const CString& path);

  /// Forgets every translation; the language is not foreign afterwards.
  void Clear();

 private:
  Translator();
  ~Translator();

  struct Texts;
  std::unique_ptr<Texts> m_texts;
};
