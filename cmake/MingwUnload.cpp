// Gives back what the C++ runtime in a MinGW library holds, when the library is unloaded: the
// memory it sets aside for exceptions when there is no other. Each library has a runtime of its
// own.
namespace __gnu_cxx {  // NOLINT(bugprone-reserved-identifier,cert-dcl51-cpp): the runtime's name
void __freeres();      // NOLINT(bugprone-reserved-identifier,cert-dcl51-cpp)
}

namespace {

struct RuntimeMemory {
  constexpr RuntimeMemory() = default;
  ~RuntimeMemory() { __gnu_cxx::__freeres(); }
};

// Built first, so that it is the last to be taken down.
constexpr int kFirst = 101;
__attribute__((init_priority(kFirst))) RuntimeMemory g_runtimeMemory;

}  // namespace
