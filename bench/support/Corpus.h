#pragma once
// The real remote controls' names and codes of tests/data/ir/, for benchmarks over real data.

#include <QFile>
#include <QList>
#include <QString>

#include <stdexcept>
#include <utility>

namespace norva::bench {

// (command name, hex code) for every line of the corpus.
inline QList<std::pair<QString, QString>> InfraRedCorpus() {
  QFile file(QStringLiteral(NORVA_SOURCE_DIR "/tests/data/ir/pronto-codes.tsv"));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the IR corpus");
  QList<std::pair<QString, QString>> lines;
  for (const QByteArray& line : file.readAll().split('\n')) {
    if (line.isEmpty()) continue;
    const QString text = QString::fromUtf8(line);
    lines.append({text.section(u'\t', 0, 0), text.section(u'\t', 1)});
  }
  return lines;
}

}  // namespace norva::bench
