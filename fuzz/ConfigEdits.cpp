// Configuration files made line by line from the input and then changed by it, beside the model of
// FileObject: the content after every call, the very bytes after every save.
#include "fuzz/FuzzInput.h"
#include "tests/platform/FileObjectRounds.h"

namespace {

class CRounds : public CFileObjectRounds {
 public:
  void Run(lum::fuzz::CFuzzInput& in) {
    m_next = [&in] { return in.Byte(); };
    StartRound(static_cast<int>(in.Byte()));
    CompareAll();
    for (int step = 0; step < 60 && !in.IsEmpty(); ++step) {
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
  lum::fuzz::CFuzzInput in(data, size);
  rounds.Run(in);
  return 0;
}
