#include "suggest/detect/address_tables.h"

#include <algorithm>
#include <array>

namespace lumeno::detect::address_tables {

using namespace Qt::StringLiterals;

const WordSet& englishStreetTypes() {
  static const WordSet set{
      u"street st avenue ave av road rd boulevard blvd lane ln drive dr court ct place pl square sq terrace "
      u"ter tce "
      u"parkway pkwy highway hwy circle cir way close crescent cres cr row mews gardens gdns grove gr hill "
      u"rise walk "
      u"alley aly loop trail trl path pike plaza plz point pt crossing xing expressway expy freeway fwy "
      u"green quay "
      u"embankment parade pde esplanade esp yard wharf bridge gate ridge run view vista canyon bend cove "
      u"landing "
      u"common commons park meadow meadows chase croft drove end fields heights hts mall mount passage "
      u"promenade "
      u"range reach turnpike tpke vale valley villas wood woods causeway concourse broadway circus approach "
      u"link "
      u"avenida strand stravenue extension ext junction jct island isle key manor mill orchard place spur "
      u"summit "
      u"trace underpass union walkway wynd brae loan rue chemin"_s};
  return set;
}

const WordSet& englishStreetsWithoutType() {
  static const WordSet set{
      u"broadway strand piccadilly whitehall cheapside bowery embarcadero kingsway aldwych "
      u"poultry haymarket minories moorgate bishopsgate aldgate holborn millbank eastcheap "
      u"highgate parkside southbank"_s};
  return set;
}

const WordSet& englishLeadingTypes() {
  static const WordSet set{
      u"avenue ave highway hwy route rte interstate us-1 county state fm rue calle via camino "
      u"paseo avenida boulevard boul chemin ch av el rang montée place côte"_s};
  return set;
}

const WordSet& directions() {
  static const WordSet set{
      u"n s e w ne nw se sw north south east west northeast northwest southeast southwest nord "
      u"sud est ouest"_s};
  return set;
}

const WordSet& numberWords() {
  static const WordSet set{
      u"one two three four five six seven eight nine ten eleven twelve fifteen twenty"_s};
  return set;
}

const WordSet& unitWords() {
  static const WordSet set{
      u"flat apartment apt suite ste unit floor fl room rm level lvl office shop studio lot "
      u"building bldg block tower maisonette penthouse villa bureau appartement appt app"_s};
  return set;
}

const WordSet& houseWords() {
  static const WordSet set{
      u"house cottage farm lodge hall barn mill rectory vicarage villa building buildings tower "
      u"towers centre center court manor grange cottages works studio studios chambers"_s};
  return set;
}

const WordSet& usStates() {
  static const WordSet set{
      u"al ak az ar ca co ct de fl ga hi id il in ia ks ky la me md ma mi mn ms mo mt ne nv nh nj nm ny nc "
      u"nd oh ok or "
      u"pa ri sc sd tn tx ut vt va wa wv wi wy dc pr vi gu d.c"_s};
  return set;
}

const WordSet& usStateNames() {
  static const WordSet set{
      u"alabama|alaska|arizona|arkansas|california|colorado|connecticut|delaware|florida|georgia|hawaii|"
      u"idaho|"
      u"illinois|indiana|iowa|kansas|kentucky|louisiana|maine|maryland|massachusetts|michigan|minnesota|"
      u"mississippi|"
      u"missouri|montana|nebraska|nevada|new hampshire|new jersey|new mexico|new york|north carolina|north "
      u"dakota|"
      u"ohio|oklahoma|oregon|pennsylvania|rhode island|south carolina|south "
      u"dakota|tennessee|texas|utah|vermont|"
      u"virginia|washington|west virginia|wisconsin|wyoming|district of columbia|puerto rico"_s,
      u'|'};
  return set;
}

const WordSet& canadianProvinces() {
  static const WordSet set{u"ab bc mb nb nl ns nt nu on pe qc sk yt"_s};
  return set;
}

const WordSet& canadianProvinceNames() {
  static const WordSet set{
      u"alberta|british columbia|manitoba|new brunswick|newfoundland and labrador|newfoundland|nova "
      u"scotia|ontario|"
      u"prince edward island|quebec|québec|saskatchewan|yukon|nunavut|northwest territories"_s,
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
      u"rue avenue av ave boulevard bd bld boul blvd place pl quai chemin ch impasse imp allée allee allées "
      u"all cours "
      u"square sq route rte passage pass faubourg fbg cité cite ruelle sentier esplanade promenade "
      u"rond-point voie "
      u"résidence residence hameau lotissement lot montée montee côte galerie porte parvis villa venelle "
      u"traverse "
      u"rang chaussée chaussee clos mail pont zone za zi zac"_s};
  return set;
}

const WordSet& leadingStreetTypes() {
  static const WordSet set{
      // French, Belgian, Swiss
      u"rue avenue av boulevard bd place quai chemin impasse allée cours square route passage chaussée "
      u"ruelle clos "
      // Spanish, Catalan
      u"calle c avenida avda avd plaza pza plza paseo pº pso carrer passeig ronda camino cmno carretera ctra "
      u"travesía "
      u"travesia glorieta gran rambla avinguda plaça callejón cuesta costanilla polígono pol urbanización "
      // Italian
      u"via viale v.le piazza p.za p.zza piazzale corso c.so largo vicolo strada contrada lungotevere "
      u"lungarno salita "
      u"galleria borgo località loc frazione "
      // Portuguese
      u"rua r praça praca pç travessa tv estrada alameda largo beco calçada rotunda bairro "
      // Polish
      u"ul ulica al aleja aleje pl plac os osiedle rondo bulwar skwer "
      // German names that begin with their type
      u"straße strasse platz allee weg ring gasse "
      // post boxes
      u"postfach postbus postboks box apartado bp cs pl casella pb antwoordnummer skrytka"_s};
  return set;
}

const WordSet& trailingStreetTypes() {
  static const WordSet set{
      u"straße strasse str weg gasse platz allee ring damm ufer chaussee steig markt hof berg graben "
      u"promenade "
      u"straat laan weg plein gracht kade singel dijk gate gata gatan gade vei veien veg vegen väg vägen vej "
      u"plass "
      u"plats plads torg torget torv allé allén plan gränd stræde boulevard brygge katu tie kuja polku kaari "
      u"tori "
      u"aukio ranta esplanadi bulevardi puistikko"_s};
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
      u"gade", u"vej", u"vejen", u"plads", u"torv", u"stræde", u"allé", u"gata", u"gaten", u"gate", u"vei",
      u"veien", u"vegen", u"plass", u"plassen", u"bakken", u"gatan", u"vägen", u"väg", u"torget", u"gränd",
      u"gränden", u"allén", u"plan", u"kajen", u"backen", u"stigen", u"platsen", u"leden", u"brygge",
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
      u"alte alter altes neue neuer neues große grosse großer grosser kleine kleiner obere oberer "
      u"untere unterer hintere vordere lange breite hohe hoher innere äußere rechte linke nieuwe "
      u"oude grote kleine lange korte gamle store lille nya gamla stora lilla östra västra norra "
      u"södra nordre søndre østre vestre sankt st st. prins prinses eerste tweede derde 1e 2e 3e"_s};
  return set;
}

