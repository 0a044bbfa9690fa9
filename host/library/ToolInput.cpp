#include "host/library/ToolInput.h"

#include <algorithm>
#include <istream>
#include <map>
#include <nlohmann/json.hpp>

#include "host/library/HostError.h"
#include "host/library/PropertyText.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

/// A property as it was written, without a text for no value.
struct Given {
  std::string name;
  std::optional<std::string> text;
};
using Description = std::vector<Given>;

Description FromWords(const std::vector<std::string>& words) {
  Description description;
  for (const std::string& word : words) {
    if (word == "-") continue;
    const std::size_t sign = word.find('=');
    std::string text = word.substr(sign + 1);
    description.push_back({word.substr(0, sign), std::nullopt});
    if (!text.empty()) description.back().text = std::move(text);
  }
  return description;
}

Description FromJson(const nlohmann::ordered_json& object) {
  if (!object.is_object()) throw HostError("A tool in JSON is an object, not " + object.dump());
  Description description;
  for (const auto& [name, value] : object.items()) {
    if (value.is_structured()) throw HostError(name + ": a value in JSON is no array or object.");
    description.push_back({name, std::nullopt});
    if (value.is_string()) {
      description.back().text = value.get<std::string>();
    } else if (!value.is_null()) {
      description.back().text = value.dump();
    }
  }
  return description;
}

std::vector<Description> FromInput(std::istream& input) {
  nlohmann::ordered_json json;
  try {
    json = nlohmann::ordered_json::parse(input);
  } catch (const nlohmann::json::exception& e) {
    const std::string why = e.what();  // "[what kind] what is wrong"
    throw HostError("Standard input is no JSON: " + why.substr(why.find(' ') + 1) + '.');
  }
  if (!json.is_array()) return {FromJson(json)};
  std::vector<Description> descriptions;
  std::ranges::transform(json, std::back_inserter(descriptions), FromJson);
  return descriptions;
}

/// Turns descriptions of a table's tools into values for the component.
class ToolReader {
 public:
  ToolReader(ToolDatabase& database, const std::string& table)
      : m_database(database), m_table(table), m_properties(database.Properties(table)) {}

  /// What `others` say counts more.
  Assignments Read(const Description& description, const Description& others) {
    Assignments tool = Read(others);
    for (Assignment& assignment : Read(description)) {
      if (!Contains(tool, assignment.property)) tool.push_back(std::move(assignment));
    }
    return tool;
  }

 private:
  static bool Contains(const Assignments& tool, const std::string& property) {
    return std::ranges::find(tool, property, &Assignment::property) != tool.end();
  }

  Assignments Read(const Description& description) {
    Assignments tool;
    for (const Given& given : description) {
      const Property& property = PropertyNamed(m_table, given.name, m_properties);
      if (Contains(tool, property.name)) throw HostError(property.name + " is given twice.");
      tool.push_back(given.text ? Read(property, *given.text)
                                : Assignment{property.name, Variant::Null(), {}});
    }
    return tool;
  }

  Assignment Read(const Property& property, const std::string& text) {
    if (const auto& choices = Choices(property.name)) return Choose(property, text, *choices);
    Variant value = ParseValue(property, text);
    Cell shown = Cell::Of(value.get());
    return {property.name, std::move(value), std::move(shown)};
  }

  const std::optional<std::vector<Cell>>& Choices(const std::string& property) {
    auto known = m_choices.find(property);
    if (known == m_choices.end()) {
      known = m_choices.emplace(property, m_database.PermissibleValues(m_table, property)).first;
    }
    return known->second;
  }

  static Assignment Choose(const Property& property, const std::string& text,
                           const std::vector<Cell>& choices) {
    const auto choice = FindNamed(choices, text, &Cell::text);
    if (choice == choices.end()) {
      // The component's own word for a tap without a head.
      if (property.name == "TappingHead" && text == "Absent") {
        return {property.name, Variant::FromText(u"Absent"), {}};
      }
      std::string known;
      for (const Cell& cell : choices) known += (known.empty() ? "" : ", ") + cell.text;
      throw HostError(property.name + ": there is no " + Cited(text) + ". There are: " + known +
                      '.');
    }
    return LookedUp(property.name, choice->text);
  }

  ToolDatabase& m_database;
  const std::string& m_table;
  std::vector<Property> m_properties;
  std::map<std::string, std::optional<std::vector<Cell>>> m_choices;
};

}  // namespace

std::vector<Assignments> ReadTools(ToolDatabase& database, const std::string& table,
                                   const std::vector<std::string>& words, std::istream& input) {
  const bool fromInput = std::ranges::find(words, "-") != words.end();
  const std::vector<Description> descriptions =
      fromInput ? FromInput(input) : std::vector<Description>(1);
  const Description others = FromWords(words);
  ToolReader reader(database, table);
  std::vector<Assignments> tools;
  tools.reserve(descriptions.size());
  for (const Description& description : descriptions) {
    tools.push_back(reader.Read(description, others));
  }
  return tools;
}

std::string WithApostrophesDoubled(const std::string& text) {
  std::string doubled;
  for (const char c : text) doubled.append(c == '\'' ? 2 : 1, c);
  return doubled;
}

Assignment LookedUp(const std::string& property, const std::string& text) {
  return {property, Variant::FromBstr(WidenToBstr(WithApostrophesDoubled(text))), Cell::Text(text)};
}

ToolProperties ArraysOf(const Assignments& tool) {
  const auto count = static_cast<ULONG>(tool.size());
  SafeArray names = SafeArray::Vector(VT_BSTR, count);
  SafeArray values = SafeArray::Vector(VT_VARIANT, count);
  {
    const ArrayAccess<BSTR> nameAt(names.get());
    const ArrayAccess<VARIANT> valueAt(values.get());
    for (ULONG i = 0; i < count; ++i) {
      nameAt[i] = WidenToBstr(tool[i].property).detach();
      valueAt[i] = tool[i].value.Copy().detach();
    }
  }
  return {Variant::FromArray(VT_BSTR, std::move(names)),
          Variant::FromArray(VT_VARIANT, std::move(values))};
}

std::string CheckInputWord(const std::string& word) {
  const std::size_t sign = word.find('=');
  const bool valid = word == "-" || (sign != 0 && sign != word.npos);
  return valid ? "" : Cited(word) + " is not NAME=VALUE";
}

}  // namespace orxdb
