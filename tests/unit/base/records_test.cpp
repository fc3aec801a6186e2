#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QSet>

#include "base/geometry.h"
#include "records/action_result.h"
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