const WordSet& countedNouns() {
  static const WordSet set{
      u"page pages seite seiten kapitel chapter section abschnitt table tabelle figure abbildung abb fig "
      u"version room "
      u"zimmer raum team step schritt part teil nr no number nummer num tel telefon phone fax line zeile "
      u"level day tag "
      u"days tage windows iphone ios android volume vol band issue ausgabe jahr year week woche january "
      u"february march "
      u"april may june july august september october november december januar februar märz mai juni juli "
      u"oktober "
      u"dezember item items article artikel position pos id order bestellung rechnung invoice total sum "
      u"summe the and "
      u"of group gruppe type typ class klasse model modell error fehler code chapter lesson lektion question "
      u"frage "
      u"aufgabe exercise week grade since ca approx about from until bis ab seit um gegen figure appendix "
      u"anhang note "
      u"paragraph art absatz row column spalte track song verse size größe route bus flight gate terminal gleis"_s};
  return set;
}

const WordSet& particles() {
  static const WordSet set{
      u"of the and at in on by upon under le la les l d de du des di del della delle dei degli dello dal al "
      u"da do das "
      u"dos e y i el los las van von vom der den dem das zu zur zum am an auf im ob bei ter ten te het op "
      u"aan over "
      u"sur sous lès les lez en et à au aux saint sainte og och i på ved nad pod w z im a m"_s};
  return set;
}

