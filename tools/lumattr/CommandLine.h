// How commands describe their options and arguments. The library that reads the command line stands
// behind this header in one source: its own takes seconds to compile, wherever it is included.
#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace lum::tool {

/// An option, flag or argument of a command; copies are the same one. Each member describes it
/// further and returns it.
class COption {
 public:
  explicit COption(CLI::Option* option) : m_option(option) {}

  const COption& Required() const;
  /// What the help calls the value.
  const COption& TypeName(const char* name) const;
  /// The help tells the value it has by itself.
  const COption& ShowDefault() const;
  /// Without the option the environment's variable counts.
  const COption& Environment(const char* variable) const;
  const COption& Excludes(const COption& other) const;
  const COption& Within(int least, int most) const;
  const COption& OneOf(std::initializer_list<const char*> words) const;
  /// Also none at all.
  const COption& AnyNumber() const;
  /// One value each time the option is given: what follows is none of them.
  const COption& OneEach() const;

  /// Whether the command line or the environment has it.
  bool IsGiven() const;

 private:
  CLI::Option* m_option;
};

/// The tool, or one of its commands; copies are the same one. Variables must live until the command
/// has run; what does not fit them is refused before.
class CCommand {
 public:
  explicit CCommand(CLI::App* app) : m_app(app) {}

  CCommand Subcommand(const char* name, const char* description) const;
  /// "--name" is an option with a value, "NAME" an argument.
  COption Option(const char* name, std::string& variable, const char* description) const;
  COption Option(const char* name, std::vector<std::string>& variable,
                 const char* description) const;
  COption Option(const char* name, int& variable, const char* description) const;
  COption Option(const char* name, std::size_t& variable, const char* description) const;
  /// An argument that stands in the help alone.
  COption Option(const char* name, const char* description) const;
  /// An option without a value.
  COption Flag(const char* name, bool& variable, const char* description) const;
  /// Stands below the help.
  void Footer(const char* text) const;
  /// What is done once the command line has been read.
  void Action(std::function<void()> action) const;

 private:
  CLI::App* m_app;
};

}  // namespace lum::tool
