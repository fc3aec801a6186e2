#include "platform/freedesktop/json_preferences_store.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <csignal>

#include "support/temporary_desktop.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

const QString file = u"lumeno/preferences.json"_s;

QByteArray compact(const QByteArray& json) {
  return QJsonDocument::fromJson(json).toJson(QJsonDocument::Compact);
}

TEST(JsonPreferencesStore, KeepsTypesUnknownKeysAndEditsFromOutside) {
  const TemporaryDesktop desktop;
  desktop.write(file, R"({"yes":true,"text":"true","future":{"list":[1,null]},"gone":1})");
  {
    JsonPreferencesStore store(desktop.path(file));
    EXPECT_TRUE(store.value(u"yes"_s).isBool());
    EXPECT_TRUE(store.value(u"text"_s).isString());
    EXPECT_TRUE(store.value(u"absent"_s).isUndefined());
    store.setValue(u"shortcut"_s, QJsonObject{{u"keyCode"_s, 49}, {u"modifiers"_s, 9007199254740991.0}});
    desktop.write(file, R"({"yes":false,"text":"true","future":{"list":[1,null]},"outside":[]})");
    store.remove(u"text"_s);
    store.setValue(u"model"_s, u"llama3.2"_s);
    EXPECT_EQ(store.problem().get(), QString());
    EXPECT_FALSE(store.value(u"yes"_s).toBool()) << "what was edited outside is known after a write";
  }
  EXPECT_EQ(compact(desktop.read(file)),
            R"({"future":{"list":[1,null]},"model":"llama3.2","outside":[],"yes":false})");
}

TEST(JsonPreferencesStore, BeginsEmptyWithoutAFile) {
  for (const char* content : {"", " \n", "{}"}) {
    const TemporaryDesktop desktop;
    if (*content) desktop.write(file, content);
    JsonPreferencesStore store(desktop.path(file));
    store.setValue(u"a"_s, 1);
    EXPECT_EQ(compact(desktop.read(file)), R"({"a":1})");
    EXPECT_EQ(store.problem().get(), QString());
  }
}

TEST(JsonPreferencesStore, SetsADamagedFileAsideAndTellsOnce) {
  const QByteArray damaged[] = {"{\"a\":",  "[1]",          "7",
                                "\xff\xfe", R"({"a":1} x)", "{\"a\":\"" + QByteArray(5'000'000, 'x') + "\"}"};
  for (const QByteArray& content : damaged) {
    SCOPED_TRACE(content.left(20).toStdString());
    const TemporaryDesktop desktop;
    desktop.write(file, content);
    desktop.write(file + u".damaged-1"_s, "older");
    JsonPreferencesStore store(desktop.path(file));
    int told = 0;
    const Subscription subscription = store.problem().subscribe([&](const QString& text) {
      if (text.contains(".damaged-2"_L1)) ++told;
    });
    store.setValue(u"b"_s, 2);
    store.setValue(u"c"_s, 3);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(desktop.read(file + u".damaged-1"_s), "older");
    EXPECT_EQ(desktop.read(file + u".damaged-2"_s), content);
    EXPECT_EQ(compact(desktop.read(file)), R"({"b":2,"c":3})");
  }
}

TEST(JsonPreferencesStore, AFileLostWhileRunningLosesNothingKnown) {
  for (const char* left : {"rubbish", "", " \n", static_cast<const char*>(nullptr)}) {
    SCOPED_TRACE(left ? left : "removed");
    const TemporaryDesktop desktop;
    desktop.write(file, R"({"a":1})");
    JsonPreferencesStore store(desktop.path(file));
    if (left) {
      desktop.write(file, left);
    } else {
      QFile::remove(desktop.path(file));
    }
    store.setValue(u"b"_s, 2);
    EXPECT_EQ(compact(desktop.read(file)), R"({"a":1,"b":2})");
    const bool isDamaged = left && *left == 'r';
    EXPECT_EQ(desktop.exists(file + u".damaged-1"_s), isDamaged);
    EXPECT_EQ(store.problem().get().isEmpty(), !isDamaged);
  }
}

