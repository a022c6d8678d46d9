// Second versions of the decoding operations, slow and literal: frames are read with string
// streams, numbers with the C runtime's scans, and fields come out of bytes by copying memory. The
// operations of CLumDouble are compared with them.
//
// What values/DoubleType.h says of each operation holds here too. The process locale must be "C".
#pragma once

#include <string>

namespace lum::test {

/// Whether this runtime's scans are those that BinVal's codes 9 to 11, AdamVal, TimeConv, Val and
/// NMEAPos promise. Others read some unusual texts differently.
#if defined(__GLIBC__)
inline constexpr bool kHasPromisedScans = true;
#else
inline constexpr bool kHasPromisedScans = false;
#endif

/// What an operation makes of its arguments.
struct LiteralOutcome {
  int code = 0;
  double result = 0.0;     ///< The result afterwards: the previous one when it is kept.
  bool isDecoded = false;  ///< The result is a value that stood in the arguments.
};

LiteralOutcome LiteralBinVal(const std::string& record, double typeCode, bool lenient,
                             double previous);
LiteralOutcome LiteralBitVal(double value, double bit, double previous);
LiteralOutcome LiteralAdamVal(const std::string& response, double channel, double previous);

LiteralOutcome LiteralCanVal(const std::string& frame, double typeCode, double startByte,
                             bool lenient, double previous);
LiteralOutcome LiteralJ1939Val(const std::string& message, double typeCode, double startByte,
                               bool lenient, double previous);
LiteralOutcome LiteralJ1939BitsVal(const std::string& message, double typeCode, double startBit,
                                   double bitLength, bool lenient, double previous);

LiteralOutcome LiteralTimeConv(const std::string& text);
LiteralOutcome LiteralHmsToMsec(double value, double previous);

LiteralOutcome LiteralVal(const std::string& text, bool lenient);
LiteralOutcome LiteralNMEAPos(const std::wstring& position, const std::wstring& hemisphere,
                              double previous);

}  // namespace lum::test
