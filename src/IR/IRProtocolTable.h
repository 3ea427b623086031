#pragma once
// The table of protocol definitions: one entry per protocol, its name and its definition in the
// IRP notation (docs/ir-protocols.md). Decoding prefers the earlier of two protocols that explain
// a capture equally well.

#include <span>

namespace norva {

struct TIRProtocolEntry {
  const char* Name;
  const char* Definition;
};

std::span<const TIRProtocolEntry> IRProtocolEntries();

}  // namespace norva
