#pragma once
// The decoder's arithmetic is scalar SSE. On processors with AVX, code that used the wide
// registers and left their upper halves dirty (Qt's string hashing does, on processors with
// vector AES) makes every scalar SSE instruction after it wait on those halves: decoding then
// runs at half speed. Decoding starts by marking the upper halves clean.

namespace norva {

// VZEROUPPER where the processor has it; nothing elsewhere.
void CleanUpperVectorHalves();

}  // namespace norva
