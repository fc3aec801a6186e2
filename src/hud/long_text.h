#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QString>
#include <QTextLayout>
#include <compare>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QPainter;

namespace lumeno {

/// A text of any length, to be looked at through a window of at most `windowHeight`. It is cut into blocks of
/// some lines, or of a part of a very long line; a block is made visible and laid out when it is looked at.
/// The heights of the others are reckoned from their lengths; where a reckoning is wrong, the window moves
/// through that block somewhat faster or slower. Near both ends every height is exact.
class LongText {
 public:
  static constexpr double windowHeight = 300;

  /// A place between two characters, as they are shown.
  struct Position {
    qsizetype block = 0;
    int offset = 0;
    auto operator<=>(const Position&) const = default;
  };
  using Span = std::pair<Position, Position>;
  struct Colors {
    QColor text;
    QColor selection;
    QColor highlight;  ///< behind the mark that is pointed out
  };
  /// A piece of the text, in UTF-16 units; only in texts that are shown as they are (`visibleText`).
  struct Mark {
    qsizetype start = 0;
    qsizetype length = 0;
    bool operator==(const Mark&) const = default;
  };

  /// All in pixels. Lays out again what is looked at.
  void setStyle(const QFont& font, double width, double minimumLineHeight);
  /// Costs one pass over the text for its line breaks (line feeds, carriage returns, or both).
  void setText(const QString& text);
  /// The marks are underlined in `color`.
  void setMarks(std::vector<Mark> marks, const QColor& color);

  [[nodiscard]] double height() const {
    return blocks_.empty() ? 0 : blocks_.back().top + blocks_.back().height;
  }

  /// Draws what the window from `top` to `top + height` shows, with `top` at y 0.
  void draw(QPainter& painter, const Colors& colors, double top, double height,
            const std::optional<Span>& selection, std::optional<qsizetype> highlightedMark);
  /// The nearest place to a point of the window whose top is at `top`.
  [[nodiscard]] Position positionAt(QPointF point, double top);
  [[nodiscard]] Span wordAt(const Position& position);
  /// What is shown between two places.
  [[nodiscard]] QString textIn(const Span& span) const;
  /// What the window shows, in whole blocks.
  [[nodiscard]] QString textSeen(double top, double height);
  /// Where the mark is: its top and bottom.
  [[nodiscard]] std::pair<double, double> extentOf(const Mark& mark);

  /// How many blocks have been laid out since the text was set.
  [[nodiscard]] int layoutCount() const { return layoutCount_; }

 private:
  struct Block {
    qsizetype start = 0;  ///< in `text_`
    qsizetype length = 0;
    bool endsLine = false;
    double top = 0;
    double height = 0;  ///< what it takes in the whole: reckoned or exact
  };
  struct Laid {
    qsizetype block = 0;
    QString text;
    std::unique_ptr<QTextLayout> layout;
    std::vector<double> lineTops;
    double height = 0;
  };

  void cutIntoBlocks();
  void reckonHeights();
  [[nodiscard]] qsizetype chunkEnd(qsizetype start, qsizetype end) const;
  [[nodiscard]] QString shown(qsizetype block) const;
  [[nodiscard]] std::pair<int, int> inBlock(const Mark& mark, qsizetype block) const;
  [[nodiscard]] QList<QTextLayout::FormatRange> markFormats(qsizetype block) const;
  const Laid& laid(qsizetype block);
  /// Calls `visit(laid, y)` for the blocks in a window until it returns false; `y` is from the window's top.
  template <typename Visit>
  void walk(double top, double height, Visit visit);

  QFont font_;
  double width_ = 0;
  double minimumLineHeight_ = 0;
  QString text_;
  std::vector<Mark> marks_;
  QColor markColor_;
  std::vector<Block> blocks_;
  std::vector<std::shared_ptr<Laid>> recent_;  ///< the latest first
  int layoutCount_ = 0;
};

}  // namespace lumeno
