#include <gtest/gtest.h>

#include <QDir>
#include <QJsonDocument>
#include <QSet>

#include "base/geometry.h"
#include "records/action_result.h"
#include "records/file_command.h"
#include "records/file_selection.h"
#include "records/hotkey_config.h"
#include "records/intent_kind.h"
#include "records/selected_context.h"
#include "records/selection.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

TEST(IntentKinds, RawValuesReadBackAndDiffer) {
  QSet<QString> names;
  for (const IntentKind kind : allIntentKinds) {
    const QString name = rawValue(kind);
    EXPECT_EQ(intentKindFromRawValue(name), kind) << name.toStdString();
    names.insert(name);
  }
  EXPECT_EQ(names.size(), 16);
  for (const QStringView unknown : {u"Writing", u"", u"writing ", u"url"}) {
    EXPECT_EQ(intentKindFromRawValue(unknown), std::nullopt);
  }
}

TEST(IntentKinds, SymbolsAndTints) {
  struct Row {
    IntentKind kind;
    QString raw;
    QString symbol;
    QString tint;
  };
  // The first, the last, and those whose neighbours are easily mixed up.
  const Row rows[] = {
      {IntentKind::error, u"error"_s, u"wrench.and.screwdriver"_s, u"red"_s},
      {IntentKind::code, u"code"_s, u"chevron.left.forwardslash.chevron.right"_s, u"mint"_s},
      {IntentKind::filename, u"filename"_s, u"doc.text.magnifyingglass"_s, u"orange"_s},
      {IntentKind::email, u"email"_s, u"envelope"_s, u"cyan"_s},
      {IntentKind::unknown, u"unknown"_s, u"sparkle.magnifyingglass"_s, u"secondary"_s},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(rawValue(row.kind), row.raw);
    EXPECT_EQ(symbolName(row.kind), row.symbol);
    EXPECT_EQ(tintName(tint(row.kind)), row.tint);
  }
}

TEST(HotkeyConfigs, ReadOnlyWhatIsInRange) {
  const HotkeyConfig config{96, modifier::shift | modifier::command};
  EXPECT_EQ(hotkeyConfigFromJson(toJson(config)), config);
  EXPECT_EQ(QJsonDocument(toJson(HotkeyConfig{})).toJson(QJsonDocument::Compact),
            R"({"keyCode":49,"modifiers":1572864})");
  for (const char* wrong :
       {R"({"keyCode":49})", R"({"keyCode":"49","modifiers":0})", R"({"keyCode":-1,"modifiers":0})",
        R"({"keyCode":65536,"modifiers":0})", R"({"keyCode":1,"modifiers":0.5})",
        R"({"keyCode":1,"modifiers":1e300})", R"({"keyCode":1,"modifiers":true})"}) {
    EXPECT_EQ(hotkeyConfigFromJson(QJsonDocument::fromJson(wrong).object()), std::nullopt) << wrong;
  }
}

TEST(ActionResults, SurviveEncoding) {
  const ActionResult result{QUuid::createUuid(), IntentKind::tone, u"Title"_s, u"Bo\ndy"_s,
                            QDateTime::fromMSecsSinceEpoch(1714557600123, Qt::UTC)};
  EXPECT_EQ(actionResultFromJson(toJson(result)), result);
  for (const QString& key : toJson(result).keys()) {
    QJsonObject damaged = toJson(result);
    damaged[key] = 1;
    EXPECT_EQ(actionResultFromJson(damaged), std::nullopt) << key.toStdString();
  }
}

TEST(Contexts, CompareByAllFields) {
  const SelectedContext context{QUuid::createUuid(), u"text"_s, u"App"_s, u"Window"_s};
  SelectedContext other = context;
  EXPECT_EQ(context, other);
  EXPECT_EQ(qHash(context), qHash(other));
  other.id = QUuid::createUuid();
  EXPECT_NE(context, other);

  const Selection unplaced{u"text"_s, u"App"_s, std::nullopt};
  const Selection placed{u"text"_s, u"App"_s, Rect{1, 2, 3, 4}};
  EXPECT_NE(unplaced, placed);
  EXPECT_EQ(placed, (Selection{u"text"_s, u"App"_s, Rect{1, 2, 3, 4}}));
}

FileSelection selectionOf(const std::vector<QByteArray>& paths) {
  FileSelection selection;
  for (const QByteArray& path : paths) selection.urls.push_back(fileUrl(path));
  return selection;
}

