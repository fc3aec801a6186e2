#include <algorithm>
#include <utility>

#include "suggest/detect/detect.h"
#include "suggest/detect/phones.h"

namespace lumeno::detect {

namespace {

std::vector<DirectMatch> merged(std::vector<LinkMatch> foundLinks, std::vector<PhoneMatch> foundPhones) {
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

/// Whether a number lies inside one of the links, which come in text order.
bool isInsideLink(const PhoneMatch& phone, const std::vector<LinkMatch>& links) {
  const auto after = std::partition_point(links.begin(), links.end(), [&](const LinkMatch& link) {
    return link.start + link.length <= phone.start;
  });
  return after != links.end() && after->start < phone.start + phone.length;
}

}  // namespace

std::vector<DirectMatch> directMatches(QStringView text, const Surroundings& surroundings) {
  return merged(links(text), phones(text, surroundings));
}

std::vector<DirectMatch> linksAndFirstPhone(QStringView text, const Surroundings& surroundings) {
  std::vector<LinkMatch> foundLinks = links(text);
  std::vector<PhoneMatch> foundPhones = phonesUntil(
      text, surroundings, [&](const PhoneMatch& phone) { return !isInsideLink(phone, foundLinks); });
  return merged(std::move(foundLinks), std::move(foundPhones));
}

}  // namespace lumeno::detect
