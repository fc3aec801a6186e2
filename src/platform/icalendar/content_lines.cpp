#include "platform/icalendar/content_lines.h"

namespace lumeno::icalendar {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestLine = 75;  // octets, without the line break

bool isContinuation(char octet) {
  return (static_cast<unsigned char>(octet) & 0xC0) == 0x80;
}

QByteArray escaped(QString text) {
  text.replace(u'\\', "\\\\"_L1).replace(u';', "\\;"_L1).replace(u',', "\\,"_L1);
  text.replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n').replace(u'\n', "\\n"_L1);
  return text.toUtf8();
}

}  // namespace

QString withoutControlCharacters(QStringView text) {
  QString result;
  for (const QChar c : text) {
    const bool isBlank = c == u'\t' || c == u'\n' || c == u'\r';
    if (isBlank || (c >= u' ' && c != u'\u007F')) result += c;
  }
  return result;
}

void ContentLines::add(const QByteArray& line) {
  qsizetype start = 0;
  qsizetype room = longestLine;
  while (line.size() - start > room) {
    qsizetype end = start + room;
    while (isContinuation(line[end])) --end;
    content_ += line.sliced(start, end - start) + "\r\n ";
    start = end;
    room = longestLine - 1;  // the blank that marks a continued line
  }
  content_ += line.sliced(start) + "\r\n";
}

void ContentLines::addText(const QByteArray& name, QStringView text) {
  add(name + ':' + escaped(withoutControlCharacters(text)));
}

}  // namespace lumeno::icalendar
