#pragma once
// The MD5 message digest (RFC 1321) for applications: fingerprints of files and configurations.
// MD5 is broken as a defence against anyone who forges data on purpose; use it to recognise
// content, never to trust it.

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QUuid>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace norva {

using TMD5Digest = std::array<std::uint8_t, 16>;

class IMD5 {
 public:
  virtual ~IMD5() = default;

  // Starts a new digest; what was fed before is forgotten.
  virtual void Init() = 0;
  // Feeds bytes: from memory, or the bytes of a byte array. Raises ENorvaError after Final until
  // the next Init.
  virtual void Update(const void* data, std::size_t size) = 0;
  virtual void Update(QByteArrayView bytes) = 0;
  // Ends the digest and returns it; later calls return the same digest.
  virtual TMD5Digest Final() = 0;
  // The digest (Final first if it was not called) as 32 lower-case hexadecimal digits, as RFC 1321
  // prints it.
  virtual QString AsString() = 0;
  // The 16 digest bytes read as a GUID record, the way the bytes lie in memory: the first three
  // fields little-endian.
  virtual QUuid AsGUID() = 0;
};

// A new digest, initialised.
std::unique_ptr<IMD5> GetMD5();

}  // namespace norva
