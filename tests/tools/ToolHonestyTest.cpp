// The norva tool says only what happened, on lines a terminal shows as they are, and every
// command and group of commands explains itself with --help.
#include "NorvaRun.h"

#include <NorvaGlobal/UIServices.h>
#include <support/QtPrinters.h>

#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

// The command words of each usage line of `norva --help` ("ir native ZONE ..." gives "ir native").
QList<QStringList> CommandWords(const QString& help) {
  static const QRegularExpression usage(QStringLiteral("^  norva (.*)$"),
                                        QRegularExpression::MultilineOption);
  static const QRegularExpression word(QStringLiteral("^[a-z]+$"));
  QList<QStringList> commands;
  for (auto match = usage.globalMatch(help); match.hasNext();) {
    QStringList words;
    for (const QString& token : match.next().captured(1).split(u' ')) {
      if (!word.match(token).hasMatch()) break;
      words << token;
    }
    commands << words;
  }
  return commands;
}

TEST(NorvaToolHonesty, EveryCommandAndEveryGroupAnswersHelp) {
  const TRun help = Norva({"--help"});
  const QList<QStringList> commands = CommandWords(help.Out);
  ASSERT_GE(commands.size(), 17) << help.Out.toStdString();
  QStringList groups;
  for (const QStringList& words : commands) {
    const TRun run = Norva(words + QStringList{"--help"});
    EXPECT_EQ(run.ExitCode, 0) << words.join(u' ').toStdString() << ": " << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("norva ") + words.join(u' ')))
        << words.join(u' ').toStdString();
    if (words.size() > 1 && !groups.contains(words.front())) groups << words.front();
  }
  ASSERT_EQ(groups, (QStringList{"packet", "zone", "button", "ir"}));
  for (const QString& group : groups) {
    const TRun run = Norva({group, "--help"});
    EXPECT_EQ(run.ExitCode, 0) << group.toStdString() << ": " << run.Err.toStdString();
    EXPECT_TRUE(run.Err.isEmpty()) << run.Err.toStdString();
    for (const QStringList& words : commands) {
      if (words.size() > 1 && words.front() == group) {
        EXPECT_TRUE(run.Out.contains(QStringLiteral("  norva ") + words.join(u' ')))
            << group.toStdString() << " --help lacks " << words.join(u' ').toStdString();
      }
    }
  }
  // A group alone, or with a word none of its commands has, is bad input that points to its help.
  for (const QStringList& call : {QStringList{"ir"}, QStringList{"button", "press"}}) {
    const TRun run = Norva(call);
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_TRUE(run.Err.contains(QStringLiteral("norva %1 --help").arg(call.front())))
        << run.Err.toStdString();
  }
}

TEST(NorvaToolHonesty, LibraryMessagesReadOnOneLine) {
  const struct {
    const char* Text;
    const char* Line;
  } cases[] = {
      {"Error loading a.xml\r\n\r\nMismatched end tag\r\nLine: 3, position: 7",
       "Error loading a.xml: Mismatched end tag; Line: 3, position: 7"},
      {"Cannot save a.xml.\r\n\r\nSaving to b.xml instead.",
       "Cannot save a.xml. Saving to b.xml instead."},
      {"Cannot open port x\r\n\r\nError: No such file (2)",
       "Cannot open port x: Error: No such file (2)"},
      {"one\ntwo\rthree\r\n", "one; two; three"},
      {"\r\n  indented\t\r\n\r\n\r\nlast", "indented: last"},
      {"as it is", "as it is"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(norva::MessageOnOneLine(QString::fromUtf8(c.Text)), QString::fromUtf8(c.Line))
        << c.Text;
  }
}

// A message box the library shows while the tool runs (here: the database's folder is gone, so it
// is saved to the temporary folder instead) reaches standard error on one line.
TEST(NorvaToolHonesty, ABoxShownOnTheWayIsOneLineOfStandardError) {
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  const QString codes = folder.filePath("codes.tsv");
  WriteFile(codes, "Power\t0000 006D 0000 0002 0157 00AC 0015 05ED\n");
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("TMPDIR"), folder.path());
  const QString database = folder.filePath("gone/IR.xml");

  const TRun run = Norva({"irdb", database, "import", codes, "--make", "Acme", "--model", "TV"}, {},
                         environment);
  EXPECT_EQ(run.ExitCode, 0) << run.Err.toStdString();
  EXPECT_EQ(run.Err, QStringLiteral("Saving database: Cannot save %1. Saving to %2 instead.\n")
                         .arg(database, folder.filePath("IR.xml")));
}

}  // namespace
