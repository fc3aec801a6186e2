// The small words that hold sentences together. They decide short texts, in which there are too few letters
// for statistics. A word stands with English only if it is rare elsewhere, and with another language only if
// it is no English word; where several other languages share it, the first of them is named, for what counts
// is that it is not English.

#include "suggest/detect/language_words.h"

#include <QHash>
#include <QSet>
#include <QString>

namespace lumeno::detect {

namespace {

constexpr const char16_t* englishWords =
    u"the and this that these those with without you your yours their there they them then than what when "
    u"where "
    u"which while who whom whose why how from have having had been being were would could should shall "
    u"cannot "
    u"can't don't doesn't didn't won't isn't aren't wasn't it's i'm i'll i've you're we're they're let's "
    u"that's "
    u"into onto about above below between through because before after again against only other another such "
    u"some "
    u"any each every both either neither more most much many few less least very too also just even still "
    u"yet "
    u"ever never always often please thanks thank hello sorry yes yeah we our us my his her she him its "
    u"ourselves "
    u"himself itself themselves does did doing done make makes made making use uses used using get gets got "
    u"getting "
    u"go goes going gone went come comes came know knows known think want wants need needs needed see seen "
    u"say says "
    u"said take takes took give gives given find found tell told ask asked work works working call called "
    u"try tries "
    u"tried keep kept look looks looking like likes new old good bad first last next same own right left "
    u"high low "
    u"long short big small great little early late now today tomorrow yesterday tonight week month year day "
    u"days "
    u"morning night time times way thing things something anything nothing everything someone anyone "
    u"everyone people "
    u"man woman child world life hand part place case point number name names line lines word words file "
    u"files "
    u"directory directories folder value values default invalid missing unable failed failure found read "
    u"reading "
    u"write writing written print printing show shows shown display displayed set sets setting settings "
    u"change "
    u"changes changed remove removes removed delete deleted create creates created open opens opened close "
    u"closed "
    u"start starts started stop stops stopped run runs running check checks specified given following "
    u"already "
    u"unknown unrecognized unsupported unexpected allowed not be been by of to if it as at or is are was an "
    u"he up "
    u"out off over under until since though although however therefore instead upon within during per among "
    u"along "
    u"across behind beyond down near away back here once twice enough else maybe perhaps really actually "
    u"probably "
    u"gonna wanna gotta kinda lemme dunno lol haha brb omg btw thx pls idk imo tbh lgtm asap hey nah yep "
    u"nope okay "
    u"cool dude guys stuff bug fix fixed fixes issue issues test tests error errors warning message messages "
    u"user "
    u"users list key keys string strings character characters size length output input option options "
    u"command "
    u"commands memory must may might will can do has for but all one two three four five half own two's i";

// English too, but common in other languages as well, so they count for less.
constexpr const char16_t* sharedWords =
    u"have her let give want still get a in on no is of to at it be or as by he an if for was are has do me "
    u"so am we but all off out over "
    u"under up "
    u"can may will must i not den has one per man hand part new set list test not open start stop us import "
    u"format "
    u"normal original total version option error file files input output system program address class code "
    u"hey lol okay us her his him among most more same old second like two come late her point case place "
    u"name line";

struct ForeignWords {
  const char* language;
  const char16_t* words;
};

constexpr ForeignWords foreignWords[] = {
    {"de",
     u"der das und ist nicht ein eine einen einem einer eines zu mit auf für von dem des im wird werden "
     u"wurde sind "
     u"bei oder aus nach auch kann konnte können als wenn wie ich du wir ihr sie sich mich dich uns mein "
     u"dein sein "
     u"haben habe hat hatte über unter zur zum vom noch nur schon sehr aber doch weil dass daß keine kein "
     u"keinen "
     u"diese dieser dieses diesem diesen hier dort jetzt heute morgen bitte danke ja nein mal gibt muss "
     u"müssen soll "
     u"darf datei dateien verzeichnis ungültig ungültige ungültiger fehler zeile ausgeben anzeigen geht gut"},
    {"fr",
     u"le la les des du une un et est dans pour par sur avec sans pas plus ne que qui dont où au aux ce cet "
     u"cette ces "
     u"son ses leur leurs mon mes ton tes notre nos votre vos nous vous ils elles elle il je tu sont être "
     u"avoir fait "
     u"été peut doit faire très bien aussi mais donc ou car si comme tout tous toute toutes merci bonjour "
     u"oui non "
     u"fichier fichiers répertoire impossible est n'est c'est j'ai qu'il d'un d'une l'option n'a aucun "
     u"aucune lors "
     u"ligne afficher valeur nom mot erreur depuis sous entre chez quand"},
    {"es",
     u"el los las del al una unos unas es y en con por para que se no su sus lo como más pero este esta "
     u"estos estas "
     u"ese esa eso está están ser son fue ha han hay puede pueden debe sin sobre entre cuando donde muy "
     u"también ya "
     u"todo todos toda todas nos mi mis tu tus yo gracias hola sí fichero ficheros archivo archivos "
     u"directorio "
     u"opción opciones valor línea nombre inválido inválida según desde hasta cada otro otra usted hacer "
     u"tiene"},
    {"it",
     u"il gli i solo modo uso richiesto richiesta usare dei del della delle dello degli nel nella nelle sul "
     u"sulla dal dalla dai al alla alle ai di che "
     u"è e "
     u"non per con una uno un sono essere stato questo questa questi queste quello quella si lo ma anche "
     u"come più "
     u"se perché quando dove ogni tutti tutto tutte mio tuo suo nostro grazie ciao sì opzione opzioni riga "
     u"nome "
     u"valore errore impossibile nessun nessuna può deve viene da ed loro ha hanno fra"},
    {"pt",
     u"o os um uma uns umas do da dos das no na nos nas ao aos à às pelo pela em com por para que é e não se "
     u"mais "
     u"mas como foi são ser está estão este esta isto isso esse essa ele ela eles elas seu sua seus suas meu "
     u"minha "
     u"você vocês nós também já muito quando onde sem sobre entre até cada obrigado olá sim arquivo arquivos "
     u"opção "
     u"opções diretório inválido inválida nome linha valor erro pode deve tem ter ou"},
    {"nl",
     u"het een en van op te dat die niet zijn met voor aan ook maar als bij dan uit naar om er wordt worden "
     u"werd "
     u"deze dit wat hebben heeft had kan kunnen moet moeten zal zou geen meer nog al wel hier daar ik je jij "
     u"wij "
     u"zij hij ons onze mijn jouw uw bestand bestanden ongeldig ongeldige optie regel naam waarde fout "
     u"bedankt "
     u"dank goed nieuwe veel tot tegen door vereist mislukt is"},
    {"sv",
     u"och att det som en på är av för med till den inte om ett han har de var jag från kan ska skall vid "
     u"när så "
     u"eller men ut över under efter bara där här alla detta denna dessa mycket mer utan varje vi ni du mig "
     u"dig oss "
     u"tack hej ja nej fil filer katalog ogiltig ogiltigt flagga rad namn värde fel måste blir finns inga "
     u"ingen"},
    {"da",
     u"og at det som en på er af for med til den ikke om et han har de var jeg fra kan skal ved når så eller "
     u"men ud "
     u"over under efter kun hvor her alle dette denne disse meget mere uden hver vi du mig dig os tak hej ja "
     u"nej "
     u"filen filer mappe ugyldig ugyldigt linje navn værdi fejl må bliver findes ingen være været blev "
     u"havde"},
    {"nb",
     u"og å det som en på er av med til den ikke om et han har de var jeg fra kan skal ved når så eller men "
     u"ut etter "
     u"bare hvor her alle dette denne disse mye mer uten hver vi du meg deg oss takk hei ja nei filen filer "
     u"katalog "
     u"ugyldig linje navn verdi feil må blir finnes ingen være vært ble hadde bruk"},
    {"pl",
     u"i w z na do się nie że jest to o po od za przez dla jak tylko ale czy lub być są był była było który "
     u"która "
     u"które ten ta te tego tej tym jego jej ich mnie ciebie my wy oni dziękuję cześć tak plik pliku plików "
     u"katalog "
     u"nieprawidłowy nieprawidłowa opcja linia nazwa wartość błąd można należy bez przy ze we pod nad oraz"},
    {"cs",
     u"a v z na do se není že je to o po od za pro jak jen ale nebo být jsou byl byla bylo který která které "
     u"ten ta "
     u"tento tato toto jeho její jejich mě tebe my vy oni děkuji ahoj ano ne soubor souboru souborů adresář "
     u"neplatný neplatná volba řádek název hodnota chyba lze nelze bez při ze ve pod nad také si podle"},
    {"sk",
     u"nie je sa že na do od za pre ako len ale alebo byť sú bol bola bolo ktorý ktorá ktoré tento súbor"},
    {"hr",
     u"i u na je se da za od su nije koji koja koje ili kao ne s sa iz po do ako samo ali biti bio bila bilo "
     u"ovaj "
     u"ova ovo taj ta to njegov njezin hvala da datoteka datoteke datoteku neispravan vrijednost ime nema "
     u"može"},
    {"fi",
     u"ja on ei se että joka jos kun niin myös mutta vain tai ovat oli olla voi tämä tässä nämä sen hän minä "
     u"sinä "
     u"me te he kiitos hei kyllä tiedosto tiedostoa tiedoston hakemisto hakemistoa virheellinen valitsin "
     u"rivi nimi "
     u"arvo virhe ole eikä kanssa ilman kaikki mitä mikä missä"},
    {"hu",
     u"a az és nem hogy egy is van volt lesz meg csak de ha vagy mint már még ez ezt azt ami aki minden "
     u"nincs kell "
     u"lehet köszönöm szia igen fájl fájlt könyvtár érvénytelen kapcsoló sor név érték hiba után előtt "
     u"alatt"},
    {"ro",
     u"și în de la pe cu un o nu este sunt din că care pentru mai sau dar ca se al ale ai lui ei fi fost are "
     u"a "
     u"această acest aceasta acestui toate tot fără între către după când unde mulțumesc bună da fișier "
     u"fișierul "
     u"fișiere opțiune director linie nume valoare eroare poate trebuie nici prin într-un într-o"},
    {"tr",
     u"ve bir bu için ile de da ne mi değil olarak olan var yok daha çok gibi kadar ama veya en her ben sen "
     u"biz siz "
     u"onlar şu o teşekkürler merhaba evet hayır dosya dosyası dosyayı dizin geçersiz seçenek satır ad değer "
     u"hata"},
    {"id",
     u"yang dan di ke dari untuk dengan tidak ini itu adalah pada akan atau juga oleh sebagai dalam ada bisa "
     u"dapat "
     u"saya kamu anda kami kita mereka sudah belum telah harus jika berkas direktori baris nama nilai galat"},
    {"ca",
     u"el la els les del dels al als i és en amb per que no es una un són com més però aquest aquesta "
     u"aquests "
     u"aquestes també fitxer fitxers directori opció línia nom valor ha han pot cal sense sobre entre quan "
     u"on"},
    {"vi", u"và của là không có được cho các một với này trong để người khi đã những từ hay tập tin"},
    {"et", u"ja on ei see et kui või oli ole mis ka aga faili fail"},
    {"lt", u"ir yra ne kad su iš į už kaip arba bet failas"},
    {"lv", u"un ir ne ka ar no uz kā vai bet fails"},
};

const QHash<QString, WordEvidence>& table() {
  static const QHash<QString, WordEvidence> words = [] {
    QHash<QString, WordEvidence> built;
    for (const QStringView word : QStringView(englishWords).split(u' '))
      built[word.toString()].english = true;
    for (const QStringView word : QStringView(sharedWords).split(u' ')) {
      built[word.toString()] = WordEvidence{true, true, nullptr};
    }
    for (const ForeignWords& language : foreignWords) {
      for (const QStringView word : QStringView(language.words).split(u' ')) {
        WordEvidence& evidence = built[word.toString()];
        if (!evidence.english && !evidence.foreign) evidence.foreign = language.language;
      }
    }
    return built;
  }();
  return words;
}

}  // namespace

WordEvidence wordEvidence(QStringView lowerCaseWord) {
  constexpr qsizetype longestWord = 16;
  if (lowerCaseWord.size() > longestWord) return {};
  return table().value(lowerCaseWord.toString());
}

}  // namespace lumeno::detect
