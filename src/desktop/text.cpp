#include "desktop/text.h"

#include "services/ansi.h"

namespace vorlix {

QString ToQString(std::string_view ansi) {
  QString text;
  text.reserve(static_cast<qsizetype>(ansi.size()));
  for (const char byte : ansi) {
    text += QChar(static_cast<char16_t>(AnsiToUnicode(static_cast<unsigned char>(byte))));
  }
  return text;
}

std::string FromQString(const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  return FromUtf8({utf8.constData(), static_cast<std::size_t>(utf8.size())});
}

QString ToTip(std::string_view ansi) {
  if (ansi.empty()) return {};
  const QString text = ToQString(ansi).remove(QLatin1Char('\r')).toHtmlEscaped();
  return "<p style=\"white-space:nowrap\">" +
         QString(text)
             .replace(QLatin1String("  "), QLatin1String("&nbsp; "))
             .replace(QLatin1Char('\n'), QLatin1String("<br>")) +
         "</p>";
}

QString ToMenuText(std::string_view ansi) {
  return ToQString(ansi).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace vorlix
