#include "files/caution/sed_script.h"

#include <QChar>

namespace lumeno {

namespace {

class SedReader {
 public:
  explicit SedReader(QStringView script) : script_(script) {}

  bool reachesOut() {
    while (position_ < script_.size()) {
      skipAddress();
      if (position_ >= script_.size()) break;
      const QChar command = script_[position_++];
      if (command == u'e' || command == u'w' || command == u'W') return true;
      if (command == u's' || command == u'y') {
        const QChar delimiter = position_ < script_.size() ? script_[position_++] : QChar();
        skipDelimited(delimiter);
        skipDelimited(delimiter);
        const qsizetype flags = position_;
        skipTo(u";\n}");
        const QStringView given = script_.sliced(flags, position_ - flags);
        if (command == u's' && (given.contains(u'e') || given.contains(u'w'))) return true;
      } else if (command == u'a' || command == u'i' || command == u'c' || command == u'#') {
        skipTo(u"\n");
      } else if (command != u'{' && command != u'}') {
        skipTo(u";\n}");
      }
    }
    return false;
  }

 private:
  /// Up to the letter of the command.
  void skipAddress() {
    while (position_ < script_.size()) {
      const QChar c = script_[position_];
      if (c == u'/' || c == u'\\') {
        position_ += c == u'\\' ? 2 : 1;
        skipDelimited(position_ > 0 && position_ <= script_.size() ? script_[position_ - 1] : QChar());
        while (position_ < script_.size() && (script_[position_] == u'I' || script_[position_] == u'M'))
          ++position_;
      } else if (c.isDigit() || c.isSpace() || QStringView(u"$,~+!;").contains(c)) {
        ++position_;
      } else {
        return;
      }
    }
  }

  void skipDelimited(QChar delimiter) {
    while (position_ < script_.size() && script_[position_] != delimiter) {
      position_ += script_[position_] == u'\\' ? 2 : 1;
    }
    position_ = qMin(position_ + 1, script_.size());
  }

  void skipTo(QStringView ends) {
    while (position_ < script_.size() && !ends.contains(script_[position_])) ++position_;
  }

  QStringView script_;
  qsizetype position_ = 0;
};

}  // namespace

bool sedScriptReachesOut(QStringView script) {
  return SedReader(script).reachesOut();
}

bool awkProgramReachesOut(QStringView program) {
  if (program.contains(u"system") || program.contains(u"getline") || program.contains(u'@')) return true;
  bool printed = false;
  for (qsizetype i = 0; i < program.size(); ++i) {
    const QChar c = program[i];
    if (c == u'|') {
      if (i + 1 >= program.size() || program[i + 1] != u'|') return true;
      ++i;
    } else if (program.sliced(i).startsWith(u"print")) {
      printed = true;
    } else if (c == u'}' || c == u';' || c == u'\n') {
      printed = false;
    } else if (c == u'>' && printed) {
      return true;
    }
  }
  return false;
}

}  // namespace lumeno
