// What every harness links: a failed expectation of GoogleTest ends the process, which the fuzzer
// takes for a crash and keeps the input of.
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

/// Comes after GoogleTest's own printer, so the message is out by then.
class CEndAtFailure : public testing::EmptyTestEventListener {
  void OnTestPartResult(const testing::TestPartResult& result) override {
    if (result.failed()) {
      std::abort();
    }
  }
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  testing::UnitTest::GetInstance()->listeners().Append(new CEndAtFailure);
  return 0;
}
