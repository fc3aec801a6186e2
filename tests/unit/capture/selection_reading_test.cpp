#include "capture/selection_reading.h"

#include <gtest/gtest.h>

#include "capture/application_rules.h"
#include "support/fake_accessibility.h"

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

using ElementRef = std::shared_ptr<FakeElement>;

ElementRef elementWithMarkerRange() {
  auto element = std::make_shared<FakeElement>();
  element->markerRange = std::make_shared<TextMarkerRange>();
  return element;
}

TEST(SelectionReading, SelectedTextIsKeptAsGiven) {
  const auto element = FakeElement::withText(u"  hello \n"_s);
  EXPECT_EQ(readSelection(*element), (ReadResult{u"  hello \n"_s, std::nullopt}));
}

TEST(SelectionReading, BlankTextIsNoSelection) {
  for (const auto& blank : {u""_s, u"  \n\t"_s, u"\u00A0\u2028"_s}) {
    const auto element = FakeElement::withText(blank);
    EXPECT_EQ(readSelection(*element), std::nullopt) << qPrintable(blank);
    auto marked = elementWithMarkerRange();
    marked->markerString = blank;
    EXPECT_EQ(readSelection(*marked), std::nullopt);
  }
}

TEST(SelectionReading, BoundsFallBackToTheElementFrameThenToNothing) {
  const Rect frame{10, 20, 300, 200};
  const struct {
    const char* what;
    std::optional<Rect> range;
    std::optional<Rect> frame;
    std::optional<Rect> expected;
  } cases[] = {
      {"range", Rect{1, 2, 30, 14}, frame, Rect{1, 2, 30, 14}},
      {"caret line", Rect{1, 2, 0, 14}, frame, Rect{1, 2, 0, 14}},
      {"flat line", Rect{1, 2, 30, 0}, frame, Rect{1, 2, 30, 0}},
      {"collapsed range", Rect{1, 2, 0, 0}, frame, frame},
      {"negative range", Rect{1, 2, -1, 0}, frame, frame},
      {"no range", std::nullopt, frame, frame},
      {"frame without width", std::nullopt, Rect{10, 20, 0, 200}, std::nullopt},
      {"frame without height", std::nullopt, Rect{10, 20, 300, 0}, std::nullopt},
      {"nothing", std::nullopt, std::nullopt, std::nullopt},
  };
  for (const auto& c : cases) {
    const auto element = FakeElement::withText(u"word"_s);
    auto marked = elementWithMarkerRange();
    marked->markerString = u"word"_s;
    if (c.range) {
      element->setRangeBounds(*c.range);
      marked->markerBounds = c.range;
    }
    if (c.frame) {
      element->setFrame(*c.frame);
      marked->setFrame(*c.frame);
    }
    EXPECT_EQ(readSelection(*element), (ReadResult{u"word"_s, c.expected})) << c.what;
    EXPECT_EQ(readSelection(*marked), (ReadResult{u"word"_s, c.expected})) << c.what;
  }
}

TEST(SelectionReading, FrameNeedsBothPositionAndSize) {
  FakeElement element;
  element.extent = Size{10, 10};
  EXPECT_EQ(elementFrame(element), std::nullopt);
  element.origin = Point{0, 0};
  EXPECT_EQ(elementFrame(element), (Rect{0, 0, 10, 10}));
}

TEST(SelectionReading, TextMarkersServeWhereThereIsNoSelectedText) {
  const auto element = elementWithMarkerRange();
  element->markerAttributedString = u"rich"_s;
  EXPECT_EQ(readSelection(*element)->text, u"rich"_s);
  element->markerString = u"plain"_s;
  EXPECT_EQ(readSelection(*element)->text, u"plain"_s);
  element->text = u" "_s;
  EXPECT_EQ(readSelection(*element)->text, u"plain"_s);
  element->text = u"selected"_s;
  EXPECT_EQ(readSelection(*element)->text, u"selected"_s);
}

TEST(SelectionReading, ScanFindsTheNearestFirst) {
  const auto root = std::make_shared<FakeElement>();
  const auto branch = std::make_shared<FakeElement>();
  branch->childElements = {FakeElement::withText(u"deep"_s)};
  root->childElements = {branch, FakeElement::withText(u"near"_s)};
  EXPECT_EQ(scanDescendants(root)->text, u"near"_s);
}

TEST(SelectionReading, ScanExaminesAHundredAndTwentyElements) {
  for (const int position : {120, 121}) {
    // The root is position 1; ten branches share the rest, so that the order is by level.
    const auto root = std::make_shared<FakeElement>();
    std::vector<ElementRef> all{root};
    for (int i = 0; i < 10; ++i) {
      all.push_back(std::make_shared<FakeElement>());
      root->childElements.push_back(all.back());
    }
    for (std::size_t parent = 1; static_cast<int>(all.size()) < position; ++parent) {
      for (int i = 0; i < 20; ++i) {
        all.push_back(std::make_shared<FakeElement>());
        all[parent]->childElements.push_back(all.back());
      }
    }
    all[static_cast<std::size_t>(position - 1)]->text = u"found"_s;
    EXPECT_EQ(scanDescendants(root).has_value(), position == 120) << position;
    EXPECT_EQ(all[119]->textReads, 1);
  }
}

RunningApplication withIdentifier(std::optional<QString> identifier) {
  RunningApplication application;
  application.bundleIdentifier = std::move(identifier);
  return application;
}

TEST(ApplicationRules, PrefixesAreExact) {
  const struct {
    std::optional<RunningApplication> application;
    bool clipboardFirst;
    bool mail;
  } cases[] = {
      {withIdentifier(u"com.microsoft.VSCode"_s), true, false},
      {withIdentifier(u"com.google.Chrome.canary"_s), true, false},
      {withIdentifier(u"com.google.chrome"_s), false, false},
      {withIdentifier(u"org.mozilla.firefox"_s), true, false},
      {withIdentifier(u"notion.id"_s), true, false},
      {withIdentifier(u"my.notion.id"_s), false, false},
      {withIdentifier(u"com.apple.mail"_s), false, true},
      {withIdentifier(u"com.apple.mailer"_s), false, true},
      {withIdentifier(std::nullopt), false, false},
      {std::nullopt, false, false},
  };
  for (const auto& c : cases) {
    const auto name =
        c.application && c.application->bundleIdentifier ? *c.application->bundleIdentifier : u"none"_s;
    EXPECT_EQ(isClipboardFirst(c.application), c.clipboardFirst) << qPrintable(name);
    EXPECT_EQ(isMail(c.application), c.mail) << qPrintable(name);
  }
}

TEST(ApplicationRules, NamelessApplicationsHaveALabel) {
  RunningApplication application;
  EXPECT_EQ(sourceLabel(std::nullopt), u"the active app"_s);
  EXPECT_EQ(sourceLabel(application), u"the active app"_s);
  application.localizedName = u"Notes"_s;
  EXPECT_EQ(sourceLabel(application), u"Notes"_s);
}

}  // namespace
}  // namespace lumeno
