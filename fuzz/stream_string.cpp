// Arbitrary bytes as a stored string: reading never fails nor reads past the data, and what was
// read saves and loads back unchanged.
#include <OrbGlobal/Model/StreamStrings.h>

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  QBuffer in;
  in.setData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  in.open(QIODevice::ReadOnly);
  const QString text = norva::LoadStringFromStream(in);
  if (4 + 2 * text.size() > static_cast<qsizetype>(size) && !text.isEmpty()) std::abort();

  QBuffer stored;
  stored.open(QIODevice::ReadWrite);
  norva::SaveStringToStream(text, stored);
  if (stored.size() != 4 + 2 * text.size()) std::abort();
  stored.seek(0);
  if (norva::LoadStringFromStream(stored) != text || !stored.atEnd()) std::abort();
  return 0;
}
