#pragma once

#include <QByteArray>
#include <optional>

namespace lumeno {

/// Reads one HTTP/1.1 response from bytes that arrive in arbitrary pieces: with a length, in chunks, or up to
/// the end of the connection. Pure; linear in the bytes.
class HttpResponse {
 public:
  enum class State {
    incomplete,
    complete,  ///< further bytes are ignored
    broken,    ///< no HTTP, or the connection ended too soon
  };

  void feed(QByteArrayView bytes);
  /// The server has closed the connection.
  void feedEnd();

  [[nodiscard]] State state() const;
  /// 0 until the whole head has been read.
  [[nodiscard]] int status() const { return part_ >= Part::countedBody ? status_ : 0; }
  /// The body received since the last call.
  [[nodiscard]] QByteArray takeBody() { return std::exchange(body_, {}); }

 private:
  /// What the next bytes are. Everything from the first kind of body on comes after the head.
  enum class Part {
    statusLine,
    header,
    countedBody,
    chunkSize,
    chunk,
    chunkEnd,
    trailer,
    openBody,
    complete,
    broken,
  };

  void takeLine(const QByteArray& line);
  void takeHeader(const QByteArray& line);
  [[nodiscard]] Part partAfterHead();
  [[nodiscard]] Part partAfterChunkSize(const QByteArray& line);

  Part part_ = Part::statusLine;
  QByteArray line_;          ///< the beginning of a line that has not ended
  qsizetype lineBytes_ = 0;  ///< of the head or trailer so far
  QByteArray body_;
  int status_ = 0;
  bool chunked_ = false;
  std::optional<qint64> contentLength_;
  qint64 remaining_ = 0;  ///< of the counted body or the chunk
};

}  // namespace lumeno
