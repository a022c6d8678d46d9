// Tests of decoding/TimeStamp.h: seconds are the nearest doubles, dates are those of the calendar.
#include "decoding/TimeStamp.h"

#include <gtest/gtest.h>

#include <charconv>
#include <optional>
#include <string>

using lum::decoding::detail::CLogCursor;
using lum::decoding::detail::TakeCivilTime;
using lum::decoding::detail::TakeSeconds;
using lum::decoding::detail::TakeTimeInParentheses;

namespace {

using Reader = std::optional<double> (*)(CLogCursor&);

struct StampCase {
  std::string text;
  std::optional<double> seconds;
  std::size_t taken;
};

void Check(Reader reader, const StampCase& row) {
  SCOPED_TRACE(row.text);
  CLogCursor cursor(row.text);
  EXPECT_EQ(reader(cursor), row.seconds);
  EXPECT_EQ(cursor.Place(), row.taken);
}

}  // namespace

TEST(TimeStamps, SecondsAreTheNearestDoubles) {
  const StampCase rows[] = {
      {"1436509052.249713", 1436509052.249713, 17},
      {"0.000001 ", 0.000001, 8},
      {"7)", 7.0, 1},
      {"9007199254740.992", 9007199254740.992, 17},
      {"9007199254740.993", 9007199254740.993, 17},
      {"0.1234567890123456789012345", 0.1234567890123456789012345, 27},
      {"123456789012345678901234567890", 123456789012345678901234567890.0, 30},
      {"", std::nullopt, 0},
      {".5", std::nullopt, 0},
      {"1.", std::nullopt, 0},
      {"-1", std::nullopt, 0},
      {"nan", std::nullopt, 0},
      {std::string(400, '9'), std::nullopt, 0},
  };
  for (const StampCase& row : rows) {
    Check(TakeSeconds, row);
  }
}

TEST(TimeStamps, SecondsOfAnyNumberOfDigitsAreTheNearestDoubles) {
  for (std::size_t whole = 1; whole <= 20; ++whole) {
    for (std::size_t fraction = 0; fraction <= 20; ++fraction) {
      std::string text = std::string("73910826457391082645").substr(0, whole);
      text += fraction > 0 ? "." + std::string("50918273645091827364").substr(0, fraction) : "";
      double expected = 0.0;
      std::from_chars(text.data(), text.data() + text.size(), expected);
      for (const std::string behind : {"", ")", ") can0 123#", " 12345678901234567890"}) {
        Check(TakeSeconds, {text + behind, expected, text.size()});
      }
    }
  }
}

TEST(TimeStamps, DatesCountFrom1970) {
  const StampCase rows[] = {
      {"1970-01-01 00:00:00", 0.0, 19},
      {"2015-07-10 06:17:32.249713)", 1436509052.249713, 26},
      {"2015-07-10T06:17:32Z ", 1436509052.0, 20},
      {"2015-07-10T08:17:32.5+02:00", 1436509052.5, 27},
      {"2015-07-10T01:17:32-05:00", 1436509052.0, 25},
      {"2000-02-29 00:00:00", 951782400.0, 19},
      {"2024-12-31 23:59:60", 1735689600.0, 19},
      {"0001-01-01 00:00:00", -62135596800.0, 19},
      {"9999-12-31 23:59:59", 253402300799.0, 19},
      {"1969-12-31 23:59:59.5", -0.5, 21},
      {"2015-07-10 06:17:32.1234567890", 1436509052.123456, 30},
      {"2100-02-29 00:00:00", std::nullopt, 0},
      {"0000-01-01 00:00:00", std::nullopt, 0},
      {"2015-xx-01 00:00:00", std::nullopt, 0},
      {"2015-00-01 00:00:00", std::nullopt, 0},
      {"2015-07 10 00:00:00", std::nullopt, 0},
      {"2015-07-xx 00:00:00", std::nullopt, 0},
      {"2015-07-00 00:00:00", std::nullopt, 0},
      {"2015-07-10 06.17:32", std::nullopt, 0},
      {"2015-07-10 06:xx:32", std::nullopt, 0},
      {"2015-07-10 06:17", std::nullopt, 0},
      {"2015-07-10 06:17:xx", std::nullopt, 0},
      {"2015-13-01 00:00:00", std::nullopt, 0},
      {"2015-04-31 00:00:00", std::nullopt, 0},
      {"2015-07-10 24:00:00", std::nullopt, 0},
      {"2015-07-10 00:60:00", std::nullopt, 0},
      {"2015-07-10 00:00:61", std::nullopt, 0},
      {"2015-07-10 00:00:00.", std::nullopt, 0},
      {"2015-07-10 00:00:00+2", std::nullopt, 0},
      {"2015-07-10", std::nullopt, 0},
      {"15-07-10 00:00:00", std::nullopt, 0},
  };
  for (const StampCase& row : rows) {
    Check(TakeCivilTime, row);
  }
}

TEST(TimeStamps, ParenthesesHoldEitherForm) {
  const StampCase rows[] = {
      {"(000.000123)  can0", 0.000123, 12},
      {"(2015-07-10 06:17:32.249713) x", 1436509052.249713, 28},
      {"(1.5", std::nullopt, 0},
      {"( 1.5)", std::nullopt, 0},
      {"()", std::nullopt, 0},
      {"1.5", std::nullopt, 0},
      {"(1.5s)", std::nullopt, 0},
      {"(2015-07-10 06:17:32", std::nullopt, 0},
  };
  for (const StampCase& row : rows) {
    Check(TakeTimeInParentheses, row);
  }
}