TEST(JsonPreferencesStore, KeepsLinksAndPermissions) {
  const TemporaryDesktop desktop;
  desktop.write(u"dotfiles/prefs"_s, R"({"a":1})");
  ::chmod(desktop.path(u"dotfiles/prefs"_s).toUtf8().constData(), 0640);
  QFile::link(desktop.path(u"dotfiles/prefs"_s), desktop.path(u"second"_s));
  QDir().mkpath(desktop.path(u"lumeno"_s));
  QFile::link(desktop.path(u"second"_s), desktop.path(file));
  JsonPreferencesStore store(desktop.path(file));
  store.setValue(u"b"_s, 2);
  EXPECT_EQ(compact(desktop.read(u"dotfiles/prefs"_s)), R"({"a":1,"b":2})");
  EXPECT_TRUE(QFileInfo(desktop.path(file)).isSymLink());
  EXPECT_TRUE(QFileInfo(desktop.path(u"second"_s)).isSymLink());
  struct stat status {};
  ::stat(desktop.path(file).toUtf8().constData(), &status);
  EXPECT_EQ(status.st_mode & 0777, 0640u);

  desktop.write(u"dotfiles/prefs"_s, "rubbish");
  store.setValue(u"c"_s, 3);
  EXPECT_EQ(desktop.read(u"dotfiles/prefs.damaged-1"_s), "rubbish");
  EXPECT_TRUE(QFileInfo(desktop.path(file)).isSymLink());
}

TEST(JsonPreferencesStore, OnAFullDiskValuesHoldUntilTheyCanBeStored) {
  const TemporaryDesktop desktop;
  desktop.write(file, R"({"a":1,"b":2})");
  JsonPreferencesStore store(desktop.path(file));
  QStringList told;
  const Subscription subscription = store.problem().subscribe([&](const QString& text) { told += text; });
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit full{8, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  store.setValue(u"c"_s, 3);
  store.remove(u"a"_s);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(told.size(), 2) << "the empty text at first, then one problem";
  EXPECT_EQ(store.value(u"c"_s).toInt(), 3);
  EXPECT_TRUE(store.value(u"a"_s).isUndefined());
  EXPECT_EQ(compact(desktop.read(file)), R"({"a":1,"b":2})");
  EXPECT_EQ(QDir(desktop.path(u"lumeno"_s)).entryList(QDir::Files).size(), 1) << "no rest of a failed write";

  store.setValue(u"d"_s, 4);
  EXPECT_EQ(compact(desktop.read(file)), R"({"b":2,"c":3,"d":4})");
  EXPECT_EQ(told.size(), 3);
  EXPECT_EQ(told.last(), QString()) << "withdrawn";

  QFile::rename(desktop.path(file), desktop.path(u"kept"_s));
  QDir().mkpath(desktop.path(file));
  store.setValue(u"e"_s, 5);
  store.setValue(u"f"_s, 6);
  EXPECT_EQ(told.size(), 4) << "a second problem is told, once";
  EXPECT_NE(told.last(), QString());
  QDir().rmdir(desktop.path(file));
  store.remove(u"f"_s);
  EXPECT_EQ(compact(desktop.read(file)), R"({"b":2,"c":3,"d":4,"e":5})");
  EXPECT_EQ(told.last(), QString());
}

TEST(JsonPreferencesStore, WhatIsNoFileIsNeitherReadNorOverwritten) {
  const TemporaryDesktop desktop;
  QDir().mkpath(desktop.path(u"lumeno"_s));
  ::mkfifo(desktop.path(file).toUtf8().constData(), 0600);  // opening it would block for ever
  JsonPreferencesStore store(desktop.path(file));
  store.setValue(u"a"_s, 1);
  EXPECT_EQ(store.value(u"a"_s).toInt(), 1);
  EXPECT_NE(store.problem().get(), QString());
  struct stat status {};
  ::stat(desktop.path(file).toUtf8().constData(), &status);
  EXPECT_TRUE(S_ISFIFO(status.st_mode));

  desktop.write(u"plain"_s, "x");
  JsonPreferencesStore nowhere(desktop.path(u"plain/preferences.json"_s));
  nowhere.setValue(u"a"_s, 1);
  EXPECT_EQ(nowhere.value(u"a"_s).toInt(), 1);
  EXPECT_NE(nowhere.problem().get(), QString());
}

}  // namespace
}  // namespace lumeno
