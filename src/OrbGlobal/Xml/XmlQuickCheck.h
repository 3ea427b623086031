#pragma once
// A quick, single-pass check over UTF-8 bytes that accepts the documents the library writes (and
// most others) only when they are certainly well-formed XML 1.0. It never refuses: a document it
// cannot vouch for (a document type declaration, another encoding, anything unusual or wrong) is
// left to the conforming reader, which also finds and places the fault.

#include <string_view>

namespace norva {

// True only when `utf8` (no byte-order mark) is a well-formed XML 1.0 document in UTF-8 that the
// conforming reader would accept as it stands.
bool IsCertainlyWellFormedUtf8(std::string_view utf8);

}  // namespace norva
