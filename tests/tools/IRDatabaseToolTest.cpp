// norva irdb on libraries that must not be touched: one that did not load, one that is not there,
// and codes imported again; naming a received code exactly or as the same button.
#include "NorvaRun.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <support/QtPrinters.h>

namespace {

// Every action on a file that exists but did not load fails with one line naming the file and why;
// the file is left exactly as it was.
TEST(IRDatabaseTool, RefusesALibraryThatDidNotLoad) {
  QTemporaryDir folder;
  const QString database = folder.filePath("IR.xml");
  const QString tsv = folder.filePath("codes.tsv");
  WriteFile(tsv, "Power\t0000 006D 0000 0002 0157 00AC 0015 05ED\n");
  const struct {
    const char* Name;
    QByteArray File;
    QString Reason;
  } files[] = {
      {"a value no command can hold",
       "<ir_database><make name=\"A\"><model name=\"B\"><rs232_command name=\"x\">"
       "<stopbits>stop_bits_3</stopbits></rs232_command></model></make></ir_database>",
       "'stop_bits_3' is not a valid TNumStopbits value"},
      {"malformed XML", "<ir_database>\n<make name=\"A\">\n</ir_database>", "(line 3, position "},
  };
  const QStringList actions[] = {
      {"import", tsv, "--make", "Acme", "--model", "TV"},
      {"list"},
      {"name", "0000 006D 0000 0002 0157 00AC 0015 05ED"},
  };
  for (const auto& file : files) {
    for (const QStringList& action : actions) {
      SCOPED_TRACE(std::string(file.Name) + ": " + action[0].toStdString());
      WriteFile(database, file.File);
      const TRun run = Norva(QStringList{"irdb", database} + action);
      EXPECT_EQ(run.ExitCode, 1);
      EXPECT_TRUE(run.Out.isEmpty()) << run.Out.toStdString();
      EXPECT_EQ(run.Err.count(u'\n'), 1) << run.Err.toStdString();
      EXPECT_TRUE(run.Err.startsWith("norva: ")) << run.Err.toStdString();
      EXPECT_TRUE(run.Err.contains("Error loading " + database + ": ")) << run.Err.toStdString();
      EXPECT_TRUE(run.Err.contains(file.Reason)) << run.Err.toStdString();
      EXPECT_FALSE(run.Err.contains("\\r") || run.Err.contains(u'\r')) << run.Err.toStdString();
      EXPECT_EQ(FileBytes(database), file.File);
      EXPECT_FALSE(QFile::exists(database + ".bak"));
    }
  }
}

// Reading commands need the file; only import creates one. A make the file lacks is bad input.
TEST(IRDatabaseTool, ReadsOnlyALibraryThatExists) {
  QTemporaryDir folder;
  const QString database = folder.filePath("IR.xml");
  for (const char* action : {"list", "name"}) {
    QStringList call{"irdb", database, action};
    if (call.last() == "name") call << "0000 006D 0000 0002 0157 00AC 0015 05ED";
    const TRun run = Norva(call);
    EXPECT_EQ(run.ExitCode, 1) << action;
    EXPECT_TRUE(run.Out.isEmpty()) << action;
    EXPECT_EQ(run.Err, "norva: no IR database at " + database + "\n") << action;
    EXPECT_FALSE(QFile::exists(database)) << action;
  }
  WriteFile(database, "<ir_database><make name=\"Acme\"/></ir_database>");
  const TRun noMake = Norva({"irdb", database, "list", "NoSuchMake"});
  EXPECT_EQ(noMake.ExitCode, 2);
  EXPECT_EQ(noMake.Err, "norva: no make \"NoSuchMake\" in the database\n");
}

// Files of each format, recognised by their content whatever their name: every entry that cannot
// be read is told with its place, the others imported; a second import adds nothing.
TEST(IRDatabaseTool, ImportsEachCodeOnce) {
  QTemporaryDir folder;
  const QString database = folder.filePath("IR.xml");
  const struct {
    const char* Name;
    QByteArray Bytes;
    const char* Refusals;  // after each "PATH: "
    int Added;
  } files[] = {
      {"codes.tsv",
       "name\tbrand\tcode\n"
       "Power\tAcme\t0000 006D 0000 0002 0157 00AC 0015 05ED\n"
       "Mute\t0000 006D 0000 0001 0015\n"
       "Vol+\tAcme\t0000 006D 0000 0004 0016 0016 0016 0041 0016 0016 0016 0400\n",
       "line 3: Invalid Total number of tokens detected.\n", 2},
      {"remote.dat",
       "Filetype: IR signals file\nVersion: 1\n#\nname: Input\ntype: raw\nfrequency: 38000\n"
       "duty_cycle: 0.33\ndata: 9000 4500 560 560 560 1690 560 40000 9000 2250 560\n#\n"
       "name: Light\ntype: pulsed\n",
       "line 10 (Light): type \"pulsed\" is neither raw nor parsed\n", 1},
      {"gateway.txt",
       "sendir,1:1,1,38000,1,1,342,171,21,21,21,64,21,1520\n"
       "Mute\tsendir,1:1,2,38000,1,2,342,171,21,1520\n",
       "line 2: OFFSET 2 is no pulse of the 4 durations\n", 1},
      {"notes.txt", "nothing to import\n",
       "file: not in a format the import reads (flipper, girr, lircd, csv, sendir, pronto)\n", 0},
  };
  for (const auto& file : files) {
    SCOPED_TRACE(file.Name);
    const QString path = folder.filePath(file.Name);
    WriteFile(path, file.Bytes);
    const QStringList import = {"irdb",   database, "import",  path,
                                "--make", "Acme",   "--model", "TV"};
    const TRun first = Norva(import);
    EXPECT_EQ(first.ExitCode, 1);
    EXPECT_EQ(first.Out, QStringLiteral("%1: %2added %3, skipped 0, refused 1\n")
                             .arg(path, file.Refusals)
                             .arg(file.Added));
    EXPECT_TRUE(Norva(import).Out.endsWith(
        QStringLiteral("added 0, skipped %1, refused 1\n").arg(file.Added)));
  }
  EXPECT_EQ(Norva({"irdb", database, "list", "acme", "tv"}).Out,
            "Power\tir_stream\tToo short to have meaning\tSystem / Standby\tunknown pulse-width 2 "
            "bits 0x2\n"
            "Vol+\tir_stream\tOK\tSystem / Vol Up\tunknown pulse-distance 3 bits 0x2\n"
            "Input\tir_stream\tOK\t\tunknown pulse-distance 2 bits 0x1\n"
            "Code 1\tir_stream\tOK\t\tunknown pulse-distance 2 bits 0x1\n");
  EXPECT_EQ(Norva({"irdb", database, "--public", "list"}).Out,
            "NORVA\t0 models, built in with 3 command groups\n"
            "INTEGRA\t0 models, built in with 1 command groups\nAcme\t1 models\n");
  EXPECT_TRUE(QFile::exists(database + ".bak"));
  const QString notes = folder.filePath("notes.txt");
  EXPECT_EQ(Norva({"irdb", database, "import", notes, "--format", "Girl"}).ExitCode, 2);
  const TRun forced = Norva(
      {"irdb", database, "import", notes, "--format", "PRONTO", "--make", "A", "--model", "B"});
  EXPECT_EQ(forced.Out,
            notes + ": line 1: no TAB between name and code\nadded 0, skipped 0, refused 1\n");
}

// The command holding exactly the code is named first; otherwise every command of the same button.
TEST(IRDatabaseTool, NamesExactlyOrByTheSameButton) {
  QTemporaryDir folder;
  const QString database = folder.filePath("IR.xml");
  const QString tsv = folder.filePath("codes.tsv");
  const QString odd =
      "0000 006D 0000 0006 0050 0030 0010 0060 0030 0020 0070 0010 0010 0045 0025 0400";
  WriteFile(tsv, "Odd\t" + odd.toUtf8() + "\nOdd again\t" + odd.toUtf8() + " \n");
  ASSERT_EQ(Norva({"irdb", database, "import", tsv, "--make", "Acme", "--model", "TV"}).ExitCode,
            0);
  // The stored code, a second capture of it, and another button.
  const std::pair<QString, QString> answers[] = {
      {odd, "exact\tAcme - TV: Odd\n"},
      {"0000 006C 0000 0006 0052 0030 0010 005E 0031 0020 0070 0011 0010 0045 0024 0400",
       "similar\tAcme - TV: Odd\nsimilar\tAcme - TV: Odd again\n"},
      {"0000 006D 0000 0006 0030 0050 0010 0060 0030 0020 0070 0010 0010 0045 0025 0400",
       "unknown\n"},
  };
  for (const auto& [code, out] : answers) {
    const TRun run = Norva({"irdb", database, "name", code});
    EXPECT_EQ(run.ExitCode, out == "unknown\n" ? 1 : 0) << code.toStdString();
    EXPECT_EQ(run.Out, out) << code.toStdString();
  }
}

// Each format goes to standard output; what a format cannot hold is named on standard error.
TEST(IRDatabaseTool, ExportsTheDatabaseAMakeOrAModel) {
  QTemporaryDir folder;
  const QString database = folder.filePath("IR.xml");
  const QString tsv = folder.filePath("codes.tsv");
  WriteFile(tsv, "Power\t0000 006D 0000 0002 0157 00AC 0015 05ED\n");
  ASSERT_EQ(Norva({"irdb", database, "import", tsv, "--make", "Acme", "--model", "TV"}).ExitCode,
            0);
  QByteArray file = FileBytes(database);
  file.replace("</model>", "<rs232_command name=\"Serial\"/></model>");
  WriteFile(database, file);
  const struct {
    QStringList Call;
    QString Out;
  } cases[] = {
      {{"export"}, "Power\t0000 006D 0000 0002 0157 00AC 0015 05EC\n"},
      {{"export", "acme", "--format", "girr"},
       "<?xml version='1.0'?><remotes xmlns=\"http://www.harctoolbox.org/Girr\" "
       "girrVersion=\"1.0\">\r\n\t<remote name=\"Acme - TV\" manufacturer=\"Acme\" "
       "model=\"TV\">\r\n\t\t<commandSet name=\"TV\">\r\n\t\t\t<command name=\"Power\" "
       "master=\"ccf\">\r\n\t\t\t\t<ccf>0000 006D 0000 0002 0157 00AC 0015 05EC</ccf></command>"
       "</commandSet></remote></remotes>"},
      {{"export", "Acme", "tv", "--format", "flipper"},
       "Filetype: IR signals file\nVersion: 1\n# Acme - TV\n#\nname: Power\ntype: raw\n"
       "frequency: 37975\nduty_cycle: 0.330000\ndata: 9019 4523 552 39851\n"},
  };
  for (const auto& c : cases) {
    const TRun run = Norva(QStringList{"irdb", database} + c.Call);
    EXPECT_EQ(run.ExitCode, 1) << c.Call.join(' ').toStdString();
    EXPECT_EQ(run.Out, c.Out);
    EXPECT_EQ(run.Err, "norva: not written: Acme - TV: Serial: not an infra-red stream\n");
  }
  const TRun noModel = Norva({"irdb", database, "export", "Acme", "Radio"});
  EXPECT_EQ(noModel.ExitCode, 2);
  EXPECT_EQ(noModel.Err, "norva: no model \"Radio\" in Acme\n");
}

}  // namespace
