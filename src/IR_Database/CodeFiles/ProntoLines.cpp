#include <IR_Database/CodeFiles/ProntoLines.h>

#include <IR/IRHexCode.h>
#include <IR_Database/CodeFiles/CodeFileLines.h>
#include <NorvaGlobal/Exceptions.h>

namespace norva {

namespace {

// A header names the columns; a code is never its last column.
constexpr int HeaderLinesLookedAt = 3;

bool EndsOnHexCode(const QString& line) {
  return line.contains(u'\t') && LooksLikeHexCode(line.section(u'\t', -1));
}

// The entry of a line; raises ENorvaError with the reason it cannot be read.
TCodeFileEntry ReadLine(const TCodeFileLine& line) {
  if (!line.Text.contains(u'\t')) throw ENorvaError(QStringLiteral("no TAB between name and code"));
  const std::optional<TIRStreamData> stream = ParseHexCode(line.Text.section(u'\t', -1));
  if (!stream) throw ENorvaError(QStringLiteral("fewer than five words"));
  TCodeFileEntry entry;
  entry.Name = line.Text.section(u'\t', 0, 0).trimmed();
  entry.Code = *stream;
  return entry;
}

}  // namespace

bool IsProntoLines(const QByteArray& bytes) {
  const QList<TCodeFileLine> lines = CodeFileLines(bytes.left(RecognisedBytes));
  for (qsizetype i = 0; i < lines.size() && i < HeaderLinesLookedAt; ++i)
    if (EndsOnHexCode(lines[i].Text)) return true;
  return false;
}

TCodeFileEntries ReadProntoLines(const QByteArray& bytes, const QString& /*path*/) {
  TCodeFileEntries read;
  const QList<TCodeFileLine> lines = CodeFileLines(bytes);
  const bool header = !lines.isEmpty() && lines[0].Text.contains(u'\t') &&
                      !EndsOnHexCode(lines[0].Text) && lines.size() > 1 &&
                      EndsOnHexCode(lines[1].Text);
  for (qsizetype i = header ? 1 : 0; i < lines.size(); ++i)
    ReadEntry(read, LinePlace(lines[i].Number), [&line = lines[i]] { return ReadLine(line); });
  return read;
}

}  // namespace norva
