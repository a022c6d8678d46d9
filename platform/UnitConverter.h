// CLumUnitCnv: the host family's unit converter, carried by CLumType for its users.
#pragma once

#include "platform/PlatformExport.h"

/// Converts between the user's unit and the system's unit by a factor and an offset. Threads: never
/// changes but by assignment; may be used in several threads while none assigns to it.
class CLumUnitCnv {
 public:
  CLumUnitCnv() = default;
  CLumUnitCnv(double factor, double offset) noexcept : m_factor(factor), m_offset(offset) {}

  double Factor() const noexcept { return m_factor; }
  double Offset() const noexcept { return m_offset; }
  double ToSystem(double user) const noexcept { return user * m_factor + m_offset; }
  double ToUser(double system) const noexcept { return (system - m_offset) / m_factor; }

  friend bool operator==(const CLumUnitCnv&, const CLumUnitCnv&) = default;

 private:
  double m_factor = 1.0;
  double m_offset = 0.0;
};