TEST(FileUrls, KeepEveryByteOfAPath) {
  for (const QByteArray name : {" a ",
                                "%",
                                "%41",
                                "50%25",
                                "a#b",
                                "a?b",
                                "'\"`",
                                "a\\b",
                                "a\nb\r",
                                "\t",
                                "\xC3\xBC",
                                "e\xCC\x81",
                                "\xE5\xAD\x97\xF0\x9F\x98\x80",
                                "\xFF",
                                "a\xC3",
                                "\xED\xA0\x80",
                                "\xEF\xBB\xBF"
                                "a",
                                "\x01\x7F",
                                "a;b&c=d+e,f",
                                "[x]{y}|^~!$()*@",
                                "...",
                                "http:",
                                "a:b"}) {
    const QByteArray path = "/d /" + name;
    const QUrl url = fileUrl(path);
    EXPECT_TRUE(url.isValid() && url.isLocalFile()) << path.toPercentEncoding().constData();
    EXPECT_EQ(localPath(url), path);
    EXPECT_EQ(itemName(url), name);
    // As it comes in a list of URLs: all encoded, only what must be, and through the text form.
    EXPECT_EQ(localPath(QUrl::fromEncoded("file://" + path.toPercentEncoding("/"))), path);
    EXPECT_EQ(localPath(QUrl::fromEncoded("file://localhost" + path.toPercentEncoding("/!$&'()*+,;=:@"))),
              path);
    EXPECT_EQ(localPath(QUrl::fromEncoded(url.toEncoded())), path);
    EXPECT_EQ(localPath(QUrl(url.toString(QUrl::FullyEncoded))), path);
  }
  EXPECT_EQ(localPath(QUrl(u"file:///d/ü 字"_s)), "/d/\xC3\xBC \xE5\xAD\x97");
}

TEST(FileSelections, CompareByPathsInOrder) {
  const FileSelection selection = selectionOf({"/d/a", "/d/b"});
  FileSelection other{
      {QUrl(u"file://localhost/d/%61"_s), QUrl(u"file:///d/b"_s)}, u"Other"_s, Rect{1, 2, 3, 4}};
  EXPECT_EQ(selection, other);
  std::swap(other.urls[0], other.urls[1]);
  EXPECT_NE(selection, other);
  EXPECT_NE(selection, selectionOf({"/d/a"}));
  EXPECT_NE(selectionOf({"/d/\xFF"}), selectionOf({"/d/\xEF\xBF\xBD"}));
}

TEST(FileSelections, NameTheirFolderAndItems) {
  struct Case {
    std::vector<QByteArray> paths;
    QByteArray folder;
    QStringList names;
    QString label;
  };
  const Case cases[] = {
      {{"/Users/a/Report.pdf"}, "/Users/a", {u"Report.pdf"_s}, u"Report.pdf"_s},
      {{"/x/./y//z/../one ", "/x/two"}, "/x/y", {u"one "_s, u"two"_s}, u"2 items"_s},
      {{"/top"}, "/", {u"top"_s}, u"top"_s},
      {{"/d\xFF/folder/"}, "/d\xFF", {u"folder"_s}, u"folder"_s},
      {{"/d/\xFF"}, "/d", {u"\uFFFD"_s}, u"\uFFFD"_s},
      {{}, QDir::homePath().toUtf8(), {}, u"0 items"_s},
  };
  for (const Case& c : cases) {
    const FileSelection selection = selectionOf(c.paths);
    EXPECT_EQ(localPath(selection.parentDirectory()), c.folder);
    EXPECT_EQ(selection.itemNames(), c.names);
    EXPECT_EQ(selection.displayLabel(), c.label);
  }
}

TEST(FileSelections, KnowWhetherOneFolderHoldsTheItems) {
  const struct {
    std::vector<QByteArray> paths;
    bool expected;
  } cases[] = {
      {{}, true},
      {{"/d/a"}, true},
      {{"/d/a", "/d/b/", "/d/\xFF"}, true},
      {{"/d/./a", "/d/x/../b"}, true},
      {{"/a", "/b"}, true},
      {{"/d/a", "/e/a"}, false},
      {{"/d", "/d/a"}, false},
      {{"/d/a", "/d/b", "/d/c/a"}, false},
      {{"/d\xFF/a", "/d\xEF\xBF\xBD/a"}, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(areInOneFolder(selectionOf(c.paths).urls), c.expected)
        << (c.paths.empty() ? "none" : c.paths.back().toStdString());
  }
}

TEST(FileActionOutcomes, SumUpInOneText) {
  struct Case {
    FileActionOutcome outcome;
    QString summary;
  };
  const Case cases[] = {
      {{u"x"_s, u" out\n"_s, u"err"_s, 1}, u"out"_s},
      {{u"x"_s, u" \n"_s, u"warning\n"_s, 0}, u"warning"_s},
      {{u"x"_s, {}, {}, 127}, u"Command failed (exit 127)."_s},
      {{u"x"_s, {}, u"\n"_s, -1}, u"Command failed (exit -1)."_s},
      {{u"x"_s, {}, {}, 0}, u"Done."_s},
  };
  for (const Case& c : cases) EXPECT_EQ(c.outcome.summary(), c.summary);
}

TEST(Rects, OwnTheirLeftAndLowerEdges) {
  const Rect rect{10, 20, 30, 40};
  EXPECT_TRUE(rect.contains({10, 20}));
  EXPECT_FALSE(rect.contains({40, 20}));
  EXPECT_FALSE(rect.contains({10, 60}));
  EXPECT_EQ(rect.midX(), 25);
  EXPECT_EQ(rect.maxY(), 60);
}

}  // namespace
}  // namespace lumeno
