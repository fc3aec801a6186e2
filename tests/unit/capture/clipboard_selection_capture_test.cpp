#include "capture/clipboard_selection_capture.h"

#include <gtest/gtest.h>

#include "records/file_selection.h"
#include "support/fake_keystroke_sender.h"
#include "support/fake_pasteboard.h"
#include "support/fake_selection_buffer.h"
#include "support/manual_scheduler.h"

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

using CopyKey = ClipboardSelectionCapture::CopyKey;

constexpr uint64_t window = 70;

class ClipboardSelectionCaptureTest : public testing::Test {
 protected:
  ClipboardSelectionCaptureTest() {
    pasteboard.put(saved);
    savedItems = pasteboard.items;
  }

  Job begin(CopyKey key = CopyKey::allowed) {
    return capture.capture(window, key, [this](std::optional<QString> text) {
      ++answers;
      answer = std::move(text);
    });
  }
  /// What the application puts on the pasteboard at the copy key, `delay` later.
  void copyGives(const QByteArray& type, const QByteArray& data, int delay = 0) {
    keystrokes.onCopy = [this, type, data, delay] {
      late = scheduler.after(std::chrono::milliseconds(delay), [this, type, data] {
        pasteboard.put({{type, data}});
      });
    };
  }

  const std::vector<std::pair<QByteArray, QByteArray>> saved{{"text/rtf", "{rich}"}, {"text/plain", "kept"}};
  std::vector<PasteboardSnapshot::Item> savedItems;
  ManualScheduler scheduler;
  FakePasteboard pasteboard{scheduler};
  FakeKeystrokeSender keystrokes{scheduler};
  FakeSelectionBuffer buffer{scheduler};
  ClipboardSelectionCapture capture{pasteboard, keystrokes, buffer, scheduler};
  Job late;
  int answers = 0;
  std::optional<QString> answer;
};

TEST_F(ClipboardSelectionCaptureTest, OfferedTextIsTakenWithoutAKey) {
  buffer.text = u" offered "_s;
  for (const CopyKey key : {CopyKey::allowed, CopyKey::forbidden}) {
    answer.reset();
    const Job job = begin(key);
    EXPECT_EQ(answer, std::nullopt) << "not before the call returns";
    scheduler.advance(0);
    EXPECT_EQ(answer, u" offered "_s);
  }
  EXPECT_EQ(keystrokes.copies, 0);
  EXPECT_EQ(pasteboard.snapshots, 0);
}

TEST_F(ClipboardSelectionCaptureTest, CopiedTextIsReturnedAsItIsAndThePasteboardPutBack) {
  buffer.text = u" \n"_s;
  copyGives("text/plain", "  copied\n", 40);
  const Job job = begin();
  scheduler.advance(44);
  EXPECT_EQ(answers, 0);
  scheduler.advance(1);
  EXPECT_EQ(answer, u"  copied\n"_s);
  EXPECT_EQ(pasteboard.items, savedItems);
}

TEST_F(ClipboardSelectionCaptureTest, OutcomesWithoutText) {
  const struct {
    const char* what;
    QByteArray type;
    QByteArray data;
    int copyDelay;
    int answeredAt;
    bool lateCopyStays;
  } cases[] = {
      {"an image", "image/png", "png", 0, 15, false},
      {"blanks", "text/plain", " \n ", 0, 15, false},
      {"the last look", "image/png", "png", 599, 600, false},
      {"after the last look", "text/plain", "late", 601, 600, true},
  };
  for (const auto& c : cases) {
    pasteboard.put(saved);
    answers = 0;
    copyGives(c.type, c.data, c.copyDelay);
    const Job job = begin();
    scheduler.advance(c.answeredAt - 1);
    EXPECT_EQ(answers, 0) << c.what;
    scheduler.advance(1);
    EXPECT_EQ(answers, 1) << c.what;
    EXPECT_EQ(answer, std::nullopt) << c.what;
    EXPECT_EQ(pasteboard.items, savedItems) << c.what;
    scheduler.advance(1000);
    EXPECT_EQ(pasteboard.string() == u"late"_s, c.lateCopyStays) << c.what;
    EXPECT_EQ(answers, 1) << c.what;
  }
}

TEST_F(ClipboardSelectionCaptureTest, EmptyPasteboardIsEmptyAgain) {
  pasteboard.items.clear();
  copyGives("text/plain", "copied");
  const Job job = begin();
  scheduler.advance(15);
  EXPECT_EQ(answer, u"copied"_s);
  EXPECT_TRUE(pasteboard.items.empty());
}

TEST_F(ClipboardSelectionCaptureTest, NoKeyIsPressedWhereItMayDoHarm) {
  const struct {
    const char* what;
    CopyKey key;
    bool secret;
    bool refused;
  } cases[] = {
      {"forbidden", CopyKey::forbidden, false, false},
      {"cannot be saved", CopyKey::allowed, true, false},
      {"refused", CopyKey::allowed, false, true},
  };
  for (const auto& c : cases) {
    pasteboard.isSecret = c.secret;
    keystrokes.refuses = c.refused;
    answers = 0;
    const Job job = begin(c.key);
    scheduler.advance(0);
    EXPECT_EQ(answers, 1) << c.what;
    EXPECT_EQ(answer, std::nullopt) << c.what;
    EXPECT_EQ(keystrokes.copies, 0) << c.what;
    EXPECT_EQ(pasteboard.restores, 0) << c.what;
  }
}

