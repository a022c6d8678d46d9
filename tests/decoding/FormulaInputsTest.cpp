// What formulas can name.
#include "decoding/FormulaInputs.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lum::decoding {
namespace {

std::string TextOf(const CLumType& value) {
  CStringA text;
  EXPECT_NE(value.GetName(text), 0);
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

double NumberOf(const CLumType& value) {
  double number = 0.0;
  EXPECT_NE(value.GetDouble(number), 0);
  return number;
}

TEST(FormulaInputs, AreFoundByTheirNames) {
  std::size_t place = 0;
  for (const InputName& input : InputTable()) {
    EXPECT_EQ(FindInput(input.name), static_cast<Input>(place)) << input.name;
    EXPECT_EQ(CFormulaInputs::IsText(static_cast<Input>(place)), input.isText) << input.name;
    EXPECT_FALSE(input.meaning.empty());
    ++place;
  }
  EXPECT_EQ(FindInput("frame"), Input::Frame);
  EXPECT_EQ(FindInput("raw"), Input::Raw);
  for (const std::string_view name : {"", "Frame", "frame ", "field", "fram"}) {
    EXPECT_EQ(FindInput(name), std::nullopt) << name;
  }
}

TEST(FormulaInputs, AreMissingUntilTheyAreSetAndAfterClear) {
  CFormulaInputs inputs;
  const auto expectMissing = [&inputs] {
    for (std::size_t i = 0; i < kInputCount; ++i) {
      EXPECT_EQ(inputs.State(static_cast<Input>(i)), InputState::Missing) << i;
    }
    EXPECT_EQ(inputs.FieldState(0), InputState::Missing);
  };
  expectMissing();
  inputs.SetText(Input::Frame, "1230");
  inputs.SetText(Input::Line, "");
  inputs.SetNumber(Input::Pgn, 0.0);
  const std::vector<std::string_view> fields = {"a", ""};
  inputs.SetFields(fields);
  EXPECT_EQ(inputs.State(Input::Frame), InputState::Present);
  EXPECT_EQ(inputs.State(Input::Line), InputState::Empty);
  EXPECT_EQ(inputs.State(Input::Pgn), InputState::Present);
  EXPECT_EQ(inputs.State(Input::Message), InputState::Missing);
  EXPECT_EQ(inputs.FieldState(0), InputState::Present);
  EXPECT_EQ(inputs.FieldState(1), InputState::Empty);
  EXPECT_EQ(inputs.FieldState(2), InputState::Missing);
  inputs.Clear();
  expectMissing();
}

TEST(FormulaInputs, GiveTheValuesOfTheRecordAndNotOfTheOneBefore) {
  CFormulaInputs inputs;
  const std::string longText(300, 'x');
  const std::string texts[] = {"first", longText, "", std::string("a\0b", 3), "last"};
  double number = 0.0;
  for (const std::string& text : texts) {
    const std::vector<std::string_view> fields = {"zero", text};
    inputs.Clear();
    inputs.SetText(Input::Line, text);
    inputs.SetNumber(Input::Time, ++number);
    inputs.SetFields(fields);
    for (int again = 0; again < 2; ++again) {
      EXPECT_EQ(TextOf(inputs.Value(Input::Line)), text);
      EXPECT_EQ(TextOf(inputs.Field(1)), text);
      EXPECT_EQ(TextOf(inputs.Field(0)), "zero");
      EXPECT_EQ(NumberOf(inputs.Value(Input::Time)), number);
    }
    EXPECT_EQ(inputs.Text(Input::Line), text);
    EXPECT_EQ(inputs.FieldText(1), text);
    EXPECT_EQ(inputs.ReadNumber(Input::Time), number);
  }
}

TEST(FormulaInputs, CanBeSetAnewWithinARecord) {
  CFormulaInputs inputs;
  inputs.SetText(Input::Frame, "one");
  inputs.SetNumber(Input::Raw, 1.0);
  EXPECT_EQ(TextOf(inputs.Value(Input::Frame)), "one");
  EXPECT_EQ(NumberOf(inputs.Value(Input::Raw)), 1.0);
  inputs.SetText(Input::Frame, "two");
  inputs.SetNumber(Input::Raw, 2.0);
  EXPECT_EQ(TextOf(inputs.Value(Input::Frame)), "two");
  EXPECT_EQ(NumberOf(inputs.Value(Input::Raw)), 2.0);
}

TEST(FormulaInputs, HaveNoFieldBehindTheLastThatHasANumber) {
  CFormulaInputs inputs;
  const std::vector<std::string_view> fields(CFormulaInputs::kMaxFields + 1, "f");
  inputs.SetFields(fields);
  EXPECT_EQ(inputs.FieldState(CFormulaInputs::kMaxFields - 1), InputState::Present);
  EXPECT_EQ(TextOf(inputs.Field(CFormulaInputs::kMaxFields - 1)), "f");
  EXPECT_EQ(inputs.FieldState(CFormulaInputs::kMaxFields), InputState::Missing);
}

}  // namespace
}  // namespace lum::decoding
