#pragma once
// Lets GoogleTest print Qt strings as text, and sizes and rectangles as numbers, in failure
// messages.

#include <QByteArray>
#include <QRect>
#include <QSize>
#include <QString>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
  *out << '"' << bytes.toStdString() << '"';
}
inline std::ostream& operator<<(std::ostream& out, const QSize& size) {
  return out << size.width() << "x" << size.height();
}
inline std::ostream& operator<<(std::ostream& out, const QRect& rect) {
  return out << rect.size() << "+" << rect.x() << "+" << rect.y();
}
