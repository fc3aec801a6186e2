#include <gtest/gtest.h>

#include <QJsonArray>

#include "probe_process.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using testing::ask;
using testing::probeLines;

QJsonObject parsed(const QByteArray& line) {
  return QJsonDocument::fromJson(line).object();
}

TEST(ProbeLines, EveryLineIsAnsweredInOrder) {
  const auto lines = probeLines(
      "{\"op\":\"template\",\"kind\":\"link\",\"text\":\"one\",\"id\":1}\n"
      "\n"
      "not json\n"
      "[1]\n"
      "\xFF\xFE\n"
      "{\"op\":\"nothing\",\"id\":{\"a\":[null,true]}}\n"
      "{\"id\":null}\n"
      "{\"op\":5,\"id\":\"x\"}\r\n"
      "{\"op\":\"template\",\"kind\":\"link\",\"text\":\"last\",\"id\":0.44000000000000006}");
  ASSERT_EQ(lines.size(), 9u);
  EXPECT_EQ(lines[0], R"({"id":1,"text":"one"})");
  for (size_t i = 1; i <= 4; ++i) {
    EXPECT_EQ(parsed(lines[i]).keys(), QStringList{u"error"_s}) << lines[i].constData();
  }
  for (size_t i = 5; i <= 7; ++i) EXPECT_TRUE(parsed(lines[i])["error"_L1].isString());
  EXPECT_EQ(parsed(lines[5])["id"_L1], (QJsonObject{{"a"_L1, QJsonArray{QJsonValue::Null, true}}}));
  EXPECT_TRUE(parsed(lines[6])["id"_L1].isNull());
  EXPECT_EQ(lines[8], R"({"id":0.44000000000000006,"text":"last"})");
  EXPECT_TRUE(probeLines("").empty());
}

