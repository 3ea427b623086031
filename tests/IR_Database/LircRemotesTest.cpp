// The remote definitions Debian installs with lirc-compat-remotes (scripts/install-deps.sh), files
// nobody here wrote: every one is read without a crash, each code read or refused, and remotes of
// each coding give the codes their buttons send.

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

  // Remotes of each coding: space (NEC-like), RC5, RC6; and one whose codes a receiver decoded.
  const struct {
    const char* File;
    const char* Model;
    int Codes;  // the lines of its codes sections
  } known[] = {
      {"imon/lircd.conf.imon", "IMON_MultiMedian", 45},
      {"streamzap/lircd.conf.streamzap", "Streamzap_PC_Remote", 35},
      {"mceusb/lircd.conf.mceusb", "mceusb", 180},
  };
  for (const auto& remote : known) {
    const TCodeFileEntries read = ReadRemote(RemotesFolder + u'/' + QString::fromUtf8(remote.File));
    ASSERT_FALSE(read.Entries.isEmpty()) << remote.File;
    EXPECT_EQ(read.Entries[0].Model, remote.Model);
    for (const TCodeFileEntry& entry : read.Entries)
      EXPECT_EQ(std::get<TIRStreamData>(entry.Code).Status(), "OK") << entry.Name.toStdString();
    EXPECT_EQ(read.Entries.size(), remote.Codes) << remote.File;
    EXPECT_TRUE(read.Refusals.isEmpty()) << remote.File;
  }
  const TCodeFileEntries decoded = ReadRemote(RemotesFolder + "/devinput/lircd.conf.devinput");
  EXPECT_TRUE(decoded.Entries.isEmpty());
  ASSERT_FALSE(decoded.Refusals.isEmpty());
  EXPECT_TRUE(decoded.Refusals[0].Reason.startsWith("no one and zero timings"));
}
