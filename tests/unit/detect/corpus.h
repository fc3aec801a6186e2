#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QString>
#include <QStringList>
#include <vector>

/// Reads the case files in tests/data/detect (their format stands at the top of each) and compares.
namespace lumeno::corpus {

struct Case {
  int line = 0;
  QString className;
  QString region;
  QString text;
  QStringList marked;  ///< what must be found, in order
  std::vector<qsizetype> starts;
  QString expectation;  ///< behind " ⇒ "
};

inline QString unescaped(QString s) {
  using namespace Qt::StringLiterals;
  s.replace(u"\\\\"_s, u"\x01"_s).replace(u"\\n"_s, u"\n"_s).replace(u"\\t"_s, u"\t"_s);
  return s.replace(u'\x01', u'\\');
}

inline std::vector<Case> read(const QString& name) {
  using namespace Qt::StringLiterals;
  QFile file(QStringLiteral(LUMENO_TEST_DATA "/detect/") + name);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
  std::vector<Case> cases;
  QString className;
  QString region;
  int number = 0;
  const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
  for (const QString& line : lines) {
    ++number;
    if (line.isEmpty() || line.startsWith(u"# "_s)) continue;
    if (line.startsWith(u"@class "_s)) {
      className = line.mid(7);
    } else if (line.startsWith(u"@region "_s)) {
      region = line.mid(8);
    } else {
      Case c{number, className, region, {}, {}, {}, line.section(u" ⇒ "_s, 1)};
      const QString marked = unescaped(line.section(u" ⇒ "_s, 0, 0));
      qsizetype open = -1;
      for (const QChar unit : marked) {
        if (unit == u'⟦') {
          open = c.text.size();
        } else if (unit == u'⟧') {
          c.starts.push_back(open);
          c.marked.append(c.text.mid(open));
        } else {
          c.text.append(unit);
        }
      }
      cases.push_back(std::move(c));
    }
  }
  return cases;
}

/// Counts per class and reports every case whose findings differ from its marks.
class Score {
 public:
  /// `found`: start and text of each match.
  void check(const Case& c, const std::vector<std::pair<qsizetype, QString>>& found) {
    Tally& tally = tallies_[c.className];
    size_t right = 0;
    for (const auto& [start, text] : found) {
      const auto i = std::find(c.starts.begin(), c.starts.end(), start);
      right += i != c.starts.end() && c.marked[i - c.starts.begin()] == text ? 1 : 0;
    }
    tally.expected += c.starts.size();
    tally.found += right;
    tally.wrong += found.size() - right;
    if (right == c.starts.size() && right == found.size()) return;
    QStringList texts;
    for (const auto& match : found) texts.append(match.second);
    ADD_FAILURE() << "line " << c.line << ": " << qPrintable(c.text) << "\n  found: ["
                  << qPrintable(texts.join(QLatin1String("] ["))) << "]";
  }

  ~Score() {
    for (auto i = tallies_.cbegin(); i != tallies_.cend(); ++i) {
      printf("%-34s found %zu of %zu, false %zu\n", qPrintable(i.key()), i->found, i->expected, i->wrong);
    }
  }

 private:
  struct Tally {
    size_t expected = 0, found = 0, wrong = 0;
  };
  QMap<QString, Tally> tallies_;
};

}  // namespace lumeno::corpus
