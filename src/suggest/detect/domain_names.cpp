#include "suggest/detect/domain_names.h"

#include <libpsl.h>

#include <QUrl>
#include <algorithm>
#include <vector>

#include "suggest/detect/step_counter.h"
#include "suggest/detect/token_scan.h"
#include "suggest/detect/word_set.h"

namespace lumeno::detect {

namespace {

using namespace Qt::StringLiterals;
using namespace scan;

constexpr qsizetype longestName = 253;
constexpr qsizetype longestLabel = 63;

/// Top-level domains that are also endings of files. A name without "www.", scheme or path is then a file.
const WordSet& fileEndings() {
  static const WordSet set{
      u"rs md sh py pl so zip mov cc ps pm mk tf la mm ml cab inc pub mo bz vi gd ad hm ax dot tm gz java "
      u"cfd lc cat diz am ac man docs map"_s};
  return set;
}

/// File names whose second part is a country code but also the ending of a template.
const WordSet& templateStems() {
  static const WordSet set{
      u"makefile configure config automake autogen gnumakefile kbuild kconfig readme license changelog "
      u"setup index test tests main"_s};
  return set;
}

/// Endings that stand before another one in file names (config.h.in, app.conf.so).
const WordSet& innerFileEndings() {
  static const WordSet set{
      u"h hpp c cpp cc txt conf cfg cmake js ts json xml html yml yaml tar min test spec d pc desktop "
      u"service sh py tmpl tpl template pre install preinst postinst prerm postrm el map rules global "
      u"docs java pro info"_s};
  return set;
}

/// Country codes that are everyday words, and so names of members.
const WordSet& wordLikeCountries() {
  static const WordSet set{u"id is to in it at do my no be as so by me us am pm al im lt gt ge ne"_s};
  return set;
}

/// What a member is reached through in code.
const WordSet& receivers() {
  static const WordSet set{
      u"operator self this that super cls e ev evt event err error ex exc exception obj object item items "
      u"entry "
      u"entity elem element el node nodes parent child children root leaf user users person customer "
      u"account admin member client server request req response res resp reply ctx context session cookie "
      u"window document doc console screen navigator location history os sys np pd plt tf torch nn std fs "
      u"io app db sql query row rows col column table record field form input output button label view "
      u"model controller service widget dialog arr array list map dict set str string text num number int "
      u"float bool char byte data config cfg conf options opts option props prop property properties "
      u"state args arg kwargs params param module exports process thread task job queue stack math json "
      u"date datetime time performance promise system logger log logging file path dir folder image img "
      u"canvas ctx2d audio video player game scene sprite camera shader texture mesh layer track target "
      u"source dest src dst result results value val key keys pair tuple index idx tmp temp buffer buf "
      u"stream reader writer parser token lexer ast socket conn connection channel message msg mail email "
      u"order product cart invoice payment post comment page pages section header footer menu tab cell "
      u"style theme color font rect point vec vector matrix pos position size width height my foo bar baz "
      u"qux a b c d f g h i j k m n o p q r s t u v w x y z first last next prev previous current old new "
      u"other another it what there here he she they we you and or but not yes ok all some project issue "
      u"repo repository branch commit git npm package pkg plugin component vue react ref refs store "
      u"action dispatch handler callback func function method class type instance factory builder manager "
      u"helper util utils env environ settings device driver kernel cpu gpu memory disk network host "
      u"hostname url uri link domain company country city address contact profile group team role "
      u"permission auth login"_s};
  return set;
}

/// Products whose name merely looks like a domain.
const WordSet& dotNetProducts() {
  static const WordSet set{u"asp ado vb ml json paint system ef c f"_s};
  return set;
}

const WordSet& commonEndings() {
  static const WordSet set{u"com org net edu gov mil int"_s};
  return set;
}

/// Most of the newer top-level domains are nouns and verbs (name, link, run, open), as members of objects
/// are.
bool isMemberLike(QStringView top) {
  return top.size() > 2 ? !commonEndings().contains(top) : wordLikeCountries().contains(top);
}

struct Labels {
  QStringView top;     // last label
  QStringView second;  // the one before
  QStringView first;
  qsizetype count = 0;
};

Labels labelsOf(QStringView name) {
  Labels labels;
  const qsizetype lastDot = name.lastIndexOf(u'.');
  labels.top = name.sliced(lastDot + 1);
  const QStringView rest = name.first(std::max<qsizetype>(lastDot, 0));
  labels.second = rest.sliced(rest.lastIndexOf(u'.') + 1);
  const qsizetype firstDot = name.indexOf(u'.');
  labels.first = firstDot < 0 ? name : name.first(firstDot);
  labels.count = name.count(u'.') + 1;
  return labels;
}

bool isAscii(QStringView s) {
  return std::all_of(s.begin(), s.end(), [](QChar c) { return c.unicode() < 0x80; });
}

bool hasUpper(QStringView s) {
  return std::any_of(s.begin(), s.end(), [](QChar c) { return isAsciiUpper(c.unicode()); });
}

bool hasLower(QStringView s) {
  return std::any_of(s.begin(), s.end(), [](QChar c) { return c >= u'a' && c <= u'z'; });
}

bool isNumber(QStringView s) {
  return std::all_of(s.begin(), s.end(), [](QChar c) { return isAsciiDigit(c.unicode()); });
}

/// "userName": a capital right after a small letter.
bool isCamelCase(QStringView s) {
  for (qsizetype i = 1; i < s.size(); ++i) {
    if (isAsciiUpper(s[i].unicode()) && s[i - 1] >= u'a' && s[i - 1] <= u'z') return true;
  }
  return false;
}

bool hasWellFormedLabels(QStringView name) {
  qsizetype labelStart = 0;
  for (qsizetype i = 0; i <= name.size(); ++i) {
    if (i < name.size() && name[i] != u'.') continue;
    const QStringView label = name.sliced(labelStart, i - labelStart);
    if (label.isEmpty() || label.size() > longestLabel || label.startsWith(u'-') || label.endsWith(u'-')) {
      return false;
    }
    labelStart = i + 1;
  }
  return true;
}

/// org.example.tools.io: a package, written from the top-level domain down.
bool isReversedDomain(const Labels& labels) {
  static const WordSet packageRoots{u"com org net edu gov io java javax kotlin scala android androidx"_s};
  return labels.count >= 3 && packageRoots.contains(labels.first) && !commonEndings().contains(labels.top);
}

/// foo.com.pl, foo.co.id: a registry's suffix of two parts, which no file and no member of an object has.
bool hasRegistrySuffix(const Labels& labels, QStringView name) {
  return labels.count >= 3 && isAscii(name) &&
         PublicSuffixes::isSuffix(name.sliced(labels.second.data() - name.data()));
}

bool isFile(const Labels& labels, const DomainCandidate& candidate) {
  if (fileEndings().contains(labels.top)) {
    if (!candidate.hasPath) return !hasRegistrySuffix(labels, candidate.name());
    // "README.md/CHANGELOG.md": one file or the other.
    const QStringView after = candidate.text.sliced(candidate.end)
                                  .first(std::min<qsizetype>(candidate.text.size() - candidate.end, 80));
    const qsizetype dot = after.indexOf(u'.');
    return dot > 0 && after.sliced(dot + 1).startsWith(labels.top) &&
           !isWordCharacter(codePointAt(after, dot + 1 + labels.top.size()));
  }
  if (labels.top.size() == 2 && innerFileEndings().contains(labels.second) && labels.count >= 3) return true;
  if (labels.count == 2 && labels.top.size() <= 3 && templateStems().contains(labels.second)) return true;
  // Safari.app
  return labels.count == 2 && labels.top == u"app" && isAsciiUpper(labels.second[0].unicode());
}

/// Top-level domains without a country under which ordinary sites are: others are words first (open, style,
/// build).
const WordSet& popularEndings() {
  static const WordSet set{
      u"com org net edu gov mil int info biz name pro mobi museum aero coop jobs travel tel asia xyz online "
      u"site store shop tech cloud blog wiki app dev club live news agency design studio space world zone "
      u"today software systems solutions services network media academy church digital games social "
      u"community chat berlin hamburg koeln cologne bayern ruhr wien swiss paris london nyc tokyo amsterdam "
      u"brussels google microsoft apple amazon youtube vlaanderen gal eus scot wales cymru bzh"_s};
  return set;
}

bool isCode(const Labels& labels, const DomainCandidate& candidate) {
  const QStringView text = candidate.text;
  const bool memberLike = isMemberLike(labels.top);
  const char16_t next = unitAt(text, candidate.end);
  if (next == u'(' && (memberLike || unitAt(text, candidate.end + 1) == u')')) return true;
  if (memberLike && (next == u'[' || next == u'{' || next == u';')) return true;
  if (next == u'-' && unitAt(text, candidate.end + 1) == u'>') return true;
  if (next == u':' && unitAt(text, candidate.end + 1) == u':') return true;
  if (next == u'\\' || next == u'=') return true;
  qsizetype i = candidate.end;
  while (i < candidate.end + 2 && isBlank(unitAt(text, i))) ++i;
  if (unitAt(text, i) == u'=' && i > candidate.end) return true;
  const bool unusual = labels.top.size() > 2 && isAscii(labels.top) && !labels.top.startsWith("xn--"_L1) &&
                       !popularEndings().contains(labels.top);
  if (unusual) return true;
  if (candidate.hasPath) return false;
  if (labels.top == u"name" || labels.top == u"id") return !hasRegistrySuffix(labels, candidate.name());
  if (isReversedDomain(labels)) return true;
  static const WordSet selves{u"self this cls super"_s};
  if (selves.contains(labels.first)) return true;
  if (!memberLike) return false;
  return receivers().contains(labels.first) || isCamelCase(labels.second) || isNumber(labels.second) ||
         candidate.name().contains(u'_');
}

bool isAbbreviationOrTypingSlip(const Labels& labels) {
  // "see fig.in the text", "approx.to"
  static const WordSet abbreviations{
      u"et fig eq vs approx resp incl est vol dept etc no dr mr mrs ms st abb bzw ca usw vgl"_s};
  if (labels.count == 2 && abbreviations.contains(labels.second) && isMemberLike(labels.top)) return true;
  if (labels.second.size() == 1 && labels.count == 2) {
    static const WordSet shortHostEndings{u"com org net co me cc gg"_s};
    if (!shortHostEndings.contains(labels.top)) return true;
  }
  const bool common = commonEndings().contains(labels.top);
  // "the end.So we": the next sentence, written without a blank.
  if (isAsciiUpper(labels.top[0].unicode()) && hasLower(labels.top) && !common) return true;
  if (hasUpper(labels.top) && !hasLower(labels.top)) {
    if (hasLower(labels.second) && labels.top != u"COM") return true;
    if (labels.count == 2 && labels.top == u"NET" && dotNetProducts().contains(labels.second)) return true;
    // COPYING.DJ
    if (labels.count == 2 && labels.top.size() == 2) return true;
    // U.S, D.C. and other rows of initials
    if (labels.second.size() == 1 && labels.first.size() == 1) return true;
  }
  return (labels.top == u"am" || labels.top == u"pm") && isNumber(labels.second);
}

}  // namespace

bool PublicSuffixes::isTopLevel(QStringView label) {
  const auto ask = [](QStringView name) {
    const QByteArray lower = name.toString().toLower().toUtf8();
    return psl_is_public_suffix2(psl_builtin(), lower.constData(), PSL_TYPE_ICANN | PSL_TYPE_NO_STAR_RULE) ==
           1;
  };
  if (label.size() < 2) return isAscii(label) ? false : ask(label);
  if (isAscii(label) && isNumber(label)) return false;
  if (size_t(label.size()) > Entry{}.label.size()) return label.size() <= longestLabel && ask(label);
  size_t hash = 0;
  for (const QChar c : label) hash = hash * 31 + c.unicode();
  Entry& entry = entries_[hash % entries_.size()];
  const QStringView known(entry.label.data(), entry.length);
  if (known != label) {
    std::transform(label.begin(), label.end(), entry.label.begin(), [](QChar c) { return c.unicode(); });
    entry.length = static_cast<unsigned char>(label.size());
    entry.topLevel = ask(label);
    countSteps(8);
  }
  return entry.topLevel;
}

bool PublicSuffixes::isSuffix(QStringView domain) {
  const QByteArray lower = domain.toLatin1().toLower();
  return psl_is_public_suffix2(psl_builtin(), lower.constData(), PSL_TYPE_ICANN) == 1;
}

bool hasTopLevelDomain(QStringView name, PublicSuffixes& suffixes) {
  if (name.size() < 3 || name.size() > longestName) return false;
  const Labels labels = labelsOf(name);
  if (labels.count < 2 || labels.second.contains(u'_') || labels.top.contains(u'_')) return false;
  return suffixes.isTopLevel(labels.top) && hasWellFormedLabels(name);
}

bool isRegistrable(QStringView name) {
  if (!isAscii(name)) return !QUrl::toAce(name.toString()).isEmpty();
  constexpr qsizetype mostLabelsOfSuffix = 4;
  return name.count(u'.') >= mostLabelsOfSuffix || !PublicSuffixes::isSuffix(name);
}

bool readsAsSomethingElse(const DomainCandidate& candidate) {
  const Labels labels = labelsOf(candidate.name());
  return isAbbreviationOrTypingSlip(labels) || isFile(labels, candidate) || isCode(labels, candidate);
}

}  // namespace lumeno::detect
