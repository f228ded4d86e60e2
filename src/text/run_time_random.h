// The run-time's random numbers: Rnd, a 24-bit linear congruential generator, and
// Randomize with a number, which splices bits of that number into the middle of the
// state and keeps the state's low byte. Reseeding with the same number therefore does
// not repeat a sequence; tools that colour by Rnd depend on that exact behaviour.
#pragma once

#include <cstdint>

namespace tolvane::text {

class RunTimeRandom {
 public:
  // The state the run-time starts with.
  static constexpr std::uint32_t kInitialState = 0x50000;

  // Rnd: the next number, at least 0 and below 1, as single precision.
  float Rnd();
  // Randomize number: the upper 32 bits of the number as a double, their two halves
  // combined by exclusive or, take bits 8 to 23 of the state.
  void Randomize(double number);

  std::uint32_t state() const { return m_state; }
  void setState(std::uint32_t state) { m_state = state; }

 private:
  std::uint32_t m_state = kInitialState;
};

}  // namespace tolvane::text
