#include <MessageDigest_5/MD5.h>

#include <NorvaGlobal/Exceptions.h>

#include <QCryptographicHash>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace norva {

namespace {

class TMD5 : public IMD5 {
 public:
  void Init() override {
    mHash.reset();
    mFinal = false;
  }

  void Update(const void* data, std::size_t size) override {
    if (mFinal) throw ENorvaError(QStringLiteral("MD5 digest already final: Init it first"));
    // QByteArrayView holds at most a qsizetype; feed larger blocks in pieces.
    const auto* bytes = static_cast<const char*>(data);
    while (size > 0) {
      const std::size_t piece = std::min<std::size_t>(size, std::numeric_limits<qsizetype>::max());
      mHash.addData(QByteArrayView(bytes, static_cast<qsizetype>(piece)));
      bytes += piece;
      size -= piece;
    }
  }

  void Update(QByteArrayView bytes) override {
    Update(bytes.data(), static_cast<std::size_t>(bytes.size()));
  }

  TMD5Digest Final() override {
    if (!mFinal) {
      const QByteArrayView result = mHash.resultView();
      std::copy(result.begin(), result.end(), mDigest.begin());
      mFinal = true;
    }
    return mDigest;
  }

  QString AsString() override {
    const TMD5Digest digest = Final();
    return QString::fromLatin1(
        QByteArray(reinterpret_cast<const char*>(digest.data()), std::ssize(digest)).toHex());
  }

  QUuid AsGUID() override {
    const TMD5Digest digest = Final();
    return QUuid(qFromLittleEndian<std::uint32_t>(digest.data()),
                 qFromLittleEndian<std::uint16_t>(digest.data() + 4),
                 qFromLittleEndian<std::uint16_t>(digest.data() + 6), digest[8], digest[9],
                 digest[10], digest[11], digest[12], digest[13], digest[14], digest[15]);
  }

 private:
  QCryptographicHash mHash{QCryptographicHash::Md5};
  TMD5Digest mDigest{};
  bool mFinal = false;
};

}  // namespace

std::unique_ptr<IMD5> GetMD5() { return std::make_unique<TMD5>(); }

}  // namespace norva
