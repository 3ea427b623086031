// The digest against the test suite of RFC 1321 (appendix A.5), a million bytes fed in pieces of
// awkward sizes, and the object's life cycle.

#include <MessageDigest_5/MessageDigest_5.h>
#include <NorvaGlobal/Exceptions.h>
#include <support/QtPrinters.h>

#include <gtest/gtest.h>

namespace norva {
namespace {

TEST(MD5, MatchesTheTestSuiteOfTheStandard) {
  const struct {
    const char* Message;
    const char* Digest;
  } suite[] = {
      {"", "d41d8cd98f00b204e9800998ecf8427e"},
      {"a", "0cc175b9c0f1b6a831c399e269772661"},
      {"abc", "900150983cd24fb0d6963f7d28e17f72"},
      {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
      {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
      {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
       "d174ab98d277d9f5a5611c2c9f419d9f"},
      {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
       "57edf4a22be3c955ac49da2e2107b67a"},
  };
  const std::unique_ptr<IMD5> md5 = GetMD5();
  for (const auto& test : suite) {
    md5->Init();
    md5->Update(QByteArrayView(test.Message));
    EXPECT_EQ(md5->AsString(), QString::fromLatin1(test.Digest)) << test.Message;
  }
}

TEST(MD5, AMillionBytesInOddPiecesGiveTheKnownDigest) {
  const QByteArray million(1000000, 'a');
  const std::unique_ptr<IMD5> md5 = GetMD5();
  std::size_t fed = 0;
  // Piece sizes that straddle the 64-byte blocks in every way, the empty piece among them.
  for (std::size_t piece = 0; fed < static_cast<std::size_t>(million.size());
       piece = (piece * 7 + 13) % 4099) {
    const std::size_t size = std::min(piece, static_cast<std::size_t>(million.size()) - fed);
    md5->Update(million.constData() + fed, size);
    fed += size;
  }
  EXPECT_EQ(md5->AsString(), "7707d6ae4e027c70eea2a935c2296f21");
}

TEST(MD5, FinalHoldsTheDigestUntilInitStartsAgain) {
  const std::unique_ptr<IMD5> md5 = GetMD5();
  md5->Update(QByteArrayView("abc"));
  const TMD5Digest digest = md5->Final();
  EXPECT_EQ(digest[0], 0x90);
  EXPECT_EQ(digest[15], 0x72);
  EXPECT_EQ(md5->Final(), digest);
  EXPECT_THROW(md5->Update(QByteArrayView("more")), ENorvaError);
  EXPECT_EQ(md5->AsString(), "900150983cd24fb0d6963f7d28e17f72");
  // The bytes as a GUID record lies in memory: the first three fields little-endian.
  EXPECT_EQ(md5->AsGUID(), QUuid::fromString(u"{98500190-d23c-b04f-d696-3f7d28e17f72}"));

  md5->Init();
  md5->Update(QByteArrayView("a"));
  EXPECT_EQ(md5->AsString(), "0cc175b9c0f1b6a831c399e269772661");
}

}  // namespace
}  // namespace norva
