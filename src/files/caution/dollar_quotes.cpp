#include "files/caution/dollar_quotes.h"

#include <QByteArray>

namespace lumeno::shell {

namespace {

int digitValue(QChar c) {
  const char16_t u = c.unicode();
  if (u >= u'0' && u <= u'9') return u - u'0';
  if (u >= u'a' && u <= u'f') return u - u'a' + 10;
  if (u >= u'A' && u <= u'F') return u - u'A' + 10;
  return 16;
}

/// Decodes one text. The escapes of bytes are collected, since several can make one character.
class Decoder {
 public:
  explicit Decoder(QStringView content) : content_(content) {}

  QString decode() {
    while (position_ < content_.size()) {
      const QChar c = content_[position_++];
      if (c == u'\\' && position_ < content_.size()) {
        escape();
      } else {
        put(c.unicode());
      }
    }
    flush();
    return result_;
  }

 private:
  void put(char32_t c) {
    if (meta_ || control_) {
      char32_t changed = control_ ? (c == u'?' ? 0x7F : c & 0x9F) : c;
      if (meta_) changed |= 0x80;
      meta_ = control_ = false;
      putByte(char(changed));
      return;
    }
    flush();
    if (c > 0x10FFFF) {
      result_ += QChar(QChar::ReplacementCharacter);
    } else if (c > 0xFFFF) {
      result_ += QChar(QChar::highSurrogate(c));
      result_ += QChar(QChar::lowSurrogate(c));
    } else {
      result_ += QChar(char16_t(c));
    }
  }

  void putByte(char byte) { bytes_ += byte; }

  void flush() {
    if (bytes_.isEmpty()) return;
    result_ += QString::fromUtf8(bytes_);
    bytes_.clear();
  }

  char32_t number(int base, int digits) {
    char32_t value = 0;
    while (digits-- > 0 && position_ < content_.size() && digitValue(content_[position_]) < base) {
      value = value * char32_t(base) + char32_t(digitValue(content_[position_++]));
    }
    return value;
  }

  void putNumber(char32_t value) {
    if (meta_ || control_) {
      put(value);
    } else {
      putByte(char(value));
    }
  }

  void escape() {
    const QChar c = content_[position_++];
    switch (c.unicode()) {
      case u'a':
        return put(u'\a');
      case u'b':
        return put(u'\b');
      case u'e':
      case u'E':
        return put(0x1B);
      case u'f':
        return put(u'\f');
      case u'n':
        return put(u'\n');
      case u'r':
        return put(u'\r');
      case u't':
        return put(u'\t');
      case u'v':
        return put(u'\v');
      case u'x':
        return putNumber(number(16, 2));
      case u'u':
        return put(number(16, 4));
      case u'U':
        return put(number(16, 8));
      case u'M':
        return modify(meta_);
      case u'C':
        return modify(control_);
      default:
        break;
    }
    if (c >= u'0' && c <= u'7') {
      --position_;
      return putNumber(number(8, 3));
    }
    put(c.unicode());
  }

  void modify(bool& modifier) {
    if (position_ < content_.size() && content_[position_] == u'-') ++position_;
    modifier = true;
  }

  QStringView content_;
  qsizetype position_ = 0;
  QString result_;
  QByteArray bytes_;
  bool meta_ = false;
  bool control_ = false;
};

}  // namespace

qsizetype dollarQuoteEnd(QStringView text, qsizetype start) {
  for (qsizetype i = start; i < text.size(); ++i) {
    if (text[i] == u'\'') return i;
    if (text[i] == u'\\') ++i;
  }
  return -1;
}

QString decodeDollarQuotes(QStringView content) {
  return Decoder(content).decode();
}

}  // namespace lumeno::shell
