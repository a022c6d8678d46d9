// The texts of JSON, and how objects and arrays are put together.
#include "tools/lumattr/Json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace lum::tool {
namespace {

struct Printed {
  CJson value;
  const char* text;
};

void ExpectTexts(std::initializer_list<Printed> rows) {
  for (const Printed& row : rows) {
    EXPECT_EQ(row.value.Text(), row.text);
    EXPECT_EQ(row.value.IndentedText(), row.text);
  }
}

TEST(Json, PrintsNullAndTruthValues) {
  ExpectTexts({{{}, "null"}, {true, "true"}, {false, "false"}});
}

TEST(Json, PrintsWholeNumbersExactly) {
  ExpectTexts({{0, "0"},
               {std::numeric_limits<int>::min(), "-2147483648"},
               {std::numeric_limits<unsigned int>::max(), "4294967295"},
               {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"}});
}

TEST(Json, PrintsDoublesSoThatTheyReadBackAndStayDoubles) {
  ExpectTexts({{0.0, "0.0"},
               {-0.0, "-0.0"},
               {1.0, "1.0"},
               {0.1, "0.1"},
               {0.1 + 0.2, "0.30000000000000004"},
               {-2.5e-7, "-2.5e-07"},
               {1e15, "1e+15"},
               {123456789.0, "123456789.0"},
               {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
               {std::numeric_limits<double>::denorm_min(), "5e-324"}});
}

TEST(Json, PrintsDoublesThatAreNotFiniteAsNull) {
  const double infinity = std::numeric_limits<double>::infinity();
  ExpectTexts({{infinity, "null"},
               {-infinity, "null"},
               {std::numeric_limits<double>::quiet_NaN(), "null"}});
}

TEST(Json, EscapesInTextsWhatJsonOrATerminalMustNotHave) {
  using std::string_literals::operator""s;
  ExpectTexts({{"", R"("")"},
               {"plain / text", R"("plain / text")"},
               {"\"\\", R"("\"\\")"},
               {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
               {"a\0b\x1b"s, R"("a\u0000b\u001b")"},
               {"\x7f\xc2\x80\xc2\x9b\xc2\x9f", R"("\u007f\u0080\u009b\u009f")"},
               {"\x7e\xc2\xa0\xe2\x9b\xb5", "\"\x7e\xc2\xa0\xe2\x9b\xb5\""},
               {"H\xc3\xb6he \xf0\x9f\x8c\x8a", "\"H\xc3\xb6he \xf0\x9f\x8c\x8a\""}});
}

TEST(Json, RefusesToPrintTextsThatAreNoUtf8) {
  for (const char* text : {"H\xf6he", "\xc3", "\xed\xa0\x80"}) {
    EXPECT_THROW((void)CJson(text).Text(), std::exception) << text;
  }
}

TEST(Json, PrintsObjectsAndArraysWithoutAnything) {
  ExpectTexts({{CJson::Object(), "{}"}, {CJson::Array(), "[]"}});
  ExpectTexts({{std::vector<std::string>(), "[]"}});
}

TEST(Json, KeepsMembersInTheOrderInWhichTheyCame) {
  CJson json;
  json.Set("z", 1);
  json.Set("a \"b\"", "text");
  json.Set("", CJson());
  json.Set("z", std::vector<std::string>{"x", "y"});
  EXPECT_EQ(json.Text(), R"({"z":["x","y"],"a \"b\"":"text","":null})");
}

TEST(Json, KeepsElementsInTheOrderInWhichTheyCame) {
  CJson json;
  json.Add(2);
  json.Add("1");
  json.Add(CJson());
  json.Add(CJson::Array());
  EXPECT_EQ(json.Text(), R"([2,"1",null,[]])");
}

TEST(Json, IndentsByTwoBlanksALevel) {
  CJson inner;
  inner.Set("b", true);
  inner.Set("c", CJson::Object());
  CJson list;
  list.Add(std::move(inner));
  list.Add(0.5);
  CJson json;
  json.Set("a", std::move(list));
  EXPECT_EQ(json.Text(), R"({"a":[{"b":true,"c":{}},0.5]})");
  EXPECT_EQ(json.IndentedText(), R"({
  "a": [
    {
      "b": true,
      "c": {}
    },
    0.5
  ]
})");
}

}  // namespace
}  // namespace lum::tool
