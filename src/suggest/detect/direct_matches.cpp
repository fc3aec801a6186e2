#include <utility>

#include "suggest/detect/detect.h"

namespace lumeno::detect {

std::vector<DirectMatch> directMatches(QStringView text, const Surroundings& surroundings) {
  std::vector<LinkMatch> foundLinks = links(text);
  std::vector<PhoneMatch> foundPhones = phones(text, surroundings);
  std::vector<DirectMatch> result;
  result.reserve(foundLinks.size() + foundPhones.size());
  auto link = foundLinks.begin();
  for (PhoneMatch& phone : foundPhones) {
    const qsizetype phoneEnd = phone.start + phone.length;
    for (; link != foundLinks.end() && link->start < phoneEnd; ++link) {
      result.push_back({DirectMatch::Type::link, link->start, link->length, std::move(link->url), {}});
    }
    const bool insideLink = !result.empty() && result.back().start + result.back().length > phone.start;
    if (insideLink) continue;
    result.push_back({DirectMatch::Type::phone, phone.start, phone.length, {}, std::move(phone.number)});
  }
  for (; link != foundLinks.end(); ++link) {
    result.push_back({DirectMatch::Type::link, link->start, link->length, std::move(link->url), {}});
  }
  return result;
}

}  // namespace lumeno::detect
