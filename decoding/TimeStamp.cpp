// Reads time stamps. A number whose digits make a whole number below 2^53 is one division of two
// exact doubles, so it is the nearest double; a longer one is left to the standard library.
#include "decoding/TimeStamp.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "decoding/DecimalDigits.h"

namespace lum::decoding::detail {

namespace {

/// Any number of so many digits fits 64 bits.
constexpr std::size_t kMaxCountedDigits = 18;
constexpr std::int64_t kMaxExactNumber = std::int64_t{1} << 53;

using PowersOfTen = std::array<std::int64_t, kMaxCountedDigits + 1>;

constexpr PowersOfTen MakePowersOfTen() {
  PowersOfTen powers{};
  powers[0] = 1;
  for (std::size_t i = 1; i < powers.size(); ++i) {
    powers[i] = powers[i - 1] * 10;
  }
  return powers;
}

constexpr PowersOfTen kPowersOfTen = MakePowersOfTen();

struct StampDigits {
  std::int64_t number = 0;  ///< Of the first kMaxCountedDigits.
  std::size_t count = 0;    ///< Of all.
};

/// The next digits of a text that has a word more, as far as they are eight.
std::size_t TakeWord(std::string_view text, StampDigits& digits) {
  const std::uint64_t word = LoadDigits(text.data() + digits.count);
  const std::size_t found = CountLeadingDigits(word);
  if (found > 0) {
    digits.number = digits.number * kPowersOfTen[found] + NumberOfDigits(word, found);
    digits.count += found;
  }
  return found;
}

StampDigits CountDigits(std::string_view text) {
  StampDigits digits;
  const std::size_t counted = std::min(text.size(), kMaxCountedDigits);
  while (digits.count + kWordDigits <= counted) {
    if (TakeWord(text, digits) < kWordDigits) {
      return digits;
    }
  }
  for (; digits.count < counted && IsDecimalDigit(text[digits.count]); ++digits.count) {
    digits.number = digits.number * 10 + (text[digits.count] & 0xF);
  }
  while (digits.count < text.size() && IsDecimalDigit(text[digits.count])) {
    ++digits.count;
  }
  return digits;
}

/// Digits of any number with a point or none, by the standard library.
std::optional<double> TakeLongNumber(CLogCursor& cursor, std::size_t length) {
  const std::string_view text = cursor.Rest().substr(0, length);
  double seconds = 0.0;
  const std::from_chars_result read =
      std::from_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed);
  if (read.ec != std::errc()) {
    return std::nullopt;
  }
  cursor.MoveTo(cursor.Place() + length);
  return seconds;
}

/// Exactly `count` digits.
std::optional<int> TakeField(CLogCursor& cursor, std::size_t count) {
  const std::string_view text = cursor.Rest().substr(0, count);
  const StampDigits digits = CountDigits(text);
  if (digits.count != count) {
    return std::nullopt;
  }
  cursor.MoveTo(cursor.Place() + count);
  return static_cast<int>(digits.number);
}

bool IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int DaysOfMonth(int year, int month) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return kDays[static_cast<std::size_t>(month - 1)] + (month == 2 && IsLeapYear(year) ? 1 : 0);
}

/// Days from 1970-01-01 on, of the Gregorian calendar.
std::int64_t DaysSince1970(int year, int month, int day) {
  constexpr std::int64_t kDaysBefore1970 = 719'162;
  const std::int64_t before = year - 1;
  std::int64_t days = before * 365 + before / 4 - before / 100 + before / 400 + day - 1;
  for (int earlier = 1; earlier < month; ++earlier) {
    days += DaysOfMonth(year, earlier);
  }
  return days - kDaysBefore1970;
}

std::optional<std::int64_t> TakeDays(CLogCursor& cursor) {
  const auto year = TakeField(cursor, 4);
  if (!year || *year == 0 || !cursor.TakeChar('-')) {
    return std::nullopt;
  }
  const auto month = TakeField(cursor, 2);
  if (!month || *month < 1 || *month > 12 || !cursor.TakeChar('-')) {
    return std::nullopt;
  }
  const auto day = TakeField(cursor, 2);
  if (!day || *day < 1 || *day > DaysOfMonth(*year, *month)) {
    return std::nullopt;
  }
  return DaysSince1970(*year, *month, *day);
}

