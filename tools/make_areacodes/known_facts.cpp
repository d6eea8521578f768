#include "known_facts.h"

#include <algorithm>

namespace area_codes {
namespace {

struct Plan {
  int country;
  CodeLengths lengths;
};
constexpr Plan kPlans[] = {{1, {3, 3}},  {7, {3, 5}},  {44, {2, 5}}, {49, {2, 5}}, {52, {2, 3}},
                           {54, {2, 4}}, {55, {2, 2}}, {86, {2, 3}}, {90, {3, 3}}, {91, {2, 4}}};

struct Fact {
  int country;
  const char* code;
  const char* name;  // empty: there is no such code
};
constexpr Fact kCorrections[] = {{49, "465", ""},
                                 {49, "4651", "Sylt"},
                                 {49, "621", "Mannheim/Ludwigshafen am Rhein"},
                                 {49, "760", ""},
                                 {49, "7602", "Oberried Breisgau"},
                                 {49, "33052", ""},
                                 {49, "33927", ""}};

// Cities that have a name of their own in German where the data have English ones only.
struct GermanName {
  int country;
  const char* english;
  const char* german;
};
constexpr GermanName kGermanNames[] = {
    {7, "Moscow", "Moskau"},
    {7, "St Petersburg", "Sankt Petersburg"},
    {7, "Nizhni Novgorod", "Nischni Nowgorod"},
    {7, "Novosibirsk", "Nowosibirsk"},
    {7, "Ekaterinburg", "Jekaterinburg"},
    {20, "Cairo/Giza/Qalyubia", "Kairo"},
    {30, "Athens/Piraeus/Salamina", "Athen"},
    {31, "The Hague", "Den Haag"},
    {33, "Strasbourg", "Straßburg"},
    {34, "Seville", "Sevilla"},
    {40, "Bucharest and Ilfov County", "Bukarest"},
    {46, "Gothenburg", "Göteborg"},
    {48, "Warsaw", "Warschau"},
    {48, "Wroclaw", "Breslau"},
    {48, "Gdańsk", "Danzig"},
    {48, "Kraków", "Krakau"},
    {48, "Poznań", "Posen"},
    {48, "Szczecin", "Stettin"},
    {52, "Mexico City, FD", "Mexiko-Stadt"},
    {53, "Havana City", "Havanna"},
    {81, "Tokyo", "Tokio"},
    {84, "Ho Chi Minh City", "Ho-Chi-Minh-Stadt"},
    {86, "Beijing", "Peking"},
    {90, "Istanbul (Europe)", "Istanbul (Europa)"},
    {90, "Istanbul (Anatolia)", "Istanbul (Asien)"},
    {91, "New Delhi", "Neu-Delhi"},
    {213, "Algiers", "Algier"},
    {218, "Tripoli", "Tripolis"},
    {351, "Lisbon", "Lissabon"},
    {372, "Tallinn/Harju County", "Tallinn"},
    {374, "Yerevan", "Eriwan"},
    {380, "Kyiv city", "Kiew"},
    {380, "Kyiv", "Kiew"},
    {380, "Lviv", "Lwiw"},
    {381, "Belgrade", "Belgrad"},
    {387, "Sarajevo Canton", "Sarajevo"},
    {420, "Prague", "Prag"},
    {963, "Damascus and rural areas", "Damaskus"},
    {995, "Tbilisi", "Tiflis"},
};

constexpr Fact kServices[] = {
    // Germany
    {49, "10", "Call-by-Call"},
    {49, "115", "Behördenruf"},
    {49, "116", "Sozialer Dienst"},
    {49, "137", "Massenverkehr"},
    {49, "138", "Massenverkehr"},
    {49, "150", "Mobilfunk"},
    {49, "151", "Mobilfunk"},
    {49, "152", "Mobilfunk"},
    {49, "153", "Mobilfunk"},
    {49, "154", "Mobilfunk"},
    {49, "155", "Mobilfunk"},
    {49, "156", "Mobilfunk"},
    {49, "157", "Mobilfunk"},
    {49, "158", "Mobilfunk"},
    {49, "159", "Mobilfunk"},
    {49, "160", "Mobilfunk"},
    {49, "161", "Mobilfunk"},
    {49, "162", "Mobilfunk"},
    {49, "163", "Mobilfunk"},
    {49, "164", "Funkruf"},
    {49, "165", "Mobilfunk"},
    {49, "166", "Mobilfunk"},
    {49, "167", "Mobilfunk"},
    {49, "168", "Funkruf"},
    {49, "169", "Funkruf"},
    {49, "170", "Mobilfunk"},
    {49, "171", "Mobilfunk"},
    {49, "172", "Mobilfunk"},
    {49, "173", "Mobilfunk"},
    {49, "174", "Mobilfunk"},
    {49, "175", "Mobilfunk"},
    {49, "176", "Mobilfunk"},
    {49, "177", "Mobilfunk"},
    {49, "178", "Mobilfunk"},
    {49, "179", "Mobilfunk"},
    {49, "18", "Nutzergruppe"},
    {49, "180", "Service"},
    {49, "181", "Virtuelles privates Netz"},
    {49, "191", "Online-Dienst"},
    {49, "192", "Online-Dienst"},
    {49, "193", "Online-Dienst"},
    {49, "194", "Online-Dienst"},
    {49, "31", "Testrufnummer"},
    {49, "32", "Nationale Teilnehmerrufnummer"},
    {49, "700", "Persönliche Rufnummer"},
    {49, "800", "kostenfrei"},
    {49, "900", "Premium-Dienst"},
    // Austria
    {43, "50", "Privates Netz"},
    {43, "517", "Privates Netz"},
    {43, "57", "Privates Netz"},
    {43, "59", "Privates Netz"},
    {43, "650", "Mobilfunk"},
    {43, "651", "Mobilfunk"},
    {43, "652", "Mobilfunk"},
    {43, "653", "Mobilfunk"},
    {43, "655", "Mobilfunk"},
    {43, "657", "Mobilfunk"},
    {43, "659", "Mobilfunk"},
    {43, "660", "Mobilfunk"},
    {43, "661", "Mobilfunk"},
    {43, "663", "Mobilfunk"},
    {43, "664", "Mobilfunk"},
    {43, "665", "Mobilfunk"},
    {43, "666", "Mobilfunk"},
    {43, "667", "Mobilfunk"},
    {43, "668", "Mobilfunk"},
    {43, "669", "Mobilfunk"},
    {43, "67", "Mobilfunk"},
    {43, "68", "Mobilfunk"},
    {43, "69", "Mobilfunk"},
    {43, "720", "Ortsunabhängige Rufnummer"},
    {43, "780", "Konvergenter Dienst"},
    {43, "800", "kostenfrei"},
    {43, "810", "Service"},
    {43, "820", "Service"},
    {43, "821", "Service"},
    {43, "828", "Service"},
    {43, "900", "Premium-Dienst"},
    {43, "901", "Premium-Dienst"},
    {43, "930", "Premium-Dienst"},
    {43, "931", "Premium-Dienst"},
    // Switzerland
    {41, "51", "Firmennetz"},
    {41, "58", "Firmennetz"},
    {41, "74", "Mobilfunk"},
    {41, "75", "Mobilfunk"},
    {41, "76", "Mobilfunk"},
    {41, "77", "Mobilfunk"},
    {41, "78", "Mobilfunk"},
    {41, "79", "Mobilfunk"},
    {41, "800", "kostenfrei"},
    {41, "840", "Service"},
    {41, "842", "Service"},
    {41, "844", "Service"},
    {41, "848", "Service"},
    {41, "860", "Anrufbeantworter im Netz"},
    {41, "878", "Persönliche Rufnummer"},
    {41, "900", "Premium-Dienst"},
    {41, "901", "Premium-Dienst"},
    {41, "906", "Premium-Dienst"},
};

}  // namespace

CodeLengths CodeLengthsOf(int country) {
  const Plan* plan = std::ranges::find(kPlans, country, &Plan::country);
  return plan == std::end(kPlans) ? CodeLengths{} : plan->lengths;
}

void AddKnownFacts(int country, Rows& rows) {
  for (const GermanName& name : kGermanNames) {
    if (name.country != country) continue;
    for (auto& [code, place] : rows) {
      if (place == name.english) place = name.german;
    }
  }
  for (const Fact& fact : kCorrections) {
    if (fact.country != country) continue;
    if (*fact.name == '\0') {
      rows.erase(fact.code);
    } else {
      rows[fact.code] = fact.name;
    }
  }
  for (const Fact& fact : kServices) {
    if (fact.country == country) rows[fact.code] = fact.name;
  }
}

}  // namespace area_codes
