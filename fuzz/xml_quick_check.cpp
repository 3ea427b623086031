// The quick well-formedness check against the conforming reader: whatever the quick check vouches
// for, the reader accepts too, and reads into the same text.
#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlQuickCheck.h>
#include <OrbGlobal/Xml/XmlWellFormed.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (!norva::IsCertainlyWellFormedUtf8(text)) return 0;
  const QByteArray bytes(text.data(), static_cast<qsizetype>(size));
  try {
    if (norva::ReadWellFormedUtf8(bytes) != bytes) std::abort();
  } catch (const norva::EXMLError&) {
    std::abort();  // vouched for a document the reader refuses
  }
  return 0;
}
