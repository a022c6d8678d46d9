// Configuration files made line by line from the input and then changed by it, beside the model of
// FileObject: the content after every call, the very bytes after every save.
#include "fuzz/FuzzInput.h"
#include "tests/platform/FileObjectRounds.h"

namespace {

class CRounds : public CFileObjectRounds {
 public:
  void Run(lum::fuzz::CChoices choices) {
    m_next = choices;
    StartRound(Random(10));
    CompareAll();
    for (int steps = Random(60); steps > 0; --steps) {
      DoSomething();
      CompareAll();
    }
    CompareSaved();
  }

 private:
  void TestBody() override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static CRounds rounds;
  rounds.Run({data, size});
  return 0;
}