/// "06:17" as minutes.
std::optional<std::int64_t> TakeMinutes(CLogCursor& cursor) {
  const auto hours = TakeField(cursor, 2);
  if (!hours || *hours > 23 || !cursor.TakeChar(':')) {
    return std::nullopt;
  }
  const auto minutes = TakeField(cursor, 2);
  if (!minutes || *minutes > 59) {
    return std::nullopt;
  }
  return *hours * 60 + *minutes;
}

/// 'Z', "+02:00" or nothing, as minutes east of UTC.
std::optional<std::int64_t> TakeOffset(CLogCursor& cursor) {
  if (cursor.TakeChar('Z')) {
    return 0;
  }
  const bool isWest = cursor.Peek() == '-';
  if (!isWest && cursor.Peek() != '+') {
    return 0;
  }
  cursor.MoveTo(cursor.Place() + 1);
  const auto minutes = TakeMinutes(cursor);
  return minutes && isWest ? -*minutes : minutes;
}

/// Whole seconds and digits behind the point, as far as microseconds.
double JoinFraction(std::int64_t seconds, std::string_view digits) {
  constexpr std::size_t kMaxFraction = 6;
  const StampDigits fraction = CountDigits(digits.substr(0, kMaxFraction));
  const auto scale = static_cast<double>(kPowersOfTen[fraction.count]);
  return (static_cast<double>(seconds) * scale + static_cast<double>(fraction.number)) / scale;
}

/// The seconds behind "06:17:", 60 for a leap second, and their fraction.
std::optional<double> TakeSecondsOfMinute(CLogCursor& cursor, std::int64_t minutes) {
  const auto whole = TakeField(cursor, 2);
  if (!whole || *whole > 60) {
    return std::nullopt;
  }
  std::string_view fraction;
  if (cursor.TakeChar('.')) {
    fraction = cursor.Rest().substr(0, CountDigits(cursor.Rest()).count);
    if (fraction.empty()) {
      return std::nullopt;
    }
    cursor.MoveTo(cursor.Place() + fraction.size());
  }
  const auto offset = TakeOffset(cursor);
  if (!offset) {
    return std::nullopt;
  }
  return JoinFraction((minutes - *offset) * 60 + *whole, fraction);
}

std::optional<double> ReadCivilTime(CLogCursor& cursor) {
  const auto days = TakeDays(cursor);
  if (!days || !(cursor.TakeChar(' ') || cursor.TakeChar('T'))) {
    return std::nullopt;
  }
  const auto minutes = TakeMinutes(cursor);
  if (!minutes || !cursor.TakeChar(':')) {
    return std::nullopt;
  }
  return TakeSecondsOfMinute(cursor, *days * 24 * 60 + *minutes);
}

}  // namespace

std::optional<double> TakeSeconds(CLogCursor& cursor) {
  const std::string_view text = cursor.Rest();
  const StampDigits whole = CountDigits(text);
  if (whole.count == 0) {
    return std::nullopt;
  }
  std::size_t length = whole.count;
  StampDigits fraction;
  if (length < text.size() && text[length] == '.') {
    fraction = CountDigits(text.substr(length + 1));
    if (fraction.count == 0) {
      return std::nullopt;
    }
    length += 1 + fraction.count;
  }
  if (whole.count + fraction.count <= kMaxCountedDigits) {
    const std::int64_t scale = kPowersOfTen[fraction.count];
    const std::int64_t joined = whole.number * scale + fraction.number;
    if (joined <= kMaxExactNumber) {
      cursor.MoveTo(cursor.Place() + length);
      return static_cast<double>(joined) / static_cast<double>(scale);
    }
  }
  return TakeLongNumber(cursor, length);
}

std::optional<double> TakeCivilTime(CLogCursor& cursor) {
  CLogCursor ahead = cursor;
  const std::optional<double> time = ReadCivilTime(ahead);
  if (time) {
    cursor = ahead;
  }
  return time;
}

std::optional<double> TakeTimeInParentheses(CLogCursor& cursor) {
  const std::size_t start = cursor.Place();
  if (!cursor.TakeChar('(')) {
    return std::nullopt;
  }
  std::optional<double> time = TakeSeconds(cursor);
  if (!time || cursor.Peek() != ')') {
    cursor.MoveTo(start + 1);
    time = TakeCivilTime(cursor);
  }
  if (!time || !cursor.TakeChar(')')) {
    cursor.MoveTo(start);
    return std::nullopt;
  }
  return time;
}

}  // namespace lum::decoding::detail
