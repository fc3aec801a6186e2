#pragma once

#include <QFont>
#include <QObject>
#include <QString>

namespace lumeno {

/// Text sizes and line heights of the windows in logical pixels, derived from the system font.
struct Metrics {
  Q_GADGET
  Q_PROPERTY(QString family MEMBER family)
  Q_PROPERTY(int callout MEMBER callout)
  Q_PROPERTY(int subheadline MEMBER subheadline)
  Q_PROPERTY(int caption MEMBER caption)
  Q_PROPERTY(int caption2 MEMBER caption2)
  Q_PROPERTY(int lead MEMBER lead)
  Q_PROPERTY(int headingSmall MEMBER headingSmall)
  Q_PROPERTY(int heading MEMBER heading)
  Q_PROPERTY(int headingLarge MEMBER headingLarge)
  Q_PROPERTY(QFont mono MEMBER mono)
  Q_PROPERTY(int monoLine MEMBER monoLine)
  Q_PROPERTY(int textLine MEMBER textLine)
  Q_PROPERTY(int statusLine MEMBER statusLine)
  Q_PROPERTY(int titleLine MEMBER titleLine)
  Q_PROPERTY(int captionLine MEMBER captionLine)
  Q_PROPERTY(int caption2Line MEMBER caption2Line)
  Q_PROPERTY(int subheadlineLine MEMBER subheadlineLine)
  Q_PROPERTY(int leadLine MEMBER leadLine)
  Q_PROPERTY(int headingSmallLine MEMBER headingSmallLine)
  Q_PROPERTY(int headingLine MEMBER headingLine)
  Q_PROPERTY(int headingLargeLine MEMBER headingLargeLine)

 public:
  QString family;
  int callout = 14;
  int subheadline = 13;
  int caption = 12;
  int caption2 = 11;
  int lead = 16;  ///< what introduces a page of a window
  int headingSmall = 30;
  int heading = 36;
  int headingLarge = 46;
  QFont mono;  ///< the system's fixed-width font; its size is in half pixels
  int monoLine = 18;
  int textLine = 20;    ///< result and streaming text
  int statusLine = 19;  ///< status rows
  int titleLine = 18;   ///< chip titles
  int captionLine = 16;
  int caption2Line = 14;
  int subheadlineLine = 18;
  int leadLine = 24;
  int headingSmallLine = 36;
  int headingLine = 42;
  int headingLargeLine = 52;

  bool operator==(const Metrics&) const = default;
};

[[nodiscard]] Metrics metricsFor(const QFont& systemFont);

}  // namespace lumeno
