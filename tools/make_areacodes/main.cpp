// Makes the area code tables of every country that the table of the countries lists and for which there are geocoding
// data; names in German where the data have them, else in English.
//
//   make_areacodes BASE
//
// BASE is the folder with states/state.codes; the tables go to BASE/areacodes, where those of an earlier run are
// removed first. Prints the number of rows for each country.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <list>
#include <phonenumbers/geocoding/phonenumber_offline_geocoder.h>
#include <phonenumbers/phonenumber.pb.h>
#include <phonenumbers/phonenumberutil.h>
#include <set>
#include <string>
#include <unicode/locid.h>
#include <vector>

#include "AreaTree.h"
#include "PlainName.h"
#include "known_facts.h"
#include "services/ansi.h"
#include "services/text.h"

namespace {

using namespace area_codes;
namespace phone = i18n::phonenumbers;

constexpr std::size_t kNationalDigits = 10;  // of a whole number; the data are asked with no fewer

struct Country {
  std::string digits;  // calling code, with the beginning of the area code where several countries share one
  std::string name;    // Windows-1252
};

std::vector<Country> ReadCountries(const std::filesystem::path& file) {
  std::vector<Country> countries;
  std::ifstream in(file, std::ios::binary);
  for (std::string line; std::getline(in, line);) {
    const auto fields = vorlix::Split(line, "|");
    if (line.starts_with("00") && fields.size() == 4) countries.push_back({fields[0].substr(2), fields[2]});
  }
  return countries;
}

// What the geocoder answers where it knows no more than the country.
std::set<std::string> CountryNames(int callingCode) {
  std::list<std::string> regions;
  phone::PhoneNumberUtil::GetInstance()->GetRegionCodesForCountryCallingCode(callingCode, &regions);
  std::set<std::string> names;
  for (const std::string& region : regions) {
    icu::UnicodeString name;
    std::string utf8;
    icu::Locale("", region.c_str()).getDisplayCountry(icu::Locale::getGerman(), name);
    names.insert(name.toUTF8String(utf8));
  }
  return names;
}

std::string PlaceOf(int callingCode, std::string national) {
  static const phone::PhoneNumberOfflineGeocoder geocoder;
  national.resize(std::max(national.size(), kNationalDigits), '0');
  phone::PhoneNumber number;
  number.set_country_code(callingCode);
  number.set_national_number(std::stoull(national));
  return geocoder.GetDescriptionForValidNumber(number, icu::Locale::getGerman());
}

// Prefixes that belong to a country with a longer code of its own give nothing, and so do those longer codes: a part of
// a calling code is no area.
Rows RowsOf(const Country& country, const std::vector<Country>& all) {
  const int callingCode = vorlix::LeadingInteger(country.digits).value_or(0);
  auto noPlaces = CountryNames(callingCode);
  noPlaces.insert(vorlix::ToUtf8(country.name));
  std::vector<std::string> others;
  for (const Country& other : all) {
    if (other.digits != country.digits && other.digits.starts_with(country.digits)) others.push_back(other.digits);
  }
  const auto nameOf = [&](const std::string& prefix) {
    const std::string digits = country.digits + prefix;
    if (std::ranges::any_of(others, [&](const std::string& other) { return digits.starts_with(other); }))
      return std::string();
    std::string place = PlaceOf(callingCode, prefix);
    return noPlaces.contains(place) || PlainName(place).empty() ? std::string() : place;
  };
  Rows rows = MergedRows(nameOf, CodeLengthsOf(callingCode));
  AddKnownFacts(callingCode, rows);
  return rows;
}

bool WriteTable(const std::filesystem::path& folder, const Country& country, const Rows& rows) {
  std::string text = "; Area codes of +" + country.digits +
                     ": code without a leading zero|place. Made by tools/make_areacodes.\r\n"
                     "; From the geocoding data of libphonenumber, Apache License 2.0: see NOTICE.\r\n";
  for (const auto& [code, name] : rows)
    text += code + "|" + PlainName(name) + "\r\n";
  std::ofstream out(folder / ("area_00" + country.digits + ".codes"), std::ios::binary);
  out << text;
  return out.flush().good();
}

void RemoveTables(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> old;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".codes") old.push_back(entry.path());
  }
  for (const auto& file : old)
    std::filesystem::remove(file);
}

int MakeTables(const std::filesystem::path& base) {
  const auto countries = ReadCountries(base / "states" / "state.codes");
  if (countries.empty()) {
    std::fprintf(stderr, "make_areacodes: no countries in %s\n", (base / "states" / "state.codes").c_str());
    return 1;
  }
  const auto folder = base / "areacodes";
  RemoveTables(folder);
  for (const Country& country : countries) {
    const Rows rows = RowsOf(country, countries);
    if (rows.empty()) continue;
    if (!WriteTable(folder, country, rows)) {
      std::fprintf(stderr, "make_areacodes: writing the table of +%s failed\n", country.digits.c_str());
      return 1;
    }
    std::printf("%s %zu\n", country.digits.c_str(), rows.size());
  }
  return 0;
}

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("usage: make_areacodes BASE\n", stderr);
    return 2;
  }
  try {
    return MakeTables(words[1]);
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "make_areacodes: %s\n", fault.what());
    return 1;
  }
}
