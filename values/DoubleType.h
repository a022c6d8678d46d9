// CLumDouble, the double kind: the working kind of the decoding formulas. Its operations turn raw
// device data into engineering values; docs/formulas.md has a worked example of each.
#pragma once

#include "values/LumTypeBase.h"

namespace lum::detail {
class CHeldValue;
}

/// A double (IEEE 754 binary64); its text has six digits after the point ("%f"). It alone has
/// compound and binary arithmetic. Compound arithmetic reads its source with GetDouble and takes
/// 0.0 where that is refused.
///
/// The operations of formulas write their result into the value they are called on ("the result")
/// and return 1, or 0 for "no value". What they have in common:
///
/// - A number argument may be of every number kind: double, float, int, unsigned, 64-bit, bool, or
///   free-form text that begins with a number. An 8-bit text comes from a CLumIoName or a free-form
///   value, a wide text from a CLumName as well.
/// - Arguments are read in order. The first that holds no number ends the operation: it returns 0
///   and the result stays as it was. Where "unchecked" is said, such an argument counts as 0.0, or
///   as the empty text, instead.
/// - An argument that is taken as an integer is truncated toward zero. Not-a-number and infinities
///   are no integers: the operation then fails as it does on other bad input.
/// - Arguments are not changed, Asin and Acos apart. The result may be one of the arguments.
/// - Angles are in degrees. Nothing depends on the process locale or time zone, but for the offset
///   that UtcToLocal and LocalToUtc ask CExTime for. No operation throws or reports a message, and
///   none keeps state; calls that share values between threads must be serialised by the caller.
///
/// "lenient" turns bad input into a result, so that a formula goes on without a value missing.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumDouble : public CLumType {
 public:
  CLumDouble() = default;
  CLumDouble(double value) noexcept : m_value(value) {}
  CLumDouble(const CLumDouble&) = default;
  CLumDouble(CLumDouble&&) = default;
  CLumDouble& operator=(const CLumDouble&) = default;
  CLumDouble& operator=(CLumDouble&&) = default;
  ~CLumDouble() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumDouble* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  int GetDouble(double& value) const override;
  int SetDouble(double value) override;
  CLumType& operator=(const CLumType& source) override;
  CLumType& operator+=(const CLumType& source) override;
  CLumType& operator-=(const CLumType& source) override;
  CLumType& operator*=(const CLumType& source) override;
  CLumType& operator/=(const CLumType& source) override;

  CLumDouble operator+(const CLumDouble& other) const { return m_value + other.m_value; }
  CLumDouble operator-(const CLumDouble& other) const { return m_value - other.m_value; }
  CLumDouble operator*(const CLumDouble& other) const { return m_value * other.m_value; }
  CLumDouble operator/(const CLumDouble& other) const { return m_value / other.m_value; }

  // ---- Mathematics. Beyond a function's domain the result is what IEEE 754 and the C library make
  // of it, not-a-number for the most part, with code 1, unless something else is said.

  /// The sine and the cosine of an angle in degrees.
  int Sin(CLumType& degrees) override;
  int Cos(CLumType& degrees) override;
  /// The arc sine (-90 to 90) and the arc cosine (0 to 180), in degrees. A value above 1 or below
  /// -1 is clamped to that bound, and the bound is written back into the argument by its SetDouble.
  int Asin(CLumType& value) override;
  int Acos(CLumType& value) override;
  /// The square root. Of a negative value: 0.0 with code 0.
  int Sqr1D(CLumType& value) override;
  /// `base` to the power of `exponent`.
  int Pow1D(CLumType& base, CLumType& exponent) override;
  /// The base-10 logarithm. Of zero and below: code 0, the result stays.
  int Log1D(CLumType& value) override;
  /// The value with its sign changed. Inverse does the same: it takes no reciprocal.
  int Neg(CLumType& value) override;
  int Inverse(CLumType& value) override;
  /// The integer part, truncated toward zero: -2.7 gives -2.
  int Int(CLumType& value) override;
  /// The remainder of the division, with the sign of the dividend ("fmod"); divided by zero it is
  /// not-a-number, with code 1.
  int Modulo(CLumType& dividend, CLumType& divisor) override;
  /// The direction of the vector, clockwise from north in degrees, when `first` is its east and
  /// `second` its north component. From 0 up to 360; only a direction so little west of north that
  /// no double below 360 is closer gives 360 itself. The zero vector gives 0.
  int Bearing(CLumType& first, CLumType& second) override;
  /// The roll angle about the vessel's own axis, in degrees, from Euler roll and pitch in degrees.
  /// Unchecked. A roll that is not finite gives code 0, the result stays.
  int FromEulerRoll(CLumType& roll, CLumType& pitch) override;

  // ---- Comparison: 1.0 for true, 0.0 for false.

  /// 1.0 for zero and above, -1.0 below. Not-a-number gives -1.0.
  int Sign(CLumType& value) override;
  int IsNull(CLumType& value) override;
  /// Whether the two are no further apart than `tolerance`, bounds included.
  int IsEqual(CLumType& first, CLumType& second, CLumType& tolerance) override;
  int IsGreater(CLumType& first, CLumType& second) override;
  int IsLess(CLumType& first, CLumType& second) override;
  /// Whether the value lies between the bounds, which may come in either order and are included.
  /// Unchecked; always code 1.
  int ValueInRange(CLumType& value, CLumType& firstBound, CLumType& secondBound) override;

  // ---- Selection

  /// The value, no larger than `upper` and no smaller than `lower`; with the lower bound above the
  /// upper one it is always `lower`.
  int ClipValue(CLumType& value, CLumType& lower, CLumType& upper) override;
  /// The value in any case; code 1 when it lies between the bounds, which are included, else 0.
  int GateValue(CLumType& value, CLumType& lower, CLumType& upper) override;
  /// The value; when it is exactly the marker by which a device says "invalid": 0.0 with code 0.
  /// Unchecked.
  int CheckInValid(CLumType& value, CLumType& invalidMarker) override;
  /// `firstChoice` when the selector is 0.0, else `secondChoice`. Unchecked; always code 1.
  int SelectValue(CLumType& firstChoice, CLumType& secondChoice, CLumType& selector) override;

  // ---- Records. Type codes of fields, for BinVal, CanVal, J1939Val and J1939BitsVal:
  //
  //   code | field                           | bytes |
  //      1 | signed 8-bit integer            |     1 | J1939BitsVal: unsigned
  //      2 | signed 16-bit integer           |     2 |
  //      3 | signed 32-bit integer           |     4 |
  //      4 | IEEE 754 binary32               |     4 |
  //      5 | IEEE 754 binary64               |     8 |
  //      6 | unsigned 8-bit integer          |     1 |
  //      7 | unsigned 16-bit integer         |     2 |
  //      8 | unsigned 32-bit integer         |     4 | J1939BitsVal: signed
  //      9 | "%x" text, unsigned 32-bit      |       | BinVal only
  //     10 | "%hx" text, unsigned 16-bit     |       | BinVal only
  //     11 | "%x" text, bits of a binary32   |       | BinVal only
  //     12 | signed 64-bit integer           |     8 | J1939Val only
  //
  // A positive code takes the bytes least significant first (little-endian), its negative most
  // significant first (big-endian). A code's fraction does not count.

  /// The number that the bytes of a record, or a hexadecimal text, begin with.
  ///
  ///     record, as an 8-bit text:  byte 0 | byte 1 | byte 2 | ...
  ///
  /// Codes 1 to 8 take the first bytes of the record, NULs included. Codes 9 to 11 scan the record
  /// as the C runtime does; a negative one reverses the bytes of the number. Unchecked. A code that
  /// is none of 1 to 11, a record that is too short or a text without a hexadecimal number: code 0,
  /// or 1 when lenient; the result stays in both cases.
  int BinVal(CLumType& record, CLumType& typeCode, bool lenient) override;
  /// Bit number `bit` of the value's integer part: 0.0 or 1.0; 0.0 or -1.0 for negative values. In
  /// full, with q = value / 2^bit and i() truncating toward zero: i(q) + 2 * i(-q / 2). Unchecked.
  /// A q whose integer part is beyond a signed 32-bit integer, or none: code 0, the result stays.
  int BitVal(CLumType& value, CLumType& bit) override;
  /// The reading of one channel, 0 to 7, out of the text response of an analogue input module.
  ///
  ///     character  0 .. 4 | 5 .. 11   | 12 .. 18  | ... | 54 .. 60
  ///                header | channel 0 | channel 1 | ... | channel 7
  ///                  >    | +01.234   | -00.500   |
  ///
  /// The channel's seven characters are scanned as "%lf"; without a number there: 0.0 with code 0.
  /// Another channel number: code 0, the result stays. Unchecked.
  int AdamVal(CLumType& response, CLumType& channel) override;

  // ---- Frames, as interfaces to a bus write them: lines of hexadecimal text. A line is taken
  // apart into runs of at most so many characters, blanks before each skipped. A run of a data byte
  // counts as far as it is hexadecimal, a sign included: "ZZ" is 0, "1G" is 1. The results are raw:
  // scale and offset are the formula's business.

  /// A field out of the data bytes of a CAN frame (ISO 11898).
  ///
  ///     standard:  123 8 3412000000000000        extended:  98FEF100 8 3412000000000000
  ///                |   | |                                  |        | |
  ///                |   | data bytes 0, 1, ...               |        | data bytes 0, 1, ...
  ///                |   data length code                     |        data length code
  ///                identifier, 3 digits                     identifier, 8 digits
  ///
  /// (drawn with blanks; usually there are none). The identifier has 8 digits when its first is 8
  /// or above, else 3. The data length code is one digit; at most 8 bytes are read however large it
  /// is. `startByte` is the field's first byte, counted from 0. Unchecked. Fewer bytes in the text
  /// than the data length code says, a type code that is none of 1 to 8, or a field that is not
  /// within the bytes read (a negative start byte included): code 0 and the result stays; when
  /// lenient, 0.0 with code 1.
  int CanVal(CLumType& frame, CLumType& typeCode, CLumType& startByte, bool lenient) override;
  /// A field out of the data bytes of a message of SAE J1939-21.
  ///
  ///     character  0 | 1 .. 2 | 3 .. 4 | 5 .. 9 | 10 | 11 .. 12 | 13 .. 14 | ... | last
  ///                . |   hh   |   ..   | hhhhh  |  . |  byte 0  |  byte 1  | ... |  .
  ///
  /// A message of n data bytes has 12 + 2 n characters; its header and its last character are not
  /// used. Otherwise as CanVal, with type code 12 as well. A message without data bytes fails like
  /// one that lacks some.
  int J1939Val(CLumType& message, CLumType& typeCode, CLumType& startByte, bool lenient) override;
  /// A bit field out of the data bytes of a message of SAE J1939-21, drawn at J1939Val.
  ///
  ///     start bit     0 .. 7 | 8 .. 15 | ...       bit 0 is the lowest of byte 0; a field goes on
  ///                   byte 0 | byte 1  | ...       into the next byte's low bits
  ///
  /// `bitLength` is 1 to 63, and a field ends with the 8th byte counted from its first, or with the
  /// data: bits beyond are 0. Type codes 1 to 3 extend the sign of the field's top bit, then the
  /// code's type is taken from the low bits; code 1 is unsigned all the same, and code 8 is signed.
  /// Unchecked. A bit length of 0, a negative start bit and one beyond the data: code 0, the result
  /// stays, lenient or not. Missing bytes, another bit length and a type code that is none of 1 to
  /// 8: code 0 and the result stays; when lenient, 0.0 with code 1.
  int J1939BitsVal(CLumType& message, CLumType& typeCode, CLumType& startBit, CLumType& bitLength,
                   bool lenient) override;

  // ---- Time. A time of day is in milliseconds since midnight, an absolute time in milliseconds
  // since 1970-01-01 00:00 UTC; every day has 86 400 000 of them.

  /// The seconds (not milliseconds) since midnight of an 8-bit text hhmmss.ss, scanned as
  /// "%2d%2d%5lf". Unchecked. A text with fewer than three fields: 0.0 with code 0.
  int TimeConv(CLumType& text) override;
  /// The milliseconds of a number hhmmss.sss; hours beyond 23 count on. A number whose integer part
  /// is beyond a signed 32-bit integer: code 0, the result stays.
  int HmsToMsec(CLumType& value) override;
  /// The absolute time that is nearest to now, of the host's clock, and has this time of day; with
  /// exactly 12 hours between, that of the current day.
  int ExpandTime(CLumType& timeOfDay) override;
  /// The same, nearest to the absolute time `reference`.
  int ExpandTimeEx(CLumType& timeOfDay, CLumType& reference) override;
  /// A time in UTC as local time. A time of day (below one day) keeps within a day, but may become
  /// negative; an absolute time is shifted.
  int UtcToLocal(CLumType& time) override;
  /// A local time as UTC, by the opposite rule: a time of day (one day at most) is shifted, perhaps
  /// beyond its day; of an absolute time the UTC time of day is left.
  int LocalToUtc(CLumType& time) override;
  /// A two-digit year with its century: below 80 in 2000, else in 1900.
  int YyToCcyy(CLumType& year) override;
  /// The absolute time of a UTC date and a time of day. The year is 1970 to 3000, the month 1 to
  /// 12, the day 1 to 31; days that a month does not have count on into the next. Other dates: code
  /// 0, the result stays. The same in every time zone.
  int CYMDMsecToMsec(CLumType& year, CLumType& month, CLumType& day, CLumType& msecOfDay) override;

  // ---- Texts

  /// The number that an 8-bit text begins with, scanned as "%lf"; of an argument without 8-bit text
  /// its number. Without either: 0.0 with code 0, or 1 when lenient.
  int Val(CLumType& textOrNumber, bool lenient) override;
  /// A latitude or longitude in decimal degrees from wide texts, as NMEA 0183 sentences write it:
  ///
  ///     position  4807.038   01131.000        hemisphere  N, S, E or W
  ///               ddmm.mmm   dddmm.mmm
  ///
  /// A hemisphere of exactly "S" or "W" makes it negative; the position's own sign does not count.
  /// A position without a number gives 0.0 with code 1. An empty text of the two: code 0, the
  /// result stays.
  int NMEAPos(CLumType& position, CLumType& hemisphere) override;

 private:
  friend class lum::detail::CHeldValue;

  double m_value = 0.0;
};
