// Arbitrary text as a picture's data string: decoding either gives a picture or reports a damaged
// one, and a picture decoded once reads back from the data string it then writes.
#include <NorvaGlobal/Exceptions.h>
#include <OrbGraphics/OrbGraphics.h>

#include <QImageReader>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool ready = [] {
    QImageReader::setAllocationLimit(64);  // megabytes: a tiny header may promise a huge picture
    return true;
  }();
  (void)ready;
  norva::TGraphicContainer container;
  container.SetDataString(
      QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  try {
    if (!container.GetGraphic()) return 0;
  } catch (const norva::ENorvaError&) {
    return 0;  // damaged: reported
  }
  const int width = container.GetWidth();
  const int height = container.GetHeight();
  container.GetGraphic()->SetImage(container.GetGraphic()->GetImage());  // the bytes go stale
  norva::TGraphicContainer reread;
  reread.SetDataString(container.GetDataString());
  if (reread.GetWidth() != width || reread.GetHeight() != height) std::abort();
  return 0;
}