TEST(ProbeLines, HugeAndOddTextsAreAnswered) {
  for (const QString& piece : {u"a "_s, u"<a"_s, u"at x(\n"_s, u"e\u0301"_s, u"😀"_s, u"1"_s}) {
    const auto answer = ask({{"op"_L1, "suggest"_L1}, {"text"_L1, piece.repeated(300'000 / piece.size())}});
    EXPECT_FALSE(answer["suggestions"_L1].toArray().isEmpty()) << piece.toStdString();
  }
  for (const QByteArray text : {R"(\ud800)", R"(x\udc00 y)", R"(\u0000 \u0000)"}) {
    for (const QByteArray op : {"suggest", "detect", "features"}) {
      const auto lines = probeLines("{\"op\":\"" + op + "\",\"text\":\"" + text + "\"}");
      ASSERT_EQ(lines.size(), 1u) << text.constData();
      EXPECT_FALSE(parsed(lines[0]).contains("error"_L1)) << lines[0].constData();
    }
  }
}

TEST(ProbeFields, MissingOrWrongFieldsAreErrors) {
  const QJsonObject place = {{"op"_L1, "place"_L1},
                             {"screens"_L1, QJsonArray()},
                             {"mouse"_L1, QJsonArray{0, 0}},
                             {"anchor"_L1, QJsonValue::Null},
                             {"preferBelow"_L1, false},
                             {"width"_L1, 1},
                             {"height"_L1, 1}};
  EXPECT_EQ(ask(place), (QJsonObject{{"frame"_L1, QJsonValue::Null}}));
  const auto changed = [](QJsonObject request, QLatin1StringView name, const QJsonValue& value) {
    request[name] = value;  // an undefined value removes the field
    return request;
  };
  const QJsonObject suggest = {{"op"_L1, "suggest"_L1}, {"text"_L1, "a"_L1}};
  const std::vector<QJsonObject> wrong = {
      changed(suggest, "text"_L1, QJsonValue::Undefined),
      changed(suggest, "text"_L1, 1),
      changed(suggest, "app"_L1, QJsonValue::Null),
      changed(suggest, "disabled"_L1, "link"_L1),
      changed(suggest, "disabled"_L1, QJsonArray{1}),
      changed(suggest, "timeZone"_L1, "Mars/Olympus"_L1),
      changed(suggest, "timeZone"_L1, ""_L1),
      changed(suggest, "locale"_L1, "xx"_L1),
      changed(suggest, "locale"_L1, "en_XX"_L1),
      changed(suggest, "now"_L1, "tomorrow"_L1),
      changed(suggest, "now"_L1, 1714557600),
      {{"op"_L1, "template"_L1}, {"kind"_L1, "Writing"_L1}, {"text"_L1, "a"_L1}},
      {{"op"_L1, "prompt"_L1}, {"title"_L1, "a"_L1}, {"text"_L1, "b"_L1}},
      {{"op"_L1, "shortcut"_L1}, {"keyCode"_L1, 65536}, {"modifiers"_L1, 0}},
      {{"op"_L1, "shortcut"_L1}, {"keyCode"_L1, 1.5}, {"modifiers"_L1, 0}},
      {{"op"_L1, "shortcut"_L1}, {"keyCode"_L1, 1}, {"modifiers"_L1, -1}},
      {{"op"_L1, "planPrompt"_L1}, {"paths"_L1, QJsonArray()}},
      {{"op"_L1, "planPrompt"_L1}, {"instruction"_L1, ""_L1}, {"paths"_L1, QJsonArray{1}}},
      {{"op"_L1, "planPrompt"_L1}, {"instruction"_L1, ""_L1}, {"paths"_L1, QJsonArray{"a/b"_L1}}},
      {{"op"_L1, "sanitize"_L1}},
      {{"op"_L1, "screen"_L1}, {"command"_L1, QJsonValue::Null}},
      changed(place, "mouse"_L1, QJsonArray{1}),
      changed(place, "anchor"_L1, QJsonArray{1, 2, 3, "4"_L1}),
      changed(place, "width"_L1, "1"_L1),
      changed(place, "screens"_L1, QJsonArray{QJsonObject{{"frame"_L1, QJsonArray{0, 0, 1, 1}}}}),
  };
  for (const QJsonObject& request : wrong) {
    EXPECT_TRUE(ask(request)["error"_L1].isString()) << QJsonDocument(request).toJson().constData();
  }
}

TEST(ProbeSuggest, GivesSuggestionsScoresAndDetections) {
  const auto answer = ask({{"op"_L1, "suggest"_L1},
                           {"text"_L1, "  +1 (555) 010-7788 "_L1},
                           {"app"_L1, "Messages"_L1},
                           {"disabled"_L1, QJsonArray{"email"_L1, "no such kind"_L1}}});
  const QJsonArray suggestions = answer["suggestions"_L1].toArray();
  ASSERT_EQ(suggestions.size(), 1);
  EXPECT_EQ(suggestions[0]["kind"_L1], "phone"_L1);
  EXPECT_EQ(suggestions[0]["confidence"_L1], 0.97);
  EXPECT_EQ(suggestions[0]["directURL"_L1], "tel:+15550107788"_L1);
  const QJsonObject scores = answer["scores"_L1].toObject();
  EXPECT_EQ(scores.size(), 12);
  EXPECT_EQ(scores["reply"_L1],
            (QJsonObject{{"score"_L1, 0.44000000000000006}, {"rationale"_L1, "few reply cues"_L1}}));
  const QJsonObject number = answer["detections"_L1]["direct"_L1][0].toObject();
  EXPECT_EQ(number, (QJsonObject{{"type"_L1, "phone"_L1},
                                 {"start"_L1, 2},
                                 {"length"_L1, 17},
                                 {"text"_L1, "+1 (555) 010-7788"_L1},
                                 {"number"_L1, "+1 (555) 010-7788"_L1}}));
  const auto fewer = ask(
      {{"op"_L1, "suggest"_L1}, {"text"_L1, "serendipity"_L1}, {"disabled"_L1, QJsonArray{"definition"_L1}}});
  EXPECT_EQ(fewer["suggestions"_L1].toArray().size(), 1);
  EXPECT_TRUE(fewer["suggestions"_L1][0]["directURL"_L1].isNull());
}

TEST(ProbeDetect, TimesAreReadInTheGivenZone) {
  QJsonObject request = {{"op"_L1, "detect"_L1},
                         {"text"_L1, "\n meet tomorrow at 3pm, https://example.com/ä"_L1},
                         {"timeZone"_L1, "America/New_York"_L1},
                         {"now"_L1, "2024-05-01T23:30:00"_L1}};
  const auto first = [&] { return ask(request)["dates"_L1][0].toObject(); };
  // 23:30 in New York is the first of May; 15:00 there is 19:00 UTC.
  EXPECT_EQ(first()["date"_L1], "2024-05-02T15:00:00"_L1);
  EXPECT_EQ(first()["epoch"_L1], 1714676400);
  EXPECT_EQ(first()["duration"_L1], 0);
  EXPECT_EQ(first()["start"_L1], 7);
  // An offset of its own wins over the zone: 23:30 UTC is still the first there, 04:30 UTC as well, 05:30 is
  // not.
  for (const auto& [now, date] : {std::pair{"2024-05-01T23:30:00Z"_L1, "2024-05-02T15:00:00"_L1},
                                  std::pair{"2024-05-02T03:30:00Z"_L1, "2024-05-02T15:00:00"_L1},
                                  std::pair{"2024-05-02T05:30:00+01:00"_L1, "2024-05-03T15:00:00"_L1}}) {
    request["now"_L1] = now;
    EXPECT_EQ(first()["date"_L1], date) << now.data();
  }
}

TEST(ProbeFeatures, NamesEveryCue) {
  const auto cues =
      ask({{"op"_L1, "features"_L1}, {"text"_L1, " Error: failed\n"_L1}, {"app"_L1, "iTerm2"_L1}});
  EXPECT_EQ(cues["trimmedText"_L1], "Error: failed"_L1);
  EXPECT_EQ(cues["cueCount"_L1].toObject().size(), 7);
  EXPECT_EQ(cues["cueCount"_L1]["errorCuePatterns"_L1], 2);
  EXPECT_EQ(cues["errorKeywordCount"_L1], 2);
  EXPECT_EQ(cues["isCodeApp"_L1], true);
  EXPECT_EQ(cues["locationPhrase"_L1], "iTerm2, focused window"_L1);
  EXPECT_EQ(cues["contextHaystack"_L1], "error: failed iterm2 "_L1);
  EXPECT_EQ(cues["filenameSlug"_L1], "error:-failed"_L1);
  EXPECT_EQ(cues["detectorMatches"_L1], (QJsonObject{{"date"_L1, false}, {"address"_L1, false}}));
}

TEST(ProbeTexts, AnswerThroughTheSharedFunctions) {
  const auto prompt = ask({{"op"_L1, "prompt"_L1},
                           {"title"_L1, "Title"_L1},
                           {"preview"_L1, "Do it."_L1},
                           {"app"_L1, "Notes"_L1},
                           {"text"_L1, "\tbody\n"_L1}});
  EXPECT_TRUE(prompt["prompt"_L1].toString().contains(
      u"in Notes.\n\nTask: Title — Do it.\n\nSelected text:\n\"\"\"\nbody\n\"\"\"\n\n"_s));
  EXPECT_EQ(ask({{"op"_L1, "shortcut"_L1}, {"keyCode"_L1, 49}, {"modifiers"_L1, 0x180000}})["display"_L1],
            QJsonValue(u"⌥⌘Space"_s));
  EXPECT_EQ(ask({{"op"_L1, "template"_L1}, {"kind"_L1, "link"_L1}, {"text"_L1, " as given "_L1}})["text"_L1],
            " as given "_L1);
  EXPECT_EQ(ask({{"op"_L1, "draftTitle"_L1}, {"text"_L1, "\n Lunch at 1 \nwith Mira"_L1}})["title"_L1],
            "Lunch at 1"_L1);
  const auto placed =
      ask({{"op"_L1, "place"_L1},
           {"screens"_L1, QJsonArray{QJsonObject{{"frame"_L1, QJsonArray{0, 0, 1440, 900}},
                                                 {"visibleFrame"_L1, QJsonArray{0, 0, 1440, 875}}}}},
           {"mouse"_L1, QJsonArray{0, 0}},
           {"anchor"_L1, QJsonArray{600, 30, 200, 20}},
           {"preferBelow"_L1, false},
           {"width"_L1, 360},
           {"height"_L1, 150}});
  EXPECT_EQ(placed, (QJsonObject{{"frame"_L1, QJsonArray{520, 690, 360, 150}}, {"isFlippedBelow"_L1, true}}));
}

TEST(ProbeFiles, AnswerThroughTheSharedFunctions) {
  const auto plan = ask({{"op"_L1, "planPrompt"_L1},
                         {"instruction"_L1, "zip them"_L1},
                         {"paths"_L1, QJsonArray{"/d/one two/a%20.txt"_L1, u"/d/one two/ü\n"_s}}});
  EXPECT_EQ(plan["workingDirectory"_L1], "/d/one two"_L1);
  EXPECT_TRUE(plan["prompt"_L1].toString().contains(
      u"set to:\n/d/one two\n\nSelected items (in that directory):\n- a%20.txt\n- $'ü\\n'\n\nRules:"_s));
  EXPECT_EQ(ask({{"op"_L1, "sanitize"_L1}, {"output"_L1, "```\n$ ls\n```"_L1}}),
            (QJsonObject{{"command"_L1, "ls"_L1}}));
  EXPECT_EQ(ask({{"op"_L1, "screen"_L1}, {"command"_L1, "rm -rf ~"_L1}})["blockedReason"_L1],
            "This command was blocked because it recursively deletes a top-level or home path."_L1);
  EXPECT_EQ(ask({{"op"_L1, "screen"_L1}, {"command"_L1, "rm -r a"_L1}}),
            (QJsonObject{{"blockedReason"_L1, QJsonValue::Null}}));
}

}  // namespace
}  // namespace lumeno
