#include "host/library/Cause.h"

#include <algorithm>

#include "host/library/Names.h"
#include "host/library/OpenFiles.h"

namespace orxdb {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Where a comma stands between digits; npos for nowhere.
std::size_t DecimalComma(const std::string& text) {
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (text[i] == ',' && IsDigit(text[i - 1]) && IsDigit(text[i + 1])) return i;
  }
  return text.npos;
}

}  // namespace

std::string Cause(const ToolDatabase& database) {
  std::string cause = database.LastError();
  if (cause.empty()) return cause;
  if (cause.find("nother program") != cause.npos) {
    const std::string programs = ProgramsThatUse(database.File());
    if (!programs.empty()) cause += " It is open in " + programs + '.';
    cause += " Try again when it is done.";
  } else if (cause.find("longer than") != cause.npos || cause.find("256 MiB") != cause.npos) {
    cause += " Ask for less at a time: compare a property with a value, or leave the order out.";
  }
  return ' ' + cause;
}

std::string CauseOf(const std::string& criteria, std::string cause,
                    const std::vector<Property>& properties) {
  constexpr std::string_view kNoField = "There is no field ";
  if (const std::size_t place = cause.find(kNoField); place != cause.npos) {
    std::string name = cause.substr(place + kNoField.size());
    name.erase(name.find_last_not_of('.') + 1);
    std::vector<std::string> names(properties.size());
    std::ranges::transform(properties, names.begin(), &Property::name);
    cause += Nearest(name.substr(name.rfind('.') + 1), names);
  } else if (const std::size_t comma = DecimalComma(criteria); comma != criteria.npos) {
    cause += " Decimals have a full stop, as in 6.5.";
  }
  return cause;
}

std::string Nearest(const std::string& name, const std::vector<std::string>& names) {
  const std::vector<std::string> nearest = NearestNames(name, names);
  return nearest.empty() ? "" : " Like it are: " + Listed(nearest) + '.';
}

std::string CommaHint(const std::string& text) {
  const std::size_t comma = DecimalComma(text);
  if (comma == text.npos) return {};
  std::string meant = text;
  std::ranges::replace(meant, ',', '.');
  return ": decimals have a full stop, " + meant;
}

}  // namespace orxdb
