#pragma once
// The policies set on the pipes of one open interface. Workers of different pipes read them from
// their own threads while the opener sets them, hence the atomics.

#include <libraries/WINUSB.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace norva {

class TPipePolicies {
 public:
  static bool Known(TPipePolicy policy) {
    return policy == TPipePolicy::ShortPacketTerminate || policy == TPipePolicy::AutoClearStall;
  }

  void Set(std::uint8_t pipeId, TPipePolicy policy, bool value) {
    auto& flags = mFlags[Slot(pipeId)];
    if (value)
      flags.fetch_or(Bit(policy));
    else
      flags.fetch_and(static_cast<std::uint8_t>(~Bit(policy)));
  }

  bool Has(std::uint8_t pipeId, TPipePolicy policy) const {
    return (mFlags[Slot(pipeId)].load() & Bit(policy)) != 0;
  }

 private:
  // Endpoint number and direction: 16 IN and 16 OUT slots.
  static std::size_t Slot(std::uint8_t pipeId) {
    return static_cast<std::size_t>((pipeId & 0x0F) | ((pipeId & 0x80) >> 3));
  }
  static std::uint8_t Bit(TPipePolicy policy) {
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(policy));
  }

  std::array<std::atomic<std::uint8_t>, 32> mFlags{};
};

}  // namespace norva
