#include <OrbGlobal/Xml/XmlLookup.h>

#include <NorvaGlobal/Exceptions.h>

#include <QStringDecoder>

#include <string_view>

namespace norva {

namespace {

bool IsText(pugi::xml_node node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

// Document order without recursion: files may nest deeper than the stack allows.
pugi::xml_node NextInSubtree(pugi::xml_node node, pugi::xml_node root) {
  if (pugi::xml_node child = node.first_child()) return child;
  for (; node && node != root; node = node.parent()) {
    if (pugi::xml_node sibling = node.next_sibling()) return sibling;
  }
  return pugi::xml_node();
}

}  // namespace

pugi::xml_node GetXMLDOMNode(pugi::xml_node parent, const QString& name, bool mustExist) {
  const QByteArray wanted = name.toUtf8();
  const std::string_view wantedView(wanted.constData(), static_cast<size_t>(wanted.size()));
  for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
    if (child.type() == pugi::node_element && wantedView == child.name()) return child;
  }
  if (mustExist) throw ENorvaError(name + QStringLiteral(" element not found"));
  return pugi::xml_node();
}

QString GetXMLDOMNodeText(pugi::xml_node parent, const QString& name, bool mustExist) {
  return GetXMLDOMText(GetXMLDOMNode(parent, name, mustExist));
}

QString GetElementText(pugi::xml_node element) { return XMLValue(element.first_child().value()); }

QString GetXMLDOMText(pugi::xml_node node) {
  QByteArray text;
  for (pugi::xml_node current = node; current; current = NextInSubtree(current, node)) {
    if (IsText(current)) text.append(current.value());
  }
  return XMLValue(text);
}

std::optional<long long> DecimalOf(const char* utf8) {
  // Files hold plain digits almost always; those are read here at once, anything else as Qt reads
  // numbers. Eighteen digits cannot overflow.
  const char* digit = utf8 + (*utf8 == '-' ? 1 : 0);
  long long value = 0;
  int count = 0;
  for (; *digit >= '0' && *digit <= '9' && count < 18; ++digit, ++count)
    value = value * 10 + (*digit - '0');
  if (*digit == '\0' && count > 0) return *utf8 == '-' ? -value : value;
  bool ok = false;
  const long long parsed = QByteArrayView(utf8).trimmed().toLongLong(&ok);
  return ok ? std::optional<long long>(parsed) : std::nullopt;
}

bool ElementBoolean(pugi::xml_node element) {
  if (const std::optional<long long> number = DecimalOf(element.first_child().value()))
    return *number != 0;
  const QString text = GetElementText(element);
  if (text.compare(QStringLiteral("true"), Qt::CaseInsensitive) == 0) return true;
  if (text.compare(QStringLiteral("false"), Qt::CaseInsensitive) == 0) return false;
  throw EConvertError(QStringLiteral("'%1' is not a valid boolean value").arg(text));
}

QString NameAttribute(pugi::xml_node element) {
  return XMLValue(element.attribute("name").value());
}

QString XMLValue(QByteArrayView utf8) {
  // A value may begin with U+FEFF like any other character: it is no byte-order mark here.
  if (!utf8.startsWith("\xEF\xBB\xBF")) return QString::fromUtf8(utf8);
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
  return decoder(utf8);
}

}  // namespace norva
