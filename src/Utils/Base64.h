#pragma once
// Base64 with the standard alphabet of RFC 4648 (A-Z, a-z, 0-9, '+', '/'), '=' padding and no line
// breaks; used for pictures and other binary data kept inside document text.
//
// Encoding reads the input from its current position to its end: every 3 bytes give 4 characters,
// a final 1 or 2 bytes give 2 or 3 characters padded with '=' to 4.
//
// Decoding never fails, whatever the text:
//   - characters outside the alphabet (line breaks, blanks, anything else) are skipped;
//   - the first '=' ends the data, whatever follows it is ignored;
//   - a final group of 2 or 3 characters gives 1 or 2 bytes (padding is optional), a lone final
//     character cannot make a byte and is dropped; the unused low bits are ignored.
// So decoding what Base64Encode wrote gives back the original bytes.
//
// Writing to an output device that takes fewer bytes than offered raises ENorvaError.

#include <QByteArray>
#include <QIODevice>

namespace norva {

void Base64Encode(QIODevice& in, QIODevice& out);
// Replaces `text` by the encoding of `in`.
void Base64Encode(QIODevice& in, QByteArray& text);

void Base64Decode(QIODevice& in, QIODevice& out);
void Base64Decode(const QByteArray& text, QIODevice& out);

}  // namespace norva
