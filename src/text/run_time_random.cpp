#include "text/run_time_random.h"

#include <cstring>

namespace tolvane::text {

float RunTimeRandom::Rnd() {
  m_state = (m_state * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
  return static_cast<float>(m_state) / 16777216.0f;
}

void RunTimeRandom::Randomize(double number) {
  std::uint64_t bits;
  std::memcpy(&bits, &number, sizeof bits);
  auto high = static_cast<std::uint32_t>(bits >> 32);
  std::uint32_t spliced = (((high & 0xFFFFu) ^ (high >> 16)) << 8) & 0xFFFF00u;
  m_state = (m_state & 0xFF0000FFu) | spliced;
}

}  // namespace tolvane::text
