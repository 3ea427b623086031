#pragma once
// The strict reading of a document before the DOM parses it. The DOM parser is lenient: it takes
// duplicate attributes, undefined entities, a bare '&', '<' in attribute values, control
// characters and bytes that are not UTF-8, and the next save would write something else. So every
// document is first read by a conforming XML 1.0 reader, which also decodes the encoding the
// document declares, and the DOM parses what that reading gives.

#include <QByteArray>

namespace norva {

// Checks that `bytes` are a well-formed XML 1.0 document and returns its text as UTF-8 without a
// byte-order mark. The encoding is the one a byte-order mark gives (UTF-8, UTF-16, UTF-32),
// otherwise the declared one (any the platform can decode), otherwise UTF-8. Raises EXMLParseError
// with the reason and position of the first fault found. Entities beyond the five predefined ones
// and character references are refused, because the DOM would not expand them.
QByteArray WellFormedUtf8(const QByteArray& bytes);

// The same, always through the conforming reader; WellFormedUtf8 first tries the quick check of
// XmlQuickCheck.h, which vouches for most documents in a fraction of the time.
QByteArray ReadWellFormedUtf8(const QByteArray& bytes);

}  // namespace norva
