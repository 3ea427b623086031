#pragma once
// The real codes of remote controls in tests/data/ir: command name and Pronto hex code per line.

#include <QFile>
#include <QList>
#include <QString>

#include <utility>

inline QList<std::pair<QString, QString>> Corpus() {
  QFile file(QStringLiteral(NORVA_SOURCE_DIR "/tests/data/ir/pronto-codes.tsv"));
  QList<std::pair<QString, QString>> lines;
  if (!file.open(QIODevice::ReadOnly)) return lines;
  for (const QByteArray& line : file.readAll().split('\n')) {
    if (!line.isEmpty())
      lines.append({QString::fromUtf8(line).section(u'\t', 0, 0),
                    QString::fromUtf8(line).section(u'\t', 1)});
  }
  return lines;
}

// The code of the first command of that name; empty when there is none.
inline QString CorpusCode(const QString& name) {
  for (const auto& [command, code] : Corpus()) {
    if (command == name) return code;
  }
  return {};
}
