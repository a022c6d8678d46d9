// The walk itself.
#include "tests/memory/RefusalWalk.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <new>

#include "tests/Allocations.h"

namespace lum::test {
namespace {

/// More than any operation here allocates: one that never gets enough would walk for ever.
constexpr int kMostAllocations = 10'000;

int g_allRefusals = 0;

using Refuse = void (*)(int allowed);

struct Outcome {
  bool done = false;
  bool refused = false;
};

Outcome RunRefused(const WalkedRun& walked, Refuse refuse, int allowed) {
  Outcome outcome;
  refuse(allowed);
  try {
    outcome.done = walked.run();
  } catch (const std::bad_alloc&) {
  }
  outcome.refused = RefusedAllocations() != 0;
  LimitAllocations(-1);
  return outcome;
}

struct Expected {
  std::string before;
  std::string after;
};

/// Why the state is not what it should be when the operation was not done; empty when it is.
std::string FaultAfterFailure(const WalkedRun& walked, const Expected& expected) {
  const std::string found = walked.describe();
  if (walked.guarantee == Guarantee::Unchanged && found != expected.before) {
    return "it left\n  " + found + "\nwhere there was\n  " + expected.before;
  }
  if (found.find(kBroken) != std::string::npos) {
    return "it left\n  " + found;
  }
  if (!walked.run()) {
    return "it is not done again";
  }
  const std::string again = walked.describe();
  return again == expected.after ? ""
                                 : "done again it gave\n  " + again + "\nnot\n  " + expected.after;
}

std::string FaultOf(const WalkedRun& walked, Outcome outcome, const Expected& expected) {
  if (!outcome.done) {
    return outcome.refused ? FaultAfterFailure(walked, expected) : "it is not done with memory";
  }
  const std::string found = walked.describe();
  return found == expected.after ? "" : "done it gave\n  " + found + "\nnot\n  " + expected.after;
}

Expected RunWithMemory(const WalkedRun& walked) {
  Expected expected;
  walked.withState([&] {
    expected.before = walked.describe();
    EXPECT_TRUE(walked.run()) << walked.name;
    expected.after = walked.describe();
  });
  EXPECT_EQ(expected.before.find(kBroken), std::string::npos) << walked.name << expected.before;
  return expected;
}

void Walk(const WalkedRun& walked, Refuse refuse, const char* which, const Expected& expected) {
  // Always one allocation, whatever it holds.
  std::string fault(sizeof fault, ' ');
  for (int allowed = 0; allowed < kMostAllocations; ++allowed) {
    const int live = LiveAllocations();
    Outcome outcome;
    walked.withState([&] {
      outcome = RunRefused(walked, refuse, allowed);
      const std::string found = FaultOf(walked, outcome, expected);
      fault.assign(found);
    });
    if (const int left = LiveAllocations() - live; left != 0) {
      fault += "\n" + std::to_string(left) + " allocations are left over";
    }
    if (!fault.empty()) {
      ADD_FAILURE() << walked.name << ", " << which << " after " << allowed << ": " << fault;
      return;
    }
    if (!outcome.refused) {
      EXPECT_TRUE(allowed > 0 || !walked.needsMemory) << walked.name << " needs no memory";
      return;
    }
    ++g_allRefusals;
  }
  ADD_FAILURE() << walked.name << " never had enough memory";
}

/// Tells at the end of the program how much the walks have done: scripts/check-surroundings reads
/// it.
class CRefusalCount : public testing::Environment {
 public:
  void TearDown() override { std::printf("%d allocations were refused\n", g_allRefusals); }
};

[[maybe_unused]] const testing::Environment* const g_refusalCount =
    testing::AddGlobalTestEnvironment(new CRefusalCount);

}  // namespace

void WalkRefusals(const WalkedRun& walked) {
  const Expected expected = RunWithMemory(walked);
  Walk(walked, &RefuseOneAllocation, "the allocation refused", expected);
  Walk(walked, &LimitAllocations, "all allocations refused", expected);
}

int AllRefusals() { return g_allRefusals; }

}  // namespace lum::test
