#pragma once
// A file's bytes read and written whole, for the suites that check what a file holds.

#include <QByteArray>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>

inline QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
  file.write(bytes);
}
