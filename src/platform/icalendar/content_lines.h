#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace lumeno::icalendar {

/// A text without the characters that no calendar can hold: all controls but tabs and line breaks.
[[nodiscard]] QString withoutControlCharacters(QStringView text);

/// Collects the lines of a calendar file: ended by CR and LF, and folded at 75 octets between characters.
class ContentLines {
 public:
  /// `line` is a name with parameters, a colon and a value, without line breaks.
  void add(const QByteArray& line);
  /// A property whose value is a text, which is escaped, without control characters.
  void addText(const QByteArray& name, QStringView text);

  [[nodiscard]] const QByteArray& content() const { return content_; }

 private:
  QByteArray content_;
};

}  // namespace lumeno::icalendar
