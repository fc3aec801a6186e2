#include "suggest/detect/address_tables.h"

#include <algorithm>
#include <array>

namespace lumeno::detect::address_tables {

using namespace Qt::StringLiterals;

const WordSet& englishStreetTypes() {
  static const WordSet set{
      u"street st avenue ave av road rd boulevard blvd lane ln drive dr court ct place pl square sq "
      u"terrace ter tce parkway pkwy highway hwy circle cir way close crescent cres cr row mews gardens "
      u"gdns grove gr hill rise walk alley aly loop trail trl path pike plaza plz point pt crossing xing "
      u"expressway expy freeway fwy green quay embankment parade pde esplanade esp yard wharf bridge gate "
      u"ridge run view vista canyon bend cove landing common commons park meadow meadows chase croft "
      u"drove end fields heights hts mall mount passage promenade range reach turnpike tpke vale valley "
      u"villas wood woods causeway concourse broadway circus approach link avenida strand stravenue "
      u"extension ext junction jct island isle key manor mill orchard spur summit trace underpass union "
      u"walkway wynd brae loan rue chemin yards"_s};
  return set;
}

const WordSet& englishStreetsWithoutType() {
  static const WordSet set{
      u"broadway strand piccadilly whitehall cheapside bowery embarcadero kingsway aldwych poultry "
      u"haymarket minories moorgate bishopsgate aldgate holborn millbank eastcheap highgate parkside "
      u"southbank"_s};
  return set;
}

const WordSet& englishLeadingTypes() {
  static const WordSet set{
      u"avenue ave highway hwy route rte interstate us-1 county state fm rue calle via camino paseo "
      u"avenida boulevard boul chemin ch av el rang montée place côte"_s};
  return set;
}

const WordSet& directions() {
  static const WordSet set{
      u"n s e w ne nw se sw north south east west northeast northwest southeast southwest nord sud est "
      u"ouest"_s};
  return set;
}

const WordSet& numberWords() {
  static const WordSet set{
      u"one two three four five six seven eight nine ten eleven twelve fifteen twenty"_s};
  return set;
}

const WordSet& unitWords() {
  static const WordSet set{
      u"flat apartment apt suite ste unit floor fl room rm level lvl office shop studio lot building bldg "
      u"block tower maisonette penthouse villa bureau appartement appt app"_s};
  return set;
}

const WordSet& houseWords() {
  static const WordSet set{
      u"house cottage farm lodge hall barn mill rectory vicarage villa building buildings tower towers "
      u"centre center court manor grange cottages works studio studios chambers"_s};
  return set;
}

const WordSet& usStates() {
  static const WordSet set{
      u"al ak az ar ca co ct de fl ga hi id il in ia ks ky la me md ma mi mn ms mo mt ne nv nh nj nm ny "
      u"nc nd oh ok or pa ri sc sd tn tx ut vt va wa wv wi wy dc pr vi gu d.c"_s};
  return set;
}

const WordSet& usStateNames() {
  static const WordSet set{
      u"alabama|alaska|arizona|arkansas|california|colorado|connecticut|delaware|florida|georgia|hawaii|"
      u"idaho|illinois|indiana|iowa|kansas|kentucky|louisiana|maine|maryland|massachusetts|michigan|"
      u"minnesota|mississippi|missouri|montana|nebraska|nevada|new hampshire|new jersey|new mexico|"
      u"new york|north carolina|north dakota|ohio|oklahoma|oregon|pennsylvania|rhode island|"
      u"south carolina|south dakota|tennessee|texas|utah|vermont|virginia|washington|west virginia|"
      u"wisconsin|wyoming|district of columbia|puerto rico"_s,
      u'|'};
  return set;
}

const WordSet& canadianProvinces() {
  static const WordSet set{u"ab bc mb nb nl ns nt nu on pe qc sk yt"_s};
  return set;
}

const WordSet& canadianProvinceNames() {
  static const WordSet set{
      u"alberta|british columbia|manitoba|new brunswick|newfoundland and labrador|newfoundland|"
      u"nova scotia|ontario|prince edward island|quebec|québec|saskatchewan|yukon|nunavut|"
      u"northwest territories"_s,
      u'|'};
  return set;
}

const WordSet& australianStates() {
  static const WordSet set{u"nsw vic qld wa sa tas act nt"_s};
  return set;
}

const WordSet& australianStateNames() {
  static const WordSet set{
      u"new south wales|victoria|queensland|western australia|south australia|tasmania|"
      u"australian capital territory|northern territory"_s,
      u'|'};
  return set;
}

const WordSet& frenchStreetTypes() {
  static const WordSet set{
      u"rue avenue av ave boulevard bd bld boul blvd place pl quai chemin ch impasse imp allée allee "
      u"allées all cours square sq route rte passage pass faubourg fbg cité cite ruelle sentier esplanade "
      u"promenade rond-point voie résidence residence hameau lotissement lot montée montee côte galerie "
      u"porte parvis villa venelle traverse rang chaussée chaussee clos mail pont zone za zi zac"_s};
  return set;
}

const WordSet& leadingStreetTypes() {
  static const WordSet set{
      // French
      u"rue avenue av boulevard bd place quai chemin impasse allée cours square route passage chaussée "
      u"ruelle clos "
      // Spanish, Catalan
      u"calle c avenida avda avd plaza pza plza paseo pº pso carrer passeig ronda camino cmno carretera ctra "
      u"travesía travesia glorieta gran rambla avinguda plaça callejón cuesta costanilla polígono pol "
      u"urbanización "
      // Italian
      u"via viale v.le piazza p.za p.zza piazzale corso c.so largo vicolo strada contrada lungotevere "
      u"lungarno "
      u"salita galleria borgo località loc frazione "
      // Portuguese
      u"rua r praça praca pç travessa tv estrada alameda beco calçada rotunda bairro "
      // Polish
      u"ul ulica al aleja aleje pl plac os osiedle rondo bulwar skwer "
      // German names that begin with their type
      u"straße strasse platz allee weg ring gasse "
      // post boxes
      u"postfach postbus postboks box apartado bp cs casella pb antwoordnummer skrytka"_s};
  return set;
}

const WordSet& trailingStreetTypes() {
  static const WordSet set{
      u"straße strasse str weg gasse platz allee ring damm ufer chaussee steig markt hof berg graben "
      u"promenade straat laan plein gracht kade singel dijk gate gata gatan gade vei veien veg vegen väg "
      u"vägen vej plass plats plads torg torget torv allé allén plan gränd stræde boulevard brygge katu "
      u"tie kuja polku kaari tori aukio ranta esplanadi bulevardi puistikko"_s};
  return set;
}

bool endsLikeStreet(QStringView word) {
  static constexpr std::array endings{
      // German
      u"straße", u"strasse", u"str", u"weg", u"gasse", u"gässchen", u"gässle", u"platz", u"allee", u"damm",
      u"ufer", u"chaussee", u"steig", u"stieg", u"graben", u"markt", u"ring", u"promenade", u"pfad",
      u"brücke", u"wall", u"twiete", u"winkel", u"kamp", u"hof", u"zeile", u"berg", u"garten", u"anger",
      u"tor",
      // Dutch
      u"straat", u"laan", u"plein", u"gracht", u"kade", u"singel", u"dijk", u"steeg", u"wal", u"hof",
      u"dreef", u"baan", u"lei", u"plantsoen", u"burgwal", u"park",
      // Danish, Norwegian, Swedish
      u"gade", u"vej", u"vejen", u"plads", u"pladsen", u"torv", u"torvet", u"gaden", u"stræde", u"allé",
      u"gata", u"gaten", u"gate", u"vei", u"veien", u"vegen", u"plass", u"plassen", u"bakken", u"gatan",
      u"vägen", u"väg", u"torget", u"gränd", u"gränden", u"allén", u"plan", u"kajen", u"backen", u"stigen",
      u"platsen", u"leden", u"brygge",
      // Finnish
      u"katu", u"tie", u"kuja", u"polku", u"kaari", u"tori", u"aukio", u"ranta", u"rinne", u"raitti",
      u"puisto"};
  return std::any_of(endings.begin(), endings.end(), [&](const char16_t* ending) {
    const QStringView view(ending);
    return word.size() >= view.size() + 2 && word.endsWith(view, Qt::CaseInsensitive);
  });
}

const WordSet& streetPrepositions() {
  static const WordSet set{u"am an auf im in zum zur unter vor hinter beim bei hinterm neben ob"_s};
  return set;
}

const WordSet& streetAdjectives() {
  static const WordSet set{
      u"alte alter altes neue neuer neues große grosse großer grosser kleine kleiner obere oberer untere "
      u"unterer hintere vordere lange breite hohe hoher innere äußere rechte linke nieuwe oude grote "
      u"korte gamle store lille nya gamla stora lilla östra västra norra södra nordre søndre østre vestre "
      u"sankt st st. prins prinses eerste tweede derde 1e 2e 3e"_s};
  return set;
}

const WordSet& countedNouns() {
  static const WordSet set{
      u"page pages seite seiten kapitel chapter section abschnitt table tabelle figure abbildung abb fig "
      u"version room zimmer raum team step schritt part teil nr no number nummer num tel telefon phone "
      u"fax line zeile level day tag days tage windows iphone ios android volume vol band issue ausgabe "
      u"jahr year week woche january february march april may june july august september october november "
      u"december januar februar märz mai juni juli oktober dezember item items article artikel position "
      u"pos id order bestellung rechnung invoice total sum summe the and of group gruppe type typ class "
      u"klasse model modell error fehler code lesson lektion question frage aufgabe exercise grade since "
      u"ca approx about from until bis ab seit um gegen appendix anhang note paragraph art absatz row "
      u"column spalte track song verse size größe route bus flight gate terminal gleis monday tuesday "
      u"wednesday thursday friday saturday sunday montag dienstag mittwoch donnerstag freitag samstag "
      u"sonntag jahre years"_s};
  return set;
}

const WordSet& particles() {
  static const WordSet set{
      u"of the and at in on by upon under le la les l d de du des di del della delle dei degli dello dal "
      u"al da do das dos e y i el los las van von vom der den dem zu zur zum am an auf im ob bei ter ten "
      u"te het op aan over sur sous lès lez en et à au aux saint sainte og och på ved nad pod w z a m"_s};
  return set;
}

const WordSet& cities() {
  static const WordSet set{
      u"london|birmingham|manchester|liverpool|leeds|sheffield|bristol|edinburgh|glasgow|cardiff|belfast|"
      u"oxford|cambridge|brighton|nottingham|newcastle|newcastle upon tyne|leicester|southampton|"
      u"portsmouth|york|bath|aberdeen|reading|coventry|new york|new york city|los angeles|chicago|houston|"
      u"phoenix|philadelphia|san antonio|san diego|dallas|san jose|austin|san francisco|seattle|denver|"
      u"boston|washington|nashville|detroit|portland|las vegas|baltimore|atlanta|miami|oakland|"
      u"minneapolis|cleveland|pittsburgh|brooklyn|manhattan|toronto|montreal|montréal|vancouver|calgary|"
      u"ottawa|edmonton|winnipeg|quebec city|québec|halifax|victoria|sydney|melbourne|brisbane|perth|"
      u"adelaide|canberra|hobart|darwin|gold coast|auckland|wellington|dublin|berlin|hamburg|münchen|"
      u"munich|köln|cologne|frankfurt|frankfurt am main|stuttgart|düsseldorf|leipzig|dortmund|essen|"
      u"bremen|dresden|hannover|nürnberg|nuremberg|duisburg|bochum|bonn|münster|karlsruhe|mannheim|"
      u"augsburg|freiburg|heidelberg|potsdam|mainz|wien|vienna|graz|linz|salzburg|innsbruck|klagenfurt|"
      u"zürich|zurich|genève|geneva|genf|basel|bern|lausanne|luzern|winterthur|lugano|paris|marseille|"
      u"lyon|toulouse|nice|nantes|strasbourg|montpellier|bordeaux|lille|rennes|grenoble|madrid|barcelona|"
      u"valencia|sevilla|zaragoza|málaga|murcia|palma|bilbao|alicante|córdoba|granada|roma|rome|milano|"
      u"milan|napoli|naples|torino|turin|palermo|genova|bologna|firenze|florence|bari|venezia|venice|"
      u"verona|lisboa|lisbon|porto|braga|coimbra|faro|amsterdam|rotterdam|den haag|the hague|utrecht|"
      u"eindhoven|groningen|bruxelles|brussel|brussels|antwerpen|antwerp|gent|ghent|brugge|liège|"
      u"københavn|copenhagen|aarhus|odense|aalborg|stockholm|göteborg|gothenburg|malmö|uppsala|oslo|"
      u"bergen|trondheim|stavanger|helsinki|espoo|tampere|turku|oulu|warszawa|warsaw|kraków|krakow|"
      u"wrocław|wroclaw|poznań|poznan|gdańsk|gdansk|łódź|lodz|katowice|szczecin|lublin"_s,
      u'|'};
  return set;
}

const WordSet& countries() {
  static const WordSet set{
      u"usa|u.s.a|us|u.s|united states|united states of america|uk|u.k|united kingdom|great britain|"
      u"england|scotland|wales|northern ireland|canada|australia|new zealand|ireland|germany|deutschland|"
      u"austria|österreich|switzerland|schweiz|suisse|svizzera|france|spain|españa|italy|italia|portugal|"
      u"netherlands|the netherlands|nederland|belgium|belgië|belgique|denmark|danmark|sweden|sverige|"
      u"norway|norge|finland|suomi|poland|polska|luxembourg"_s,
      u'|'};
  return set;
}

const WordSet& afterAddress() {
  static const WordSet set{
      u"tel telefon telephone téléphone phone fon mobil mobile fax email e-mail mail web website www http "
      u"https ust-id vat tlf tel. öffnungszeiten open hours geöffnet ansprechpartner"_s};
  return set;
}

const WordSet& doorWords() {
  static const WordSet set{
      u"top stiege tür stock og eg ug dg etage hinterhaus vorderhaus hh vh seitenflügel bus bte boîte bt "
      u"apt app lok m lokal mieszkanie piso puerta pta esc escalera planta izq izda dcha bajo ático int "
      u"interno scala sc esq dto dto. andar frente fração fr sal tv th mf st lgh as krs bât bat bâtiment "
      u"étage esc. appartement appt bis ter hs huis rood zw ii iii iv a b c d e f dº porta bloco lt lote "
      u"in"_s};
  return set;
}

}  // namespace lumeno::detect::address_tables
