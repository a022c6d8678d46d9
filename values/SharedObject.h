// Library-internal: one object for the whole process, made when it is first asked for.
#pragma once

#include <atomic>
#include <memory>

namespace lum::detail {

/// Lives in namespace scope, needs no code to be built, and takes its object down when the library
/// is unloaded or the process ends. Several threads may meet at the first Get. A static variable of
/// a function would do as well, but the runtime that guards it keeps data of its own for each
/// thread, which on Windows stay in the process after the library has left it.
template <typename T>
class CSharedObject {
 public:
  constexpr CSharedObject() = default;
  ~CSharedObject() { delete m_object.exchange(nullptr); }
  CSharedObject(const CSharedObject&) = delete;
  CSharedObject& operator=(const CSharedObject&) = delete;

  T& Get() {
    T* object = m_object.load(std::memory_order_acquire);
    return object != nullptr ? *object : Make();
  }

 private:
  // Of several threads the first one's object stays.
  T& Make() {
    auto made = std::make_unique<T>();
    T* present = nullptr;
    return m_object.compare_exchange_strong(present, made.get(), std::memory_order_acq_rel,
                                            std::memory_order_acquire)
               ? *made.release()
               : *present;
  }

  std::atomic<T*> m_object = nullptr;
};

}  // namespace lum::detail
