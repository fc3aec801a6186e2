#include "platform/file_managers/name_matching.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <cstdio>

#include "platform/file_managers/folder_names.h"

namespace lumeno {
namespace {

using Found = std::optional<std::vector<QByteArray>>;

TEST(NameMatching, NamesOnDisk) {
  const FolderListing folder{{"a.txt", " lead", "trail ", "line\nfeed", "\xC3\xBC", "bad\xFF.txt", "x\xFE",
                              "x\xFD", "cut\xE2\x82", "same\xEF\xBF\xBD", "same\xFF", "b"},
                             {QStringLiteral("b"), QStringLiteral("Fancy")}};
  const struct {
    const char* what;
    std::vector<const char16_t*> shown;
    Found expected;
  } cases[] = {
      {"the order stays", {u"\u00FC", u"a.txt"}, {{"\xC3\xBC", "a.txt"}}},
      {"blanks and line feeds", {u" lead", u"trail ", u"line\nfeed"}, {{" lead", "trail ", "line\nfeed"}}},
      {"blanks are not lost", {u"trail"}, std::nullopt},
      {"an ending that is hidden", {u"a"}, std::nullopt},
      {"bytes that are no text", {u"bad\uFFFD.txt"}, {{"bad\xFF.txt"}}},
      {"with a remark", {u"bad\uFFFD.txt (invalid encoding)"}, {{"bad\xFF.txt"}}},
      {"part of a character, byte by byte", {u"cut\uFFFD\uFFFD"}, {{"cut\xE2\x82"}}},
      {"two that look the same", {u"x\uFFFD"}, std::nullopt},
      {"the character itself, or a byte", {u"same\uFFFD"}, std::nullopt},
      {"the title of a desktop entry", {u"b"}, std::nullopt},
      {"only a title", {u"Fancy"}, std::nullopt},
      {"one of several is missing", {u"a.txt", u"gone"}, std::nullopt},
      {"the same one twice", {u"a.txt", u"a.txt"}, std::nullopt},
      {"no name", {u""}, std::nullopt},
      {"nothing", {}, std::vector<QByteArray>()},
  };
  for (const auto& c : cases) {
    std::vector<QString> shown;
    for (const char16_t* name : c.shown) shown.push_back(QString::fromUtf16(name));
    EXPECT_EQ(matchNames(shown, folder), c.expected) << c.what;
  }
}

TEST(NameMatching, ListsAFolder) {
  const QTemporaryDir temporary;
  const QByteArray folder = temporary.path().toUtf8();
  const auto write = [&folder](const char* name, const char* content) {
    FILE* const file = fopen((folder + '/' + name).constData(), "w");
    ASSERT_NE(file, nullptr);
    fputs(content, file);
    fclose(file);
  };
  write("bad\xFF", "");
  write("editor.desktop", "[Desktop Entry]\nName=Editor\nName[de]=Schreiber\nNameless\nExec=true\n");
  // Nobody writes into it: whoever opens it waits for ever.
  ASSERT_EQ(mkfifo((folder + "/pipe.desktop").constData(), 0600), 0);
  const auto listing = listFolder(folder);
  ASSERT_TRUE(listing);
  EXPECT_EQ(
      matchNames({shownName("bad\xFF"), QStringLiteral("editor.desktop"), QStringLiteral("pipe.desktop")},
                 *listing),
      Found({"bad\xFF", "editor.desktop", "pipe.desktop"}));
  EXPECT_EQ(listing->titles, (std::vector<QString>{QStringLiteral("Editor"), QStringLiteral("Schreiber")}));
  EXPECT_FALSE(listFolder(folder + "/none"));
}

TEST(FolderNames, ByLocation) {
  const struct {
    const char16_t* text;
    std::optional<ShownFolder> expected;
  } cases[] = {
      {u"/home/me/My files", ShownFolder{"/home/me/My files"}},
      {u"/tmp/", ShownFolder{"/tmp"}},
      {u"/", ShownFolder{"/"}},
      {u"file:///tmp/bad%FF", ShownFolder{"/tmp/bad\xFF"}},
      {u"trash:///", ShownFolder{}},
      {u"smb://server/share", ShownFolder{}},
      {u"x-search:words", ShownFolder{}},
      {u"words: that are searched for", std::nullopt},
      {u"~/files", std::nullopt},
      {u"", std::nullopt},
  };
  for (const auto& c : cases) {
    const QString text = QString::fromUtf16(c.text);
    EXPECT_EQ(folderOfLocation(text), c.expected) << text.toStdString();
  }
}

TEST(FolderNames, ByPartsAndTitle) {
  const auto q = [](const char* text) { return QString::fromUtf8(text); };
  EXPECT_EQ(folderOfParts({q("/"), q("tmp"), q("a b")}), ShownFolder{"/tmp/a b"});
  EXPECT_EQ(folderOfParts({q(""), q("tmp")}), ShownFolder{"/tmp"}) << "an icon for the root";
  EXPECT_EQ(folderOfParts({q("/")}), ShownFolder{"/"});
  EXPECT_EQ(folderOfParts({q("Trash"), q("tmp")}), std::nullopt);
  EXPECT_EQ(folderOfParts({q("/"), q("a/b")}), std::nullopt);
  EXPECT_EQ(folderOfParts({}), std::nullopt);

  EXPECT_TRUE(isTitleOf(q("files - Thunar"), "/home/me/files", "/home/me"));
  EXPECT_TRUE(isTitleOf(q("Personal"), "/home/me", "/home/me"));
  EXPECT_FALSE(isTitleOf(q("Search results"), "/home/me/files", "/home/me"));
}

}  // namespace
}  // namespace lumeno
