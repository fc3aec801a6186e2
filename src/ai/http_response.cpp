#include "ai/http_response.h"

#include <QList>
#include <algorithm>

namespace lumeno {

namespace {

/// More lines than this are no head of an answer.
constexpr qsizetype maximumLineBytes = 64 * 1024;

std::optional<qint64> parseNumber(const QByteArray& digits, int base) {
  bool ok = false;
  const qint64 number = digits.trimmed().toLongLong(&ok, base);
  if (!ok || number < 0) return std::nullopt;
  return number;
}

}  // namespace

HttpResponse::State HttpResponse::state() const {
  if (part_ == Part::complete) return State::complete;
  return part_ == Part::broken ? State::broken : State::incomplete;
}

void HttpResponse::feed(QByteArrayView bytes) {
  while (!bytes.isEmpty() && state() == State::incomplete) {
    switch (part_) {
      case Part::openBody:
        body_.append(bytes);
        return;
      case Part::countedBody:
      case Part::chunk: {
        const QByteArrayView taken = bytes.first(std::min<qint64>(remaining_, bytes.size()));
        body_.append(taken);
        bytes = bytes.sliced(taken.size());
        remaining_ -= taken.size();
        if (remaining_ == 0) part_ = part_ == Part::chunk ? Part::chunkEnd : Part::complete;
        break;
      }
      default: {
        const auto lineFeed = bytes.indexOf('\n');
        const QByteArrayView taken = lineFeed < 0 ? bytes : bytes.first(lineFeed + 1);
        line_.append(taken);
        bytes = bytes.sliced(taken.size());
        if ((lineBytes_ += taken.size()) > maximumLineBytes) {
          part_ = Part::broken;
        } else if (lineFeed >= 0) {
          const QByteArray line = std::exchange(line_, {});
          takeLine(line.chopped(line.endsWith("\r\n") ? 2 : 1));
        }
      }
    }
  }
}

void HttpResponse::feedEnd() {
  if (part_ != Part::complete) part_ = part_ == Part::openBody ? Part::complete : Part::broken;
}

void HttpResponse::takeLine(const QByteArray& line) {
  switch (part_) {
    case Part::statusLine: {
      const auto status = parseNumber(line.mid(9, 3), 10);
      const bool isStatusLine = line.startsWith("HTTP/1.") && line.size() >= 12 && line[8] == ' ';
      part_ = isStatusLine && status ? Part::header : Part::broken;
      status_ = static_cast<int>(status.value_or(0));
      return;
    }
    case Part::header:
      if (line.isEmpty()) {
        part_ = partAfterHead();
      } else {
        takeHeader(line);
      }
      return;
    case Part::chunkSize:
      part_ = partAfterChunkSize(line);
      return;
    case Part::chunkEnd:
      part_ = line.isEmpty() ? Part::chunkSize : Part::broken;
      return;
    default:  // the trailer
      if (line.isEmpty()) part_ = Part::complete;
  }
}

void HttpResponse::takeHeader(const QByteArray& line) {
  const auto colon = line.indexOf(':');
  const QByteArray name = line.left(colon).toLower();
  const QByteArray value = line.mid(colon + 1).trimmed();
  if (name == "transfer-encoding") {
    chunked_ = value.toLower().endsWith("chunked");
  } else if (name == "content-length") {
    contentLength_ = parseNumber(value, 10);
    if (!contentLength_) part_ = Part::broken;
  }
}

HttpResponse::Part HttpResponse::partAfterHead() {
  lineBytes_ = 0;
  if (status_ < 200) return Part::statusLine;  // another head follows
  if (status_ == 204 || status_ == 304) return Part::complete;
  if (chunked_) return Part::chunkSize;
  if (!contentLength_) return Part::openBody;
  remaining_ = *contentLength_;
  return remaining_ > 0 ? Part::countedBody : Part::complete;
}

HttpResponse::Part HttpResponse::partAfterChunkSize(const QByteArray& line) {
  lineBytes_ = 0;
  // What follows a semicolon are extensions.
  const auto size = parseNumber(line.split(';').constFirst(), 16);
  if (!size) return Part::broken;
  remaining_ = *size;
  return remaining_ > 0 ? Part::chunk : Part::trailer;
}

}  // namespace lumeno
