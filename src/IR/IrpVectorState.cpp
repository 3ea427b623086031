#include <IR/IrpVectorState.h>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <immintrin.h>
#define NORVA_X86_VECTOR_STATE 1
#endif

namespace norva {

#ifdef NORVA_X86_VECTOR_STATE
namespace {

__attribute__((target("avx"))) void ZeroUpper() { _mm256_zeroupper(); }

}  // namespace

void CleanUpperVectorHalves() {
  static const bool hasAvx = __builtin_cpu_supports("avx");
  if (hasAvx) ZeroUpper();
}
#else
void CleanUpperVectorHalves() {}
#endif

}  // namespace norva
