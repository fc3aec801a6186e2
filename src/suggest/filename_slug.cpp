#include "suggest/filename_slug.h"

#include "base/text.h"

namespace lumeno {

QString filenameSlug(QStringView text) {
  QString blanked = text.toString();
  blanked.replace(u'_', u' ').replace(u'-', u' ');
  QString slug;
  slug.reserve(blanked.size());
  for (const QStringView word : text::words(blanked)) {
    if (!slug.isEmpty()) slug += u'-';
    slug += word;
  }
  return slug.toLower();
}

}  // namespace lumeno
