#include "tools/lumattr/CommandLine.h"

#include <CLI/CLI.hpp>
#include <utility>

namespace lum::tool {
namespace {

/// The library that reads the command line takes "-1" for the largest number.
std::string WhyNotUnsigned(const std::string& text) {
  return text.starts_with('-') ? text + " is negative" : "";
}

}  // namespace

const COption& COption::Required() const {
  m_option->required();
  return *this;
}

const COption& COption::TypeName(const char* name) const {
  m_option->type_name(name);
  return *this;
}

const COption& COption::ShowDefault() const {
  m_option->capture_default_str();
  return *this;
}

const COption& COption::Environment(const char* variable) const {
  m_option->envname(variable);
  return *this;
}

const COption& COption::Excludes(const COption& other) const {
  m_option->excludes(other.m_option);
  return *this;
}

const COption& COption::Within(int least, int most) const {
  m_option->check(CLI::Range(least, most));
  return *this;
}

const COption& COption::OneOf(std::initializer_list<const char*> words) const {
  m_option->check(CLI::IsMember(std::vector<std::string>(words.begin(), words.end())));
  return *this;
}

const COption& COption::AnyNumber() const {
  m_option->expected(0, -1);
  return *this;
}

const COption& COption::OneEach() const {
  m_option->allow_extra_args(false);
  return *this;
}

bool COption::IsGiven() const { return m_option->count() > 0; }

CCommand CCommand::Subcommand(const char* name, const char* description) const {
  return CCommand(m_app->add_subcommand(name, description));
}

COption CCommand::Option(const char* name, std::string& variable, const char* description) const {
  return COption(m_app->add_option(name, variable, description));
}

COption CCommand::Option(const char* name, std::vector<std::string>& variable,
                         const char* description) const {
  return COption(m_app->add_option(name, variable, description));
}

COption CCommand::Option(const char* name, int& variable, const char* description) const {
  return COption(m_app->add_option(name, variable, description));
}

COption CCommand::Option(const char* name, std::size_t& variable, const char* description) const {
  return COption(m_app->add_option(name, variable, description)->check(WhyNotUnsigned));
}

COption CCommand::Option(const char* name, const char* description) const {
  return COption(m_app->add_option(name, CLI::callback_t(), description));
}

COption CCommand::Flag(const char* name, bool& variable, const char* description) const {
  return COption(m_app->add_flag(name, variable, description));
}

void CCommand::Footer(const char* text) const { m_app->footer(text); }

void CCommand::Action(std::function<void()> action) const { m_app->callback(std::move(action)); }

}  // namespace lum::tool
