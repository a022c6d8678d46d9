// The decoding operations of CLumDouble side by side with their literal versions: for each, how its
// inputs are made and how both are called.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "tests/formulas/DecoderInputs.h"
#include "tests/formulas/LiteralDecoders.h"
#include "values/DoubleType.h"
#include "values/NameTypes.h"

namespace lum::test {

// The arguments and the result of the operations, made once: making them costs more than a call.
class CDecoderArguments {
 public:
  explicit CDecoderArguments(const DecoderInput& input) : m_input(input) {}

  // Brings the values in line with the input.
  void SetText() { m_text.SetName(CStringA(m_input.text.data(), Length(m_input.text))); }
  void SetWideTexts() {
    SetWide(m_position, m_input.text);
    SetWide(m_hemisphere, m_input.hemisphere);
  }
  void SetNumbers() {
    for (std::size_t i = 0; i < m_numbers.size(); ++i) {
      m_numbers[i].SetDouble(m_input.numbers[i]);
    }
  }
  void SetPrevious() { m_result.SetDouble(m_input.previous); }

  CLumIoName& Text() { return m_text; }
  CLumName& Position() { return m_position; }
  CLumName& Hemisphere() { return m_hemisphere; }
  CLumDouble& Number(std::size_t i) { return m_numbers[i]; }
  CLumDouble& Result() { return m_result; }

 private:
  template <typename Text>
  static int Length(const Text& text) {
    return static_cast<int>(text.size());
  }
  static void SetWide(CLumName& name, std::string_view bytes) {
    const std::wstring wide = Widen(bytes);
    name.SetName(CString(wide.data(), Length(wide)));
  }

  const DecoderInput& m_input;
  CLumIoName m_text;
  CLumName m_position;
  CLumName m_hemisphere;
  std::array<CLumDouble, 3> m_numbers;
  CLumDouble m_result;
};

// One operation in both versions.
struct Decoder {
  const char* name;
  void (CDecoderInputs::*fill)(DecoderInput& input);
  LiteralOutcome (*literal)(const DecoderInput& input);
  int (*call)(CDecoderArguments& arguments, bool lenient);
  void (CDecoderArguments::*setTexts)() = &CDecoderArguments::SetText;
};

inline const Decoder kBinVal = {"BinVal", &CDecoderInputs::BinVal,
                                [](const DecoderInput& in) {
                                  return LiteralBinVal(in.text, in.numbers[0], in.isLenient,
                                                       in.previous);
                                },
                                [](CDecoderArguments& a, bool lenient) {
                                  return a.Result().BinVal(a.Text(), a.Number(0), lenient);
                                }};

inline const Decoder kBitVal = {
    "BitVal", &CDecoderInputs::BitVal,
    [](const DecoderInput& in) { return LiteralBitVal(in.numbers[0], in.numbers[1], in.previous); },
    [](CDecoderArguments& a, bool) { return a.Result().BitVal(a.Number(0), a.Number(1)); }};

inline const Decoder kAdamVal = {
    "AdamVal", &CDecoderInputs::AdamVal,
    [](const DecoderInput& in) { return LiteralAdamVal(in.text, in.numbers[0], in.previous); },
    [](CDecoderArguments& a, bool) { return a.Result().AdamVal(a.Text(), a.Number(0)); }};

inline const Decoder kCanVal = {
    "CanVal", &CDecoderInputs::CanVal,
    [](const DecoderInput& in) {
      return LiteralCanVal(in.text, in.numbers[0], in.numbers[1], in.isLenient, in.previous);
    },
    [](CDecoderArguments& a, bool lenient) {
      return a.Result().CanVal(a.Text(), a.Number(0), a.Number(1), lenient);
    }};

inline const Decoder kJ1939Val = {
    "J1939Val", &CDecoderInputs::J1939Val,
    [](const DecoderInput& in) {
      return LiteralJ1939Val(in.text, in.numbers[0], in.numbers[1], in.isLenient, in.previous);
    },
    [](CDecoderArguments& a, bool lenient) {
      return a.Result().J1939Val(a.Text(), a.Number(0), a.Number(1), lenient);
    }};

inline const Decoder kJ1939BitsVal = {
    "J1939BitsVal", &CDecoderInputs::J1939BitsVal,
    [](const DecoderInput& in) {
      return LiteralJ1939BitsVal(in.text, in.numbers[0], in.numbers[1], in.numbers[2], in.isLenient,
                                 in.previous);
    },
    [](CDecoderArguments& a, bool lenient) {
      return a.Result().J1939BitsVal(a.Text(), a.Number(0), a.Number(1), a.Number(2), lenient);
    }};

inline const Decoder kTimeConv = {
    "TimeConv", &CDecoderInputs::TimeConv,
    [](const DecoderInput& in) { return LiteralTimeConv(in.text); },
    [](CDecoderArguments& a, bool) { return a.Result().TimeConv(a.Text()); }};

inline const Decoder kHmsToMsec = {
    "HmsToMsec", &CDecoderInputs::HmsToMsec,
    [](const DecoderInput& in) { return LiteralHmsToMsec(in.numbers[0], in.previous); },
    [](CDecoderArguments& a, bool) { return a.Result().HmsToMsec(a.Number(0)); }};

inline const Decoder kVal = {
    "Val", &CDecoderInputs::Val,
    [](const DecoderInput& in) { return LiteralVal(in.text, in.isLenient); },
    [](CDecoderArguments& a, bool lenient) { return a.Result().Val(a.Text(), lenient); }};

inline const Decoder kNMEAPos = {
    "NMEAPos", &CDecoderInputs::NMEAPos,
    [](const DecoderInput& in) {
      return LiteralNMEAPos(Widen(in.text), Widen(in.hemisphere), in.previous);
    },
    [](CDecoderArguments& a, bool) { return a.Result().NMEAPos(a.Position(), a.Hemisphere()); },
    &CDecoderArguments::SetWideTexts};

inline const std::array<const Decoder*, 10> kDecoders = {
    &kBinVal,       &kBitVal,   &kAdamVal,   &kCanVal, &kJ1939Val,
    &kJ1939BitsVal, &kTimeConv, &kHmsToMsec, &kVal,    &kNMEAPos};

}  // namespace lum::test
