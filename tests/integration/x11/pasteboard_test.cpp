#include "platform/x11/x11_pasteboard.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <csignal>
#include <tuple>

#include "records/file_selection.h"
#include "selection_test_support.h"

namespace lumeno {
namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

using Types = std::vector<std::pair<QByteArray, QByteArray>>;

class PasteboardTest : public SelectionTest {
 protected:
  std::optional<PasteboardSnapshot> snapshot() {
    Awaited<std::optional<PasteboardSnapshot>> answer;
    const Job job = pasteboard_.snapshot(answer.receiver());
    return answer.get();
  }
  std::optional<QString> readString() {
    Awaited<std::optional<QString>> answer;
    const Job job = pasteboard_.readString(answer.receiver());
    return answer.get();
  }
  std::optional<std::vector<QUrl>> readFileUrls() {
    Awaited<std::optional<std::vector<QUrl>>> answer;
    const Job job = pasteboard_.readFileUrls(answer.receiver());
    return answer.get();
  }
  bool waitForChange(int64_t count) {
    return waitUntil([this, count] { return pasteboard_.changeCount() >= count; });
  }
  std::optional<QByteArray> targets() { return xclipRead("clipboard", "TARGETS"); }

  X11Pasteboard pasteboard_{*connection_, scheduler_};
};

/// An offer of exactly these bytes, for the scripted owner.
QString offer(const QByteArray& target, const QByteArray& bytes) {
  return QString::fromUtf8(target + "=hex:" + bytes.toHex());
}

TEST_F(PasteboardTest, putsBackEveryTypeInOrderAndByteForByte) {
  QByteArray page;
  for (int i = 0; page.size() < 700'000; ++i) page += "row " + QByteArray::number(i) + '\n';
  QTemporaryFile file;
  ASSERT_TRUE(file.open());
  file.write(page);
  file.flush();
  const QByteArray numbers("\1\0\0\0\2\0\0\0", 8);
  ScriptedOwner owner({"DELETE=x", "text/html=@" + file.fileName(), offer("UTF8_STRING", "caf\xc3\xa9"),
                       offer("STRING", "caf\xe9"), offer("TEXT:STRING", "caf\xe9"), "image/bmp=BM",
                       "INSERT_SELECTION=x", offer("image/png", "\x89PNG"), "image/tiff=II",
                       offer("numbers:INTEGER/32", numbers), "empty="});
  ASSERT_TRUE(waitForChange(1));
  const auto saved = snapshot();
  ASSERT_TRUE(saved);
  const Types expected{{"text/html", page}, {"UTF8_STRING", "caf\xc3\xa9"}, {"STRING", "caf\xe9"},
                       {"TEXT", "caf\xe9"}, {"image/png", "\x89PNG"},       {"numbers", numbers},
                       {"empty", ""}};
  EXPECT_EQ(saved->items, (std::vector{PasteboardSnapshot::Item{expected}}));

  ScriptedOwner other({"UTF8_STRING=copied meanwhile"});
  ASSERT_TRUE(waitForChange(2));
  pasteboard_.restore(*saved);
  ASSERT_TRUE(waitForChange(3));
  EXPECT_TRUE(other.waitForEnd());

  const QByteArray list = targets().value_or("");
  EXPECT_TRUE(list.endsWith("text/html\nUTF8_STRING\nSTRING\nTEXT\nimage/png\nnumbers\nempty\n"))
      << list.toStdString();
  // The type and format on the wire are the owner's too.
  X11SelectionTransfers transfers(*connection_, scheduler_);
  for (const auto& [target, type, format] :
       {std::tuple{"TEXT", "STRING", 8}, std::tuple{"numbers", "INTEGER", 32}}) {
    Awaited<TransferResult> answer;
    const Job job =
        transfers.start({connection_->atom("CLIPBOARD"), connection_->atom(target), QDeadlineTimer(2s), 1000},
                        answer.receiver());
    const SelectionValue value = answer.get().value;
    EXPECT_EQ(connection_->atomName(value.type), type);
    EXPECT_EQ(value.format, format);
  }
  EXPECT_EQ(xclipRead("clipboard", "text/html"), page);
  // What was put back can be saved again as it was.
  EXPECT_EQ(snapshot()->items, saved->items);
}

TEST_F(PasteboardTest, restoresOnlyAfterExactlyOneChange) {
  ScriptedOwner first({"--keep", "UTF8_STRING=first"});
  ASSERT_TRUE(waitForChange(1));
  const auto saved = snapshot();
  ASSERT_TRUE(saved);

  pasteboard_.restore(*saved);
  runFor(60ms);
  EXPECT_EQ(pasteboard_.changeCount(), 1) << "nothing had changed";

  ScriptedOwner second({"--keep", "UTF8_STRING=second"});
  ScriptedOwner third({"--keep", "UTF8_STRING=third"});
  ASSERT_TRUE(waitForChange(3));
  pasteboard_.restore(*saved);
  runFor(60ms);
  EXPECT_EQ(pasteboard_.changeCount(), 3) << "somebody newer was there";
  EXPECT_EQ(readString(), u"third"_s);

  // Somebody newer comes while the restore is under way, before we have been told.
  const auto again = snapshot();
  ASSERT_TRUE(again);
  second.command("own");
  ASSERT_TRUE(waitForChange(4));
  first.command("own");
  ASSERT_TRUE(first.process().waitForBytesWritten());
  ASSERT_TRUE(first.process().waitForReadyRead());
  pasteboard_.restore(*again);
  runFor(60ms);
  EXPECT_EQ(pasteboard_.changeCount(), 5);
  EXPECT_EQ(readString(), u"first"_s);
}

TEST_F(PasteboardTest, anEmptyClipboardIsEmptyAgainAfterwards) {
  const auto saved = snapshot();
  ASSERT_TRUE(saved);
  EXPECT_TRUE(saved->items.empty());
  ScriptedOwner owner({"UTF8_STRING=copied"});
  ASSERT_TRUE(waitForChange(saved->changeCount + 1));
  pasteboard_.restore(*saved);
  EXPECT_TRUE(owner.waitForEnd());
  EXPECT_EQ(targets(), std::nullopt);
  EXPECT_EQ(readString(), std::nullopt);
}

TEST_F(PasteboardTest, countsEveryChange) {
  {
    ScriptedOwner owner({"UTF8_STRING=x"});
    ASSERT_TRUE(waitForChange(1));
    owner.command("own");
    ASSERT_TRUE(waitForChange(2));
  }
  ASSERT_TRUE(waitForChange(3)) << "the owner's end";
  pasteboard_.setString(u"ours"_s);
  // The text and the owner: no capture can take it for the one change that it waits for.
  ASSERT_TRUE(waitForChange(5));
  runFor(60ms);
  EXPECT_EQ(pasteboard_.changeCount(), 5);
}

TEST_F(PasteboardTest, itsOwnClaimIsNoNewsToASnapshot) {
  pasteboard_.setString(u"ours"_s);
  const auto saved = snapshot();
  ASSERT_TRUE(saved);
  ASSERT_TRUE(waitForChange(2));
  EXPECT_EQ(saved->changeCount, pasteboard_.changeCount());
}

TEST_F(PasteboardTest, savesAllOrNothingAndReadsNoSecret) {
  QStringList manyTypes{"UTF8_STRING=x"};
  for (int i = 0; i < 500; ++i) manyTypes.push_back(u"type-%1=x"_s.arg(i));
  const struct {
    QStringList owner;
    std::optional<bool> isSaved;
    bool isTextRead;
  } cases[] = {
      {{"--secret", "UTF8_STRING=hunter2"}, false, false},
      {{"UTF8_STRING=x", "x-kde-passwordManagerHint=public"}, true, true},
      {{"--hang", "UTF8_STRING=x"}, false, false},
      {{"UTF8_STRING=x", "slow=y", "--hang-on", "slow"}, false, true},
      {{"--stall", "UTF8_STRING=x"}, false, false},
      {{"PIXMAP=x"}, false, false},  // there is something, but nothing to put back
      {{"--refuse", "text/html", "text/html=<p>"}, false, false},
      {{"--refuse", "text/html", "text/html=<p>", "UTF8_STRING=x"}, true, true},
      {{"--refuse", "image/png", "image/png=x", "image/bmp=x", "UTF8_STRING=x"}, false, true},
      {manyTypes, false, true},
      {manyTypes + QStringList{"x-kde-passwordManagerHint=secret"}, false, false},
      {{"--size", "3000000", "text/html=<p>"}, true, true},
      // Whether this much can be saved in time depends on the machine.
      {{"--size", "17000000", "--piece", "2000000"}, std::nullopt, false},
      {{"--size", "40000000", "--piece", "2000000"}, false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.owner.join(' ').toStdString());
    const int64_t before = pasteboard_.changeCount();
    ScriptedOwner owner(c.owner);
    ASSERT_TRUE(waitForChange(before + 1));
    // On a busy machine a read may not come within its time; what is refused is refused every time.
    const auto expectThat = [](bool comes, const std::function<bool()>& read) {
      EXPECT_EQ(comes ? waitUntil(read) : read(), comes);
    };
    expectBelow(200, [&] {
      Heartbeat heartbeat;
      const auto isSaved = [this] { return snapshot().has_value(); };
      c.isSaved ? expectThat(*c.isSaved, isSaved) : (void)isSaved();
      expectThat(c.isTextRead, [this] { return readString().has_value(); });
      return heartbeat.longestGap();
    });
    if (c.owner.contains("--secret")) {
      EXPECT_EQ(owner.lines("request UTF8_STRING"), 0) << "not even asked for";
    }
  }
}

TEST_F(PasteboardTest, readsTextAsOffered) {
  const struct {
    QStringList owner;
    std::optional<QString> text;
  } cases[] = {
      {{"STRING=plain", offer("UTF8_STRING", "  gr\xc3\xbc\xc3\x9f\xf0\x9f\x99\x82\n")}, u"  grüß🙂\n"_s},
      {{offer("STRING", "gr\xfc\xdf")}, u"grüß"_s},
      {{offer("text/plain;charset=UTF-8", "gr\xc3\xbc\xc3\x9f"), "STRING=?"}, u"grüß"_s},
      {{offer("STRING:UTF8_STRING", "gr\xc3\xbc\xc3\x9f")}, u"grüß"_s},
      {{"UTF8_STRING:odd=x", "STRING=y"}, u"y"_s},
      {{"UTF8_STRING="}, u""_s},
      {{"image/png=x"}, std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.owner.join(' ').toStdString());
    ScriptedOwner owner(c.owner);
    EXPECT_EQ(readString(), c.text);
  }
}

TEST_F(PasteboardTest, readsFilesByteForByte) {
  const std::vector files{fileUrl("/tmp/b\xFF"), fileUrl("/tmp/a b")};
  // That there is such a file does not say that it is the one.
  const QTemporaryDir replaced(QDir::tempPath() + u"/\uFFFD-XXXXXX"_s);
  const QByteArray replacedUri = QUrl::fromLocalFile(replaced.path()).toEncoded();
  const struct {
    QStringList owner;
    std::optional<std::vector<QUrl>> files;
  } cases[] = {
      {{"UTF8_STRING=/tmp/other", "text/uri-list=file:///tmp/b%FF\r\nfile:///tmp/a%20b\r\n"}, files},
      {{"x-special/gnome-copied-files=copy\nfile:///tmp/b%FF\nfile:///tmp/a%20b"}, files},
      {{"x-special/mate-copied-files=cut\nfile:///tmp/b%FF"}, std::nullopt},
      {{"text/uri-list=sftp://server/a\r\n"}, std::nullopt},
      {{QString::fromUtf8("text/uri-list=" + replacedUri + "\r\n")}, std::nullopt},
      {{"UTF8_STRING=file:///tmp/a"}, std::nullopt},
      {{"--secret", "text/uri-list=file:///tmp/a\r\n"}, std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.owner.join(' ').toStdString());
    ScriptedOwner owner(c.owner);
    EXPECT_EQ(readFileUrls(), c.files);
  }
}

TEST_F(PasteboardTest, aReadFollowsTheSelectionToItsNewOwner) {
  ScriptedOwner slow({"--hang", "UTF8_STRING=old"});
  ASSERT_TRUE(waitForChange(1));
  Awaited<std::optional<QString>> answer;
  const Job job = pasteboard_.readString(answer.receiver());
  slow.waitForLines("request ", 1);
  ScriptedOwner quick({"UTF8_STRING=new"});
  EXPECT_EQ(answer.get(), u"new"_s);
}

TEST_F(PasteboardTest, otherProgramsReadWhatItSets) {
  const struct {
    QString text;
    bool isLatin1;
  } cases[] = {{u"grüß\nGott"_s, true}, {u"–🙂"_s, false}, {u""_s, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text.toStdString());
    const int64_t before = pasteboard_.changeCount();
    pasteboard_.setString(c.text);
    // Known here at once, before the server has heard of it.
    EXPECT_EQ(readString(), c.text);
    ASSERT_TRUE(waitForChange(before + 1));
    for (const char* target : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT"}) {
      EXPECT_EQ(xclipRead("clipboard", target), c.text.toUtf8()) << target;
    }
    EXPECT_EQ(xclipRead("clipboard", "STRING"), c.isLatin1 ? std::optional(c.text.toLatin1()) : std::nullopt);
    EXPECT_EQ(xclipRead("clipboard", "image/png"), std::nullopt);
  }
}

// Several targets in one question, one of them unknown, one too long for a single property.
TEST_F(PasteboardTest, answersSeveralTargetsAtOnce) {
  const QString text = u"0123456789"_s.repeated(60'000);
  pasteboard_.setString(text);
  ASSERT_TRUE(waitForChange(1));
  const auto other = X11Connection::open();
  ASSERT_TRUE(other);
  const std::vector<xcb_atom_t> pairs{other->atom("TIMESTAMP"), other->atom("A"),    other->atom("unknown"),
                                      other->atom("B"),         other->atom("TEXT"), other->atom("C")};
  xcb_change_property(other->xcb(), XCB_PROP_MODE_REPLACE, other->helperWindow(), other->atom("LIST"),
                      other->atom("ATOM_PAIR"), 32, static_cast<uint32_t>(pairs.size()), pairs.data());
  xcb_convert_selection(other->xcb(), other->helperWindow(), other->atom("CLIPBOARD"),
                        other->atom("MULTIPLE"), other->atom("LIST"), XCB_CURRENT_TIME);
  const auto property = [&](const char* name, bool take) {
    return XcbPtr<xcb_get_property_reply_t>(
        xcb_get_property_reply(other->xcb(),
                               xcb_get_property(other->xcb(), take, other->helperWindow(), other->atom(name),
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, 1'000'000),
                               nullptr));
  };
  bool isAnswered = false;
  const auto notified = other->onEvent(XCB_SELECTION_NOTIFY, [&](const auto&) { isAnswered = true; });
  ASSERT_TRUE(waitUntil([&] { return isAnswered; }));

  const auto list = property("LIST", false);
  const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(list.get()));
  ASSERT_EQ(list->value_len, pairs.size());
  EXPECT_EQ((std::vector<xcb_atom_t>{atoms[1], atoms[3], atoms[5]}),
            (std::vector<xcb_atom_t>{other->atom("A"), XCB_ATOM_NONE, other->atom("C")}));
  EXPECT_EQ(property("A", false)->type, static_cast<xcb_atom_t>(XCB_ATOM_INTEGER));
  EXPECT_EQ(property("C", true)->type, other->atom("INCR"));
  QByteArray received;
  ASSERT_TRUE(waitUntil([&] {
    const auto piece = property("C", true);
    received.append(static_cast<const char*>(xcb_get_property_value(piece.get())),
                    xcb_get_property_value_length(piece.get()));
    return piece->type != XCB_ATOM_NONE && piece->value_len == 0;
  }));
  EXPECT_EQ(received, text.toUtf8());
}

TEST_F(PasteboardTest, largeTextGoesBothWays) {
  QString text;
  for (int i = 0; text.size() < 5'000'000; ++i) text += u"Zeile %1 äöü\n"_s.arg(i);
  expectBelow(200, [&] {
    Heartbeat heartbeat;
    const int64_t before = pasteboard_.changeCount();
    pasteboard_.setString(text);
    EXPECT_TRUE(waitForChange(before + 1));
    // One who stops taking pieces must not keep others from theirs.
    Program stuck("xclip", {"-o", "-selection", "clipboard", "-t", "UTF8_STRING"});
    stuck.process().setReadChannel(QProcess::StandardOutput);
    kill(static_cast<pid_t>(stuck.process().processId()), SIGSTOP);
    EXPECT_EQ(xclipRead("clipboard", "UTF8_STRING"), text.toUtf8());

    xclipWrite("clipboard", "UTF8_STRING", text.toUtf8());
    EXPECT_TRUE(waitUntil([&] { return readString() == text; })) << "a busy machine may need several reads";
    return heartbeat.longestGap();
  });
}

TEST_F(PasteboardTest, aClipboardManagerTakesOver) {
  const auto handOver = [this](Awaited<bool>& done) {
    pasteboard_.handOver([receive = done.receiver()] { receive(true); });
    EXPECT_EQ(done.calls(), 0) << "never inside the call";
    return done.get();
  };
  Awaited<bool> nothing;
  EXPECT_TRUE(handOver(nothing));

  const QString text = u"kept "_s.repeated(200'000);
  pasteboard_.setString(text);
  // There is no manager to wait for.
  expectBelow(500, [&] {
    QElapsedTimer elapsed;
    elapsed.start();
    Awaited<bool> nobody;
    EXPECT_TRUE(handOver(nobody));
    return elapsed.elapsed();
  });

  ScriptedOwner manager({"--manager"});
  Awaited<bool> done;
  EXPECT_TRUE(handOver(done));
  EXPECT_EQ(manager.lines("saved UTF8_STRING 1000000"), 1);
  EXPECT_EQ(manager.lines("saved "), 5);
  EXPECT_EQ(xclipRead("clipboard", "STRING"), text.toUtf8());

  pasteboard_.setString(u"again"_s);
  ScriptedOwner hung({"--selection", "CLIPBOARD_MANAGER", "--hang"});
  Awaited<bool> deadline;
  EXPECT_TRUE(handOver(deadline));
}

}  // namespace
}  // namespace lumeno
