// Walks over the allocations of an operation: it is run again and again, each time with another one
// of its allocations refused, until there was none left to refuse. Each run must keep what is
// promised for that case, and nothing may leak.
#pragma once

#include <functional>
#include <string>

namespace lum::test {

/// What an operation that ran out of memory leaves behind.
enum class Guarantee {
  Unchanged,  ///< All that can be seen is as it was.
  Usable,     ///< Something in between, which is whole and can be used.
};

/// An operation on a state that every run makes anew. `run` answers false, or throws
/// std::bad_alloc, when it was not done. `prepare` makes what `run` needs, if
/// anything.
template <typename State>
struct Operation {
  const char* name;
  Guarantee guarantee;
  std::function<bool(State&)> run;
  std::function<void(State&)> prepare = nullptr;
  bool needsMemory = true;  ///< One that needs none is reported then.
};

/// Stands in the description of a state that is not whole.
inline constexpr const char* kBroken = "BROKEN";

/// What one run is: functions, so that the walk itself is compiled once.
struct WalkedRun {
  const char* name;
  Guarantee guarantee;
  bool needsMemory;
  /// Makes the state, hands it to `use` and destroys it.
  std::function<void(const std::function<void()>& use)> withState;
  std::function<bool()> run;              ///< On the state that is there.
  std::function<std::string()> describe;  ///< All that can be seen of it.
};

/// Walks twice: the allocation alone is refused, and all later ones with it. Failures are reported
/// to GoogleTest.
void WalkRefusals(const WalkedRun& walked);

/// How many allocations all walks of this process have refused.
int AllRefusals();

/// Walks over an operation on a State, which `describe` writes down: two states that cannot be told
/// apart have the same text.
template <typename State, typename Describe>
void WalkRefusals(const Operation<State>& operation, const Describe& describe) {
  State* present = nullptr;
  WalkRefusals({.name = operation.name,
                .guarantee = operation.guarantee,
                .needsMemory = operation.needsMemory,
                .withState =
                    [&](const std::function<void()>& use) {
                      State state;
                      if (operation.prepare) {
                        operation.prepare(state);
                      }
                      present = &state;
                      use();
                    },
                .run = [&] { return operation.run(*present); },
                .describe = [&]() -> std::string { return describe(*present); }});
}

}  // namespace lum::test
