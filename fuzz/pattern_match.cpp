// Arbitrary pattern and name, cut from the input at its first NUL: the matcher answers (and
// agrees with itself case-sensitively where the texts have no letters), and the finder takes the
// name.
#include <ButtonClasses/ButtonPatterns.h>
#include <Utils/PatternMatch.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const qsizetype cut = bytes.indexOf('\0');
  const QString pattern = QString::fromUtf8(cut < 0 ? bytes : bytes.left(cut));
  const QString name = cut < 0 ? QString() : QString::fromUtf8(bytes.mid(cut + 1));

  const bool exact = norva::PatternMatch(name, pattern, false);
  const bool folded = norva::PatternMatch(name, pattern, true);
  if (exact && !folded) std::abort();  // ignoring case only ever finds more
  if (pattern == name && !pattern.contains(u'\\') && !pattern.contains(u'*') &&
      !pattern.contains(u'+') && !pattern.contains(u'?') && !pattern.contains(u'#') && !exact)
    std::abort();  // a plain pattern matches itself

  norva::TButtonClass found;
  if (norva::FindButtonClass(name, found) && found.IsNone()) std::abort();
  return 0;
}
