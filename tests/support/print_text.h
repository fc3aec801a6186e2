#pragma once

#include <QString>
#include <ostream>

// Texts in test messages as texts, not as lists of bytes.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}
