// The remote definitions Debian installs with lirc-compat-remotes (scripts/install-deps.sh), files
// nobody here wrote: every one is read without a crash, each code read or refused, and remotes of
// each coding give the codes their buttons send, as the protocol engine recognises them.

#include <IR/IRProtocols.h>
#include <IR_Database/CodeFiles/LircdFile.h>

#include <QDirIterator>
#include <QFile>

#include <gtest/gtest.h>
#include <support/QtPrinters.h>

using namespace norva;

namespace {

const QString RemotesFolder = QStringLiteral("/usr/share/lirc/remotes");

TCodeFileEntries ReadRemote(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? ReadLircdFile(file.readAll(), path) : TCodeFileEntries();
}

}  // namespace

TEST(LircRemotes, EveryDefinitionReadsAndKnownRemotesGiveTheirCodes) {
  if (!QFile::exists(RemotesFolder))
    GTEST_SKIP() << "no " << RemotesFolder.toStdString()
                 << ": install the Debian package lirc-compat-remotes";
  int files = 0;
  for (QDirIterator it(RemotesFolder, {"lircd.conf*"}, QDir::Files, QDirIterator::Subdirectories);
       it.hasNext();) {
    const QString path = it.next();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(IsLircdFile(bytes)) << path.toStdString();
    const TCodeFileEntries read = ReadLircdFile(bytes, path);
    for (const TCodeFileEntry& entry : read.Entries) {
      const auto* stream = std::get_if<TIRStreamData>(&entry.Code);
      ASSERT_NE(stream, nullptr) << path.toStdString();
      EXPECT_GE(stream->GetEndPos(false), 0)
          << path.toStdString() << " " << entry.Place.toStdString();
    }
    ++files;
  }
  EXPECT_EQ(files, 69);

  // Remotes of each coding: space (NEC-like), RC5, RC6; the protocol engine, which knows nothing
  // of these files, names every code of those sending a protocol it knows.
  const struct {
    const char* File;
    const char* Model;
    int Codes;              // the lines of its codes sections
    const char* Protocol;   // that every code decodes as; none for codings the engine lacks
    const char* FirstCode;  // its first code, decoded
  } known[] = {
      {"imon/lircd.conf.imon", "IMON_MultiMedian", 45, nullptr, nullptr},
      {"streamzap/lircd.conf.streamzap", "Streamzap_PC_Remote", 35, nullptr, nullptr},
      {"mceusb/lircd.conf.mceusb", "mceusb", 180, nullptr, nullptr},
      {"avermedia/lircd.conf.avermedia", "Avermedia", 31, "NEC1", "NEC1 D=64 F=22"},
      {"hauppauge/lircd.conf.hauppauge", "Hauppauge", 218, "RC5", "RC5 D=0 F=15 T=0"},
  };
  for (const auto& remote : known) {
    const TCodeFileEntries read = ReadRemote(RemotesFolder + u'/' + QString::fromUtf8(remote.File));
    ASSERT_FALSE(read.Entries.isEmpty()) << remote.File;
    EXPECT_EQ(read.Entries[0].Model, remote.Model);
    EXPECT_EQ(read.Entries.size(), remote.Codes) << remote.File;
    EXPECT_TRUE(read.Refusals.isEmpty()) << remote.File;
    for (const TCodeFileEntry& entry : read.Entries) {
      const TIRStreamData& stream = std::get<TIRStreamData>(entry.Code);
      EXPECT_EQ(stream.Status(), "OK") << entry.Name.toStdString();
      if (!remote.Protocol) continue;
      const QList<TIRDecode> decodes = DecodeIRStream(stream);
      ASSERT_FALSE(decodes.isEmpty()) << entry.Name.toStdString();
      EXPECT_EQ(decodes[0].Protocol, remote.Protocol) << entry.Name.toStdString();
    }
    if (remote.FirstCode) {
      const TIRStreamData& first = std::get<TIRStreamData>(read.Entries[0].Code);
      EXPECT_EQ(DecodeText(DecodeIRStream(first).value(0)), remote.FirstCode);
    }
  }
  const TCodeFileEntries decoded = ReadRemote(RemotesFolder + "/devinput/lircd.conf.devinput");
  EXPECT_TRUE(decoded.Entries.isEmpty());
  ASSERT_FALSE(decoded.Refusals.isEmpty());
  EXPECT_TRUE(decoded.Refusals[0].Reason.startsWith("no one and zero timings"));
}
