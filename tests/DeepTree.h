// How deep the deepest trees of the tests are: a function that calls itself once a level would
// exhaust the stack many times over.
#pragma once

namespace lum::test {

#if defined(_WIN32)
// A stack of 1 or 2 MB. Deeper trees cost Wine's heap, which searches, minutes.
inline constexpr int kDeepestLevel = 100'000;
#elif defined(LUM_SANITIZED)
// A stack of 8 MB, and frames are larger than usual.
inline constexpr int kDeepestLevel = 200'000;
#else
inline constexpr int kDeepestLevel = 1'000'000;
#endif

}  // namespace lum::test
