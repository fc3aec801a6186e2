#include "records/uri_list.h"

#include <gtest/gtest.h>

#include "records/file_selection.h"

namespace lumeno {
namespace {

TEST(UriList, LocalPaths) {
  const struct {
    QByteArray uri;
    std::optional<QByteArray> expected;
  } cases[] = {
      {"file:///tmp/a%20b", "/tmp/a b"},
      {"FILE:///tmp/%C3%BC%FF", "/tmp/\xC3\xBC\xFF"},
      {"file:///tmp/a&b;'c\"", "/tmp/a&b;'c\""},
      {"file:/tmp/a", "/tmp/a"},
      {"file://localhost/tmp/a", "/tmp/a"},
      {"file:///tmp/folder/", "/tmp/folder"},
      {"file:///", "/"},
      {"file://elsewhere.example/tmp/a", std::nullopt},
      {"file:relative", std::nullopt},
      {"file:///tmp/a%00b", std::nullopt},
      {"trash:///a", std::nullopt},
      {"/tmp/a", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& c : cases) EXPECT_EQ(localPathOfUri(c.uri), c.expected) << c.uri.toStdString();
}

TEST(UriList, Lists) {
  const std::optional files(std::vector{fileUrl("/tmp/b"), fileUrl("/tmp/a")});
  EXPECT_EQ(fileUrlsInUriList("# two\r\nfile:///tmp/b\r\n\r\nfile:///tmp/a\r\n"), files);
  EXPECT_EQ(fileUrlsInUriList(QByteArray("file:///tmp/b\nfile:///tmp/a\0", 28)), files);
  EXPECT_EQ(fileUrlsInUriList("file:///tmp/b\nhttp://example.org/a\n"), std::nullopt) << "no part of a list";
  EXPECT_EQ(fileUrlsInUriList("# nothing\n"), std::nullopt);
  EXPECT_EQ(fileUrlsInCopiedFiles("copy\nfile:///tmp/b\nfile:///tmp/a"), files);
  EXPECT_EQ(fileUrlsInCopiedFiles("cut\nfile:///tmp/b\nfile:///tmp/a"), std::nullopt);
}

}  // namespace
}  // namespace lumeno
