#include "host/transfer/Synonyms.h"

#include <array>

namespace orxdb {
namespace {

/// Spellings, parted by blanks and as NameKey gives them, and what they mean.
struct Meaning {
  std::string_view meant;
  std::string_view spellings;
};

// A spelling may stand for several properties; a kind of tool seldom has more than one of them, and
// else the first counts.
constexpr auto kProperties = std::to_array<Meaning>({
    {"Name", "tool toolname toolid bezeichnung benennung werkzeug werkzeugname title titel label"},
    {"Comment",
     "comments description kommentar bemerkung anmerkung beschreibung notes note notiz "
     "remark remarks"},
    {"Diameter",
     "ø d d1 dc dia diam durchmesser tooldiameter cutterdiameter cuttingdiameter "
     "werkzeugdurchmesser nenndurchmesser schneidendurchmesser nominaldiameter ø1 "
     "ød1 sizediameter"},
    {"Bar_Diameter", "ø d d1 dia diam diameter durchmesser bardiameter"},
    {"Pilot_Diameter", "pilotdia zapfendurchmesser fuehrungsdurchmesser d3"},
    {"Body_Diameter", "bodydia koerperdurchmesser"},
    {"Tip_Diameter", "tipdia tip spitzendurchmesser tipwidth"},
    {"Shank_Diameter",
     "shank shankdia shaft shaftdiameter shaftdia schaft schaftdurchmesser "
     "schaftø øschaft d2 dmm shankø"},
    {"Neck_Diameter", "neck neckdia halsdurchmesser"},
    {"Min_Diameter", "mindia minimumdiameter durchmessermin dmin"},
    {"Max_Diameter", "maxdia maximumdiameter durchmessermax dmax"},
    {"Flutes_#",
     "flutes flute fluteno numberofflutes noofflutes numflutes flutecount "
     "nof z zaehne zaehnezahl schneiden schneidenzahl anzahlschneiden "
     "anzahlzaehne teeth numberofteeth cuttingedges zefp"},
    {"Teeth_#",
     "teeth numberofteeth noofteeth toothcount z zaehne zaehnezahl schneiden "
     "schneidenzahl flutes numberofflutes nof"},
    {"Inserts_#",
     "inserts numberofinserts insertcount platten plattenzahl z schneiden "
     "schneidenzahl flutes numberofflutes teeth nof"},
    {"Flute_Length",
     "loc lengthofcut cuttinglength cutlength cuttingedgeheight cuttingedgelength "
     "flutelen schneidenlaenge schneidlaenge nutzlaenge l2 ap apmx apmax"},
    {"Thread_Length", "threadlen gewindelaenge l2 flutelength cuttingedgeheight lengthofcut loc"},
    {"Overall_Length", "oal overalllen totallength length toollength gesamtlaenge laenge l l1 lf"},
    {"Gauge_Length", "gaugelen spannlaenge auskragung"},
    {"Max_Overhang", "overhang ueberhang ausspannlaenge"},
    {"Helix_Angle", "helix drallwinkel drall spiralwinkel fha"},
    {"Point_Angle",
     "point pointangle tipangle includedangle cuttingedgeangle spitzenwinkel winkel "
     "taperangle angle sig"},
    {"Dovetail_Angle", "cuttingedgeangle angle winkel schwalbenschwanzwinkel"},
    {"Lead_Angle", "lead approachangle einstellwinkel kapr cuttingedgeangle"},
    {"Corner_Radius", "cornerrad radius r re eckenradius flatradius torusradius cornerradius"},
    {"Ball_Radius", "ballrad radius r kugelradius"},
    {"Width", "breite cuttingwidth schnittbreite bladethickness thickness cuttingedgeheight b"},
    {"Pitch", "steigung threadpitch gewindesteigung p tp"},
    {"Threads_Per_Inch", "tpi gangzahl"},
    {"Thread_Size", "thread gewinde gewindegroesse threaddesignation"},
    {"Tap_Drill", "tapdrilldiameter drillsize kernloch kernlochdurchmesser"},
    {"Center_Cutting", "centercutting centrecutting zentrumsschnitt ueberzentrumschneidend"},
    {"Coolant_Through", "coolant throughcoolant internalcoolant innenkuehlung ikz"},
    {"Tolerance_Class", "tolerance toleranz passung toleranzklasse"},
    {"Material", "toolmaterial cuttingmaterial schneidstoff werkstoff grade bmc"},
    {"Coating", "beschichtung surface oberflaeche finish"},
    {"Holder", "toolholder halter aufnahme werkzeughalter werkzeugaufnahme spannmittel"},
    {"TappingHead", "tappinghead gewindeschneidkopf gewindeschneidfutter"},
    {"Standard", "norm din iso standardno"},
    {"Unit", "units einheit einheiten masseinheit lengthunit lengthunits uom"},
    {"Hand", "richtung drehrichtung rotation handofcut"},
    {"Vendor", "manufacturer maker hersteller lieferant supplier brand marke"},
    {"Order_Code",
     "ordercode productid productcode partnumber partno articlenumber article sku "
     "artikelnummer artikelnr bestellnummer bestellnr bestellcode edp catalogno"},
    {"Link", "url productlink weblink web homepage"},
    {"Tool_Number", "t tno toolno toolnumber werkzeugnummer werkzeugnr tnr"},
    {"Pocket", "pocketnumber pocketno platz platznummer magazinplatz"},
    {"Stock", "quantity qty bestand lagerbestand menge anzahl"},
    {"Min_Stock", "minimumstock minqty mindestbestand meldebestand"},
});

/// As above, for the entries of one property's list.
struct ListMeaning {
  std::string_view property;
  Meaning meaning;
};

constexpr auto kEntries = std::to_array<ListMeaning>({
    {"Material",
     {"Solid carbide",
      "carbide vhm hm hartmetall vollhartmetall solidcarbide tungstencarbide cementedcarbide sc"}},
    {"Material",
     {"HSS", "highspeedsteel schnellarbeitsstahl schnellstahl hssr hssg m2 hssm2 unspecifiedhss"}},
    {"Material", {"HSS-Co5", "hsse hssco cobalt cobalthss hsscobalt hsseco5 hsse5 m35 hssm35"}},
    {"Material", {"HSS-Co8", "hsseco8 hsse8 m42 hssm42"}},
    {"Material", {"HSS-PM", "pmhss hssepm pm powdermetal hsspowder"}},
    {"Material",
     {"Indexable carbide",
      "indexable insert inserts wendeplatte wendeplatten wendeschneidplatten "
      "wsp carbideinsert carbideinserts"}},
    {"Material", {"Carbide tipped", "carbidetip brazedcarbide hmbestueckt hartmetallbestueckt"}},
    {"Material", {"PCD", "pkd diamond diamant polycrystallinediamond"}},
    {"Material", {"CBN", "boronnitride cubicboronnitride pcbn"}},
    {"Material", {"Carbon steel", "ws werkzeugstahl toolsteel"}},
    {"Coating", {"Bright", "uncoated none blank unbeschichtet nocoating keine ohne brightfinish"}},
    {"Coating",
     {"Steam tempered", "steam steamtempered dampfbehandelt dampfangelassen blackoxide"}},
    {"Coating", {"TiN", "titaniumnitride titannitrid"}},
    {"Coating", {"TiCN", "titaniumcarbonitride titancarbonitrid"}},
    {"Coating", {"TiAlN", "titaniumaluminiumnitride titaniumaluminumnitride"}},
    {"Coating", {"AlTiN", "aluminiumtitaniumnitride aluminumtitaniumnitride"}},
    {"Coating", {"ZrN", "zirconiumnitride zirkonnitrid"}},
    {"Coating", {"DLC", "diamondlikecarbon"}},
    {"Coating", {"Diamond", "diamant cvd cvddiamond"}},
});

bool HasWord(std::string_view words, std::string_view word) {
  while (!words.empty()) {
    const std::size_t end = words.find(' ');
    if (words.substr(0, end) == word) return true;
    words.remove_prefix(end == words.npos ? words.size() : end + 1);
  }
  return false;
}

}  // namespace

std::vector<std::string_view> PropertiesMeantBy(std::string_view key) {
  std::vector<std::string_view> meant;
  for (const Meaning& meaning : kProperties) {
    if (HasWord(meaning.spellings, key)) meant.push_back(meaning.meant);
  }
  return meant;
}

std::vector<std::string_view> EntriesMeantBy(std::string_view property, std::string_view key) {
  std::vector<std::string_view> meant;
  for (const ListMeaning& entry : kEntries) {
    if (entry.property == property && HasWord(entry.meaning.spellings, key)) {
      meant.push_back(entry.meaning.meant);
    }
  }
  return meant;
}

}  // namespace orxdb