const WordSet& cities() {
  static const WordSet set{
      u"london|birmingham|manchester|liverpool|leeds|sheffield|bristol|edinburgh|glasgow|cardiff|belfast|"
      u"oxford|"
      u"cambridge|brighton|nottingham|newcastle|newcastle upon "
      u"tyne|leicester|southampton|portsmouth|york|bath|"
      u"aberdeen|reading|coventry|"
      u"new york|new york city|los angeles|chicago|houston|phoenix|philadelphia|san antonio|san diego|dallas|"
      u"san jose|austin|san francisco|seattle|denver|boston|washington|nashville|detroit|portland|las vegas|"
      u"baltimore|atlanta|miami|oakland|minneapolis|cleveland|pittsburgh|brooklyn|manhattan|"
      u"toronto|montreal|montréal|vancouver|calgary|ottawa|edmonton|winnipeg|quebec "
      u"city|québec|halifax|victoria|"
      u"sydney|melbourne|brisbane|perth|adelaide|canberra|hobart|darwin|gold "
      u"coast|auckland|wellington|dublin|"
      u"berlin|hamburg|münchen|munich|köln|cologne|frankfurt|frankfurt am "
      u"main|stuttgart|düsseldorf|leipzig|dortmund|"
      u"essen|bremen|dresden|hannover|nürnberg|nuremberg|duisburg|bochum|bonn|münster|karlsruhe|mannheim|"
      u"augsburg|"
      u"freiburg|heidelberg|potsdam|mainz|"
      u"wien|vienna|graz|linz|salzburg|innsbruck|klagenfurt|zürich|zurich|genève|geneva|genf|basel|bern|"
      u"lausanne|"
      u"luzern|winterthur|lugano|"
      u"paris|marseille|lyon|toulouse|nice|nantes|strasbourg|montpellier|bordeaux|lille|rennes|grenoble|"
      u"madrid|barcelona|valencia|sevilla|zaragoza|málaga|murcia|palma|bilbao|alicante|córdoba|granada|"
      u"roma|rome|milano|milan|napoli|naples|torino|turin|palermo|genova|bologna|firenze|florence|bari|"
      u"venezia|"
      u"venice|verona|"
      u"lisboa|lisbon|porto|braga|coimbra|faro|amsterdam|rotterdam|den haag|the "
      u"hague|utrecht|eindhoven|groningen|"
      u"bruxelles|brussel|brussels|antwerpen|antwerp|gent|ghent|brugge|liège|"
      u"københavn|copenhagen|aarhus|odense|aalborg|stockholm|göteborg|gothenburg|malmö|uppsala|oslo|bergen|"
      u"trondheim|"
      u"stavanger|helsinki|espoo|tampere|turku|oulu|"
      u"warszawa|warsaw|kraków|krakow|wrocław|wroclaw|poznań|poznan|gdańsk|gdansk|łódź|lodz|katowice|szczecin|lublin"_s,
      u'|'};
  return set;
}

const WordSet& countries() {
  static const WordSet set{
      u"usa|u.s.a|us|u.s|united states|united states of america|uk|u.k|united kingdom|great "
      u"britain|england|scotland|"
      u"wales|northern ireland|canada|australia|new zealand|ireland|germany|deutschland|austria|österreich|"
      u"switzerland|schweiz|suisse|svizzera|france|spain|españa|italy|italia|portugal|netherlands|the "
      u"netherlands|"
      u"nederland|belgium|belgië|belgique|denmark|danmark|sweden|sverige|norway|norge|finland|suomi|poland|"
      u"polska|"
      u"luxembourg"_s,
      u'|'};
  return set;
}

const WordSet& afterAddress() {
  static const WordSet set{
      u"tel telefon telephone téléphone phone fon mobil mobile fax email e-mail mail web website "
      u"www http https ust-id vat tlf tel. öffnungszeiten open hours geöffnet ansprechpartner"_s};
  return set;
}

const WordSet& doorWords() {
  static const WordSet set{
      u"top stiege tür stock og eg ug dg etage hinterhaus vorderhaus hh vh seitenflügel bus bte boîte bt apt "
      u"app lok m "
      u"lokal mieszkanie piso puerta pta esc escalera planta izq izda dcha bajo ático int interno scala sc "
      u"esq dto "
      u"dto. andar frente fração fr sal tv th mf st lgh as krs bât bat bâtiment étage esc. appartement appt "
      u"bis ter hs "
      u"huis rood zw ii iii iv a b c d e f dº porta bloco lt lote"_s};
  return set;
}

}  // namespace lumeno::detect::address_tables
