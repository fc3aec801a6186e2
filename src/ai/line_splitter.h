#pragma once

#include <QByteArray>
#include <functional>

namespace lumeno {

/// Cuts bytes that arrive in arbitrary pieces into lines. CR ends a line as LF does; blank lines are dropped.
/// Linear in the bytes, however they are cut.
class LineSplitter {
 public:
  /// Takes further bytes and calls `onLine` for each line that they complete, until it returns false.
  void feed(QByteArrayView bytes, const std::function<bool(const QByteArray& line)>& onLine);

  /// The last line, which no line break has ended yet; empty when there is none.
  [[nodiscard]] QByteArray takeRest() { return std::exchange(rest_, {}); }

 private:
  QByteArray rest_;
};

}  // namespace lumeno
