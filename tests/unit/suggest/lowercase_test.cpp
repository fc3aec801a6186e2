#include "suggest/lowercase.h"

#include <gtest/gtest.h>

#include <random>

namespace lumeno {
namespace {

TEST(Lowercase, AnswersAsTheFullConversionDoes) {
  std::mt19937 random(9);
  for (int round = 0; round < 20000; ++round) {
    QString text;
    for (auto length = random() % 12; length > 0; --length) {
      const char32_t limits[] = {0x80, 0x80, 0x600, 0x2200, 0x11000};
      const char32_t c = static_cast<char32_t>(random() % limits[random() % 5]);
      if (c >= 0xD800 && c < 0xE000) continue;
      text += QString::fromUcs4(&c, 1);
    }
    ASSERT_EQ(lowercased(text), text.toLower());
  }
  // Special mappings do not depend on the user's language.
  EXPECT_EQ(lowercased(u"I\u0130\u212A ΣΑΣ"), u"ii\u0307k σασ");
}

}  // namespace
}  // namespace lumeno
