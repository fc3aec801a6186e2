#include "suggest/detect/phone_context.h"

#include <algorithm>
#include <array>

#include "suggest/detect/phone_groups.h"
#include "suggest/detect/token_scan.h"
#include "suggest/detect/word_set.h"

namespace lumeno::detect {

namespace {

using namespace Qt::StringLiterals;
using namespace scan;

constexpr qsizetype cueReach = 40;

const WordSet& phoneWords() {
  static const WordSet set{
      u"unter tel tél telephone telefon telefono teléfono telefone téléphone telefoon telefonnummer "
      u"telefonnr phone phones fon call calls cell cellphone mobile mobil mobiltelefon móvil movil "
      u"cellulare celular handy handynummer fax telefax whatsapp signal telegram sms text ring dial "
      u"hotline helpline landline contact reach anrufen anruf rufnummer ruf rückruf appeler appelez llama "
      u"llame llámame llamar chiama chiamare ligar ligue bel bellen mobiel gsm tlf tlfn telf tfno tfn puh "
      u"puhelin komórka komorka zadzwoń zadzwon dzwoń kom ringa direct office switchboard pager voicemail "
      u"callback dial-in portable fixe recapito centralino ffon 電話 电话 手机"_s};
  return set;
}

const WordSet& otherWords() {
  static const WordSet set{
      u"order orders invoice tracking track shipment parcel ticket case account acct acc id ids ref "
      u"reference isbn issn iban bic swift blz vat ein tin ssn nino serial sku part article item customer "
      u"transaction txn card imei imsi iccid upc ean gtin doi pmid arxiv version ver build port pid uid "
      u"gid timestamp epoch zip postcode routing sort passport license licence policy member membership "
      u"booking confirmation pnr seed hash checksum revision rev bytes size length offset address "
      u"address. bestellung bestellnummer bestellnr rechnung rechnungsnummer rechnungsnr kundennummer "
      u"kundennr auftrag auftragsnummer sendung sendungsnummer konto kontonummer kontonr steuernummer "
      u"ust-id ustid hrb hra aktenzeichen az artikel artikelnummer artikelnr seriennummer vorgang "
      u"vorgangsnummer commande facture siret siren compte dossier colis suivi pedido factura cuenta dni "
      u"nif cif nie ordine fattura conto codice partita encomenda fatura conta nipc bestelling factuur "
      u"klantnummer kvk btw rekening rekeningnummer ordernummer ordrenummer fakturanummer kundenummer cvr "
      u"orgnr organisasjonsnummer organisationsnummer personnummer zamówienie faktura nip regon pesel krs "
      u"konta isrc issue bug commit pr job run batch lot barcode asin fedex ups usps dhl model patent"_s};
  return set;
}

const WordSet& unitsAfter() {
  static const WordSet set{
      u"usd eur gbp chf sek nok dkk pln jpy cny rub inr brl aud cad dollars euro euros pounds kr zł km cm "
      u"mm mi miles kg mg lb lbs oz tons kb mb gb tb kib mib gib bytes byte bits bit ms sec seconds secs "
      u"minutes min hours hrs days people users rows records items times views lines tokens percent "
      u"pixels px hz khz mhz ghz"_s};
  return set;
}

bool isCurrency(char32_t c) {
  return c == u'$' || c == u'£' || c == u'¥' || (c >= 0x20A0 && c <= 0x20CF) || c == 0xFFE5;
}

/// The word ending before `end` (letters, marks; a hyphen or full stop inside), at most `cueReach` units
/// long.
QStringView wordBefore(QStringView text, qsizetype end) {
  qsizetype start = end;
  while (start > 0 && end - start < cueReach) {
    const char32_t c = codePointBefore(text, start);
    if (!isLetter(c) && !(c == u'-' && start < end)) break;
    start -= unitCount(c);
  }
  return text.sliced(start, end - start);
}

}  // namespace

NumberCue cueBefore(QStringView text, qsizetype start) {
  qsizetype i = start;
  const qsizetype limit = std::max<qsizetype>(0, start - cueReach);
  int words = 0;
  // "my number is …" hints at a phone, unless it is an order number.
  NumberCue cue = NumberCue::none;
  while (i > limit && words < 5) {
    const char16_t c = text[i - 1].unicode();
    if (c == u'#' || c == 0x2116) return NumberCue::other;
    // Another sentence's words say nothing about this number; "Tel. 030" and "no. 5" are no ends of
    // sentences.
    if ((c == u'!' || c == u'?' || isLineBreak(c)) && words > 0) break;
    if (c == u';') break;
    if (isPhoneDigit(c)) break;
    const QStringView word = wordBefore(text, i);
    if (word.isEmpty()) {
      --i;
      continue;
    }
    if (phoneWords().contains(word)) return NumberCue::phone;
    if (otherWords().contains(word)) return NumberCue::other;
    if (word.compare("number"_L1, Qt::CaseInsensitive) == 0 ||
        word.compare("nummer"_L1, Qt::CaseInsensitive) == 0) {
      cue = NumberCue::phone;
    }
    ++words;
    i -= word.size();
  }
  return cue;
}

bool isGluedBefore(QStringView text, qsizetype start) {
  const char32_t c = codePointBefore(text, start);
  if (c == 0) return false;
  const qsizetype earlier = start - unitCount(c);
  const char32_t before = codePointBefore(text, earlier);
  switch (c) {
    case u'_':
    case u'=':
    case u'&':
    case u'%':
    case u'@':
    case u'#':
    case u'\\':
    case u'^':
    case u'°':
      return true;
    case u'/':
      return !isPhonePlus(unitAt(text, start)) ||
             !(isPhoneDigit(char16_t(before)) || isSpace(char16_t(before)));
    case u'-':
    case u'+':
      return earlier > 0 && !isSpace(char16_t(before));
    case u'.':
    case u':':
      return before < 0x10000 && isPhoneDigit(char16_t(before));
    case u',': {
      // "1,2125550123" is an amount; "2125550123,2125550199" a list.
      qsizetype digits = earlier;
      while (digits > 0 && earlier - digits < 7 && isPhoneDigit(text[digits - 1].unicode())) --digits;
      return earlier > digits && earlier - digits < 7;
    }
    default:
      break;
  }
  if (isWordCharacter(c) && !isUnspacedScript(c)) return true;
  if (isCurrency(c)) return true;
  // "$ 1234567", "x = 1234567"
  return isBlank(char16_t(c)) && (isCurrency(before) || before == u'=');
}

bool isGluedAfter(QStringView text, qsizetype end) {
  const char32_t c = codePointAt(text, end);
  if (c == 0) return false;
  const char32_t next = codePointAt(text, end + unitCount(c));
  switch (c) {
    case u'_':
    case u'=':
    case u'%':
    case u'@':
    case u'°':
    case u'\\':
    case u'^':
    case u'+':
      return true;
    case u'/':
    case u'-':
    case u'&':
      return isWordCharacter(next);
    case u':':
    case u'.':
    case u',':
      return c != u',' ? isWordCharacter(next) && next < 0x80 && isAsciiDigit(char16_t(next))
                       : isAsciiDigit(char16_t(next)) && !isAsciiDigit(unitAt(text, end + 7));
    default:
      break;
  }
  if (isWordCharacter(c) && !isUnspacedScript(c)) return true;
  if (isCurrency(c)) return true;
  if (!isBlank(char16_t(c))) return false;
  if (isCurrency(next) || next == u'%') return true;
  qsizetype wordEnd = end + 1;
  while (wordEnd < text.size() && wordEnd - end < 12 && isLetter(text[wordEnd].unicode())) ++wordEnd;
  return unitsAfter().contains(text.sliced(end + 1, wordEnd - end - 1));
}

bool isInNumberList(QStringView text, qsizetype start) {
  qsizetype i = start;
  while (i > 0 && start - i < 64 &&
         (isAsciiDigit(text[i - 1].unicode()) || isSpace(text[i - 1].unicode()) || text[i - 1] == u',')) {
    --i;
  }
  return unitAt(text, i - 1) == u'[' || unitAt(text, i - 1) == u'{';
}

bool continuesBankAccount(QStringView text, qsizetype start) {
  qsizetype end = start;
  for (int tokens = 0; tokens < 8; ++tokens) {
    if (end == 0 || !isBlank(text[end - 1].unicode())) return false;
    --end;
    qsizetype begin = end;
    while (begin > 0 && end - begin <= 4 &&
           (isAsciiUpper(text[begin - 1].unicode()) || isAsciiDigit(text[begin - 1].unicode()))) {
      --begin;
    }
    const qsizetype size = end - begin;
    if (size == 0 || size > 4) return false;
    if (size == 4 && isAsciiUpper(text[begin].unicode()) && isAsciiUpper(text[begin + 1].unicode()) &&
        isAsciiDigit(text[begin + 2].unicode()) && isAsciiDigit(text[begin + 3].unicode())) {
      return true;
    }
    end = begin;
  }
  return false;
}

qsizetype extensionEnd(QStringView text, qsizetype end) {
  static constexpr std::array words{"extension"_L1, "extn"_L1,    "ext"_L1, "durchwahl"_L1, "dw"_L1,
                                    "poste"_L1,     "apparat"_L1, "app"_L1, "anexo"_L1,     "ramal"_L1,
                                    "interno"_L1,   "int"_L1,     "wew"_L1, "tst"_L1,       "toestel"_L1,
                                    "x"_L1,         "#"_L1};
  qsizetype i = end;
  while (i < end + 3 && (isBlank(unitAt(text, i)) || unitAt(text, i) == u',' || unitAt(text, i) == u'(')) ++i;
  const bool bracket = i > end && unitAt(text, i - 1) == u'(';
  for (const QLatin1StringView word : words) {
    if (!hasAt(text, i, word)) continue;
    qsizetype digits = i + word.size();
    const qsizetype limit = digits + 4;
    while (digits < limit && (isBlank(unitAt(text, digits)) || unitAt(text, digits) == u'.' ||
                              unitAt(text, digits) == u':' || unitAt(text, digits) == u'-')) {
      ++digits;
    }
    qsizetype last = digits;
    while (isPhoneDigit(unitAt(text, last)) && last - digits <= 7) ++last;
    if (last == digits || last - digits > 7 || isWordCharacter(codePointAt(text, last))) return end;
    if (bracket && unitAt(text, last) == u')') ++last;
    return last;
  }
  return end;
}

}  // namespace lumeno::detect
