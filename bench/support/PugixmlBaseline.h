#pragma once
// The raw cost the file benchmarks compare the library with: pugixml alone parsing a document and
// writing it into memory, as fast as pugixml goes (a writer that only appends to reserved room).

#include <QByteArray>

#include <pugixml.hpp>

#include <string>

namespace norva::bench {

// Parsed as pugixml parses by default, with whitespace-only text kept as the library keeps it.
inline bool ParseWithPugixml(pugi::xml_document& document, const QByteArray& bytes) {
  return document.load_buffer(bytes.constData(), static_cast<std::size_t>(bytes.size()),
                              pugi::parse_default | pugi::parse_ws_pcdata);
}

// The written text's length.
inline std::size_t WriteWithPugixml(const pugi::xml_document& document, std::size_t expected) {
  class TAppender : public pugi::xml_writer {
   public:
    void write(const void* data, std::size_t size) override {
      text.append(static_cast<const char*>(data), size);
    }
    std::string text;
  } appender;
  appender.text.reserve(expected);
  document.save(appender, "", pugi::format_raw | pugi::format_no_declaration);
  return appender.text.size();
}

}  // namespace norva::bench
