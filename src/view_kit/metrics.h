#pragma once

#include <QFont>
#include <QObject>
#include <QString>

namespace lumeno {

/// Text sizes and line heights of the HUD in logical pixels, derived from the system font.
struct Metrics {
  Q_GADGET
  Q_PROPERTY(QString family MEMBER family)
  Q_PROPERTY(int callout MEMBER callout)
  Q_PROPERTY(int subheadline MEMBER subheadline)
  Q_PROPERTY(int caption MEMBER caption)
  Q_PROPERTY(int caption2 MEMBER caption2)
  Q_PROPERTY(int textLine MEMBER textLine)
  Q_PROPERTY(int statusLine MEMBER statusLine)
  Q_PROPERTY(int titleLine MEMBER titleLine)
  Q_PROPERTY(int captionLine MEMBER captionLine)
  Q_PROPERTY(int caption2Line MEMBER caption2Line)

 public:
  QString family;
  int callout = 14;
  int subheadline = 13;
  int caption = 12;
  int caption2 = 11;
  int textLine = 20;    ///< result and streaming text
  int statusLine = 19;  ///< status rows
  int titleLine = 18;   ///< chip titles
  int captionLine = 16;
  int caption2Line = 14;

  bool operator==(const Metrics&) const = default;
};

[[nodiscard]] Metrics metricsFor(const QFont& systemFont);

}  // namespace lumeno
