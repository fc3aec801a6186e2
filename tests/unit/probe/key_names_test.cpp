#include "hotkey/key_names.h"

#include <gtest/gtest.h>

#include <QSet>

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

TEST(KeyNames, ShortcutsAreShownInAFixedOrder) {
  EXPECT_EQ(displayString(HotkeyConfig{}), u"⌥⌘Space"_s);
  EXPECT_EQ(displayString({126, modifier::option | modifier::control}), u"⌃⌥↑"_s);
  EXPECT_EQ(displayString({40, modifier::shift | modifier::control}), u"⌃⇧K"_s);
  EXPECT_EQ(displayString({105, modifier::command}), u"⌘Key 105"_s);
  // Bits outside the four modifiers are not shown.
  EXPECT_EQ(displayString({0, 0x210000}), u"A"_s);
}

TEST(KeyNames, EveryNamedKeyHasANameOfItsOwn) {
  QSet<QString> names;
  int unnamed = 0;
  for (uint16_t code = 0; code < 128; ++code) {
    const QString name = keyName(code);
    EXPECT_FALSE(names.contains(name)) << name.toStdString();
    names.insert(name);
    if (name.startsWith(u"Key "_s)) ++unnamed;
  }
  EXPECT_EQ(unnamed, 128 - 27 - 47);
  EXPECT_EQ(keyName(65535), u"Key 65535"_s);
}

}  // namespace
}  // namespace lumeno