TEST_F(ClipboardSelectionCaptureTest, WithoutLooksTheKeyIsStillPressed) {
  ClipboardSelectionCapture impatient(pasteboard, keystrokes, buffer, scheduler,
                                      std::chrono::milliseconds(15), 0);
  copyGives("text/plain", "copied", 5);
  const Job job =
      impatient.capture(window, CopyKey::allowed, [this](const std::optional<QString>&) { ++answers; });
  scheduler.advance(0);
  EXPECT_EQ(answers, 1);
  EXPECT_EQ(keystrokes.copies, 1);
  EXPECT_EQ(pasteboard.restores, 1);
}

TEST_F(ClipboardSelectionCaptureTest, DroppedCaptureStillPutsThePasteboardBack) {
  copyGives("text/plain", "copied", 100);
  Job job = begin();
  scheduler.advance(50);
  job.cancel();
  scheduler.advance(1000);
  EXPECT_EQ(answers, 0);
  EXPECT_EQ(pasteboard.items, savedItems);
}

TEST_F(ClipboardSelectionCaptureTest, DroppedBeforeTheKeyPressesNone) {
  Job atOnce = begin();
  atOnce.cancel();
  scheduler.advance(1000);
  keystrokes.delay = std::chrono::milliseconds(300);
  Job whileKeysAreHeld = begin();
  scheduler.advance(200);
  EXPECT_EQ(pasteboard.snapshots, 1);
  whileKeysAreHeld.cancel();
  scheduler.advance(1000);
  EXPECT_EQ(keystrokes.copies, 0);
  EXPECT_EQ(pasteboard.restores, 0);
  EXPECT_EQ(scheduler.pendingCount(), 0U);
}

TEST_F(ClipboardSelectionCaptureTest, LaterCaptureWaitsForADroppedOne) {
  copyGives("text/plain", "first", 100);
  Job first = begin();
  scheduler.advance(50);
  first.cancel();
  const Job second = begin();
  scheduler.advance(50 + 5);
  EXPECT_EQ(pasteboard.items, savedItems);
  EXPECT_EQ(keystrokes.copies, 2);
  scheduler.advance(1000);
  EXPECT_EQ(answer, u"first"_s) << "the second key copied the same text again";
  EXPECT_EQ(pasteboard.items, savedItems);
}

TEST_F(ClipboardSelectionCaptureTest, FilesAreCopiedWithTheirOwnKey) {
  buffer.text = u"selected text"_s;  // no file manager's
  const struct {
    const char* what;
    QByteArray type;
    QByteArray data;
    std::optional<std::vector<QUrl>> expected;
  } cases[] = {
      {"files in their order",
       "text/uri-list",
       "file:///tmp/b%FF\r\nfile:///tmp/a%20b\r\n",
       {{fileUrl("/tmp/b\xFF"), fileUrl("/tmp/a b")}}},
      {"one that is not local", "text/uri-list", "file:///tmp/b\r\nsmb://server/a\r\n", std::nullopt},
      {"of several folders", "text/uri-list", "file:///tmp/a\r\nfile:///tmp/c/a\r\n", std::nullopt},
      {"the text of a name that is edited", "text/plain", "file:///tmp/b", std::nullopt},
  };
  int copies = 0;
  for (const auto& c : cases) {
    pasteboard.put(saved);
    copyGives(c.type, c.data, 20);
    std::optional<std::vector<QUrl>> files;
    bool isAnswered = false;
    const Job job = capture.captureFiles(window, [&](std::optional<std::vector<QUrl>> urls) {
      isAnswered = true;
      files = std::move(urls);
    });
    EXPECT_FALSE(isAnswered) << c.what;
    scheduler.advance(30);
    EXPECT_TRUE(isAnswered) << c.what;
    EXPECT_EQ(files, c.expected) << c.what;
    EXPECT_EQ(pasteboard.items, savedItems) << c.what;
    EXPECT_EQ(keystrokes.fileCopies, ++copies) << c.what;
  }
  EXPECT_EQ(keystrokes.copies, 0);
}

TEST_F(ClipboardSelectionCaptureTest, TextAndFilesTakeTurns) {
  buffer.text = u" "_s;
  copyGives("text/uri-list", "file:///tmp/a\n", 100);
  std::optional<std::vector<QUrl>> files;
  const Job first = capture.captureFiles(
      window, [&files](std::optional<std::vector<QUrl>> urls) { files = std::move(urls); });
  const Job second = begin();
  scheduler.advance(50);
  EXPECT_EQ(keystrokes.copies, 0) << "the pasteboard is not the user's own yet";
  scheduler.advance(1000);
  EXPECT_EQ(files, std::optional(std::vector{fileUrl("/tmp/a")}));
  EXPECT_EQ(answers, 1);
  EXPECT_EQ(pasteboard.items, savedItems);
}

TEST_F(ClipboardSelectionCaptureTest, EndOfTheCapturerPutsThePasteboardBackAtOnce) {
  auto brief = std::make_unique<ClipboardSelectionCapture>(pasteboard, keystrokes, buffer, scheduler);
  copyGives("text/plain", "copied");
  const Job job =
      brief->capture(window, CopyKey::allowed, [this](const std::optional<QString>&) { ++answers; });
  scheduler.advance(1);
  EXPECT_NE(pasteboard.items, savedItems);
  brief.reset();
  EXPECT_EQ(pasteboard.items, savedItems);
  EXPECT_EQ(answers, 0);
}

}  // namespace
}  // namespace lumeno
