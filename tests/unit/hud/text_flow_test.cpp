#include "hud/text_flow.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

constexpr double width = 324;

TextFlow flow() {
  QFont font = QGuiApplication::font();
  font.setPixelSize(14);
  TextFlow made;
  made.setCaret({u" ▌"_s, Qt::blue});
  made.setStyle(font, width, 20);
  return made;
}

QImage picture(const TextFlow& text) {
  QImage image(static_cast<int>(width), 240, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  QPainter painter(&image);
  text.draw(painter, Qt::black, std::max(0.0, text.height() - 240), text.height());
  return image;
}

TEST(TextFlowTest, GrownTextLooksLikeTextSetAtOnce) {
  const QStringList texts = {
      u"Could you please send me the updated tide tables before our meeting? The print shop needs them as soon as possible."_s,
      u"One\n\n\nTwo with a line that is long enough to wrap at least once, I should think.\n- a\n- b\n"_s,
      u"averyveryveryveryverylongwordthatneverendsandhastobebrokensomewhereaveryveryverylongword twice"_s,
      u"hyphen-ated-words-with-numbers-2024-11-16-and-more-of-the-same-kind-2025-01-01 and (brackets) …"_s,
      u"שלום עולם, זה טקסט ארוך מספיק כדי לעבור שורה אחת לפחות, ואולי גם שתיים.\nThen English.\nואז עברית"_s,
      u"日本語の文章は単語の間に空白がないので、どこででも改行できます。句読点は行頭に来ません。"_s,
  };
  for (const QString& text : texts) {
    TextFlow grown = flow();
    for (qsizetype length = 1; length <= text.size(); ++length) {
      grown.setText(text.left(length));
      TextFlow whole = flow();
      whole.setText(text.left(length));
      ASSERT_EQ(grown.height(), whole.height()) << text.left(length).toStdString();
      ASSERT_EQ(picture(grown), picture(whole)) << text.left(length).toStdString();
    }
  }
}

TEST(TextFlowTest, ShorterOrOtherTextStartsAfresh) {
  TextFlow text = flow();
  text.setText(u"A first text that is long enough to need more than a single line of the card."_s);
  EXPECT_GT(text.lineCount(), 1);
  text.setText(u"B"_s);
  EXPECT_EQ(text.lineCount(), 1);
  TextFlow other = flow();
  other.setText(u"B"_s);
  EXPECT_EQ(picture(text), picture(other));
}

TEST(TextFlowTest, GrowingCostsOnlyWhatIsNew) {
  // One paragraph, the worst case: 50 KB in 1500 steps, as many as 50 seconds of streaming show.
  QString text;
  TextFlow grown = flow();
  QElapsedTimer clock;
  clock.start();
  for (int i = 0; i < 1500; ++i) {
    text += u"lorem ipsum dolor sit amet, words "_s;
    grown.setText(text);
  }
  const auto grownTime = clock.restart();
  for (int i = 0; i < 15; ++i) {
    TextFlow whole = flow();
    whole.setText(text);
  }
  const auto wholeTime = clock.elapsed() * 100;  // 1500 times
  std::printf("grown %lld ms, laid out whole each time %lld ms\n", static_cast<long long>(grownTime),
              static_cast<long long>(wholeTime));
  EXPECT_LT(grownTime * 10, wholeTime);
}

}  // namespace
}  // namespace lumeno
