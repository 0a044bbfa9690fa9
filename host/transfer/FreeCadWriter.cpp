// Tool bits of FreeCAD, a file each, and the library that lists them.
#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

#include "host/library/HostError.h"
#include "host/transfer/PropertyWriters.h"
#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

struct Shape {
  std::string_view table;
  const char* name;
};
constexpr Shape kShapes[] = {{"FLAT_END_MILL", "endmill"},
                             {"BALL_END_MILL", "ballend"},
                             {"BULL_NOSE_END_MILL", "bullnose"},
                             {"CHAMFER_MILL", "chamfer"},
                             {"DOVETAIL_CUTTER", "dovetail"},
                             {"TWIST_DRILL", "drill"},
                             {"REAMER", "reamer"},
                             {"SLITTING_SAW", "slittingsaw"},
                             {"TAP", "tap"},
                             {"THREAD_MILL", "thread-mill"},
                             {"V_BIT", "v-bit"}};

enum class Measure { Length, Angle, Plain };
struct Parameter {
  const char* property;
  const char* name;
  Measure measure;
};
constexpr Parameter kParameters[] = {{"Diameter", "Diameter", Measure::Length},
                                     {"Overall_Length", "Length", Measure::Length},
                                     {"Flute_Length", "CuttingEdgeHeight", Measure::Length},
                                     {"Shank_Diameter", "ShankDiameter", Measure::Length},
                                     {"Corner_Radius", "CornerRadius", Measure::Length},
                                     {"Pitch", "Pitch", Measure::Length},
                                     {"Flutes_#", "Flutes", Measure::Plain},
                                     {"Material", "Material", Measure::Plain}};

/// What drills call the angle of their tip, others call that of their edges.
const char* AngleOf(std::string_view table) {
  return table == "TWIST_DRILL" ? "TipAngle" : "CuttingEdgeAngle";
}

/// The text without what file systems do not take, cut to a length that they take.
std::string FileName(std::string_view text) {
  constexpr std::size_t kLongest = 100;
  std::string name(text.substr(0, kLongest));
  if (text.size() > kLongest) {
    while (!name.empty() && (static_cast<unsigned char>(text[name.size()]) & 0xC0U) == 0x80) {
      name.pop_back();
    }
  }
  std::ranges::replace_if(
      name,
      [](char c) {
        constexpr std::string_view kTaken = "/\\:*?\"<>|";
        return static_cast<unsigned char>(c) < 0x20 || kTaken.find(c) != kTaken.npos;
      },
      '_');
  name = Trim(std::string_view(name), ". ");
  return name.empty() ? "tool" : name;
}

class FreeCadWriter : public ToolWriter {
 public:
  FreeCadWriter(std::string table, const char* shape, FileSink sink)
      : ToolWriter(std::move(sink)), m_table(std::move(table)), m_shape(shape) {}

  void Header(const std::vector<std::string>& properties) override { m_properties = properties; }

  void Tool(const std::vector<Cell>& cells) override {
    NamedValues values(m_properties, cells);
    const std::string name = values.Take("Name");
    const std::string unit = values.Take("Unit");
    nlohmann::ordered_json parameters = nlohmann::ordered_json::object();
    const auto add = [&](const char* property, const char* parameter, Measure measure) {
      std::string text = values.Take(property);
      if (text.empty()) return;
      if (measure == Measure::Length && !unit.empty()) text += ' ' + unit;
      if (measure == Measure::Angle) text += " °";
      parameters[parameter] = std::move(text);
    };
    for (const Parameter& parameter : kParameters) {
      add(parameter.property, parameter.name, parameter.measure);
    }
    add("Point_Angle", AngleOf(m_table), Measure::Angle);

    const std::string file = FreeName(FileName(name)) + ".fctb";
    Write("Bit/" + file, {{"version", 2},
                          {"name", name},
                          {"shape", std::string(m_shape) + ".fcstd"},
                          {"parameter", std::move(parameters)},
                          {"attribute", nlohmann::ordered_json::object()}});
    AddToLibrary(values.Take("Tool_Number"), file);
    values.ForEachLeft([this](const std::string& property) { LoseValue(property); });
  }

  void End() override {
    Write("Library/" + FileName(m_table) + ".fctl", {{"version", 1}, {"tools", m_tools}});
  }

 private:
  void Write(const std::string& file, const nlohmann::ordered_json& json) {
    Put(json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + '\n', file);
  }

  /// The name, with a number behind it when another file has it in any case of letters.
  std::string FreeName(const std::string& name) {
    int& count = m_files[Folded(name)];
    std::string free = name;
    while (++count > 1) {
      free = name + ' ' + std::to_string(count);
      if (m_files.emplace(Folded(free), 1).second) break;
    }
    return free;
  }

  /// Libraries number every tool: those without a number come behind the highest one so far.
  void AddToLibrary(const std::string& number, const std::string& file) {
    int nr = 0;
    std::from_chars(number.data(), number.data() + number.size(), nr);
    if (nr <= 0) nr = m_highest + 1;
    m_highest = std::max(m_highest, nr);
    m_tools.push_back({{"nr", nr}, {"path", file}});
  }

  std::string m_table;
  const char* m_shape;
  std::vector<std::string> m_properties;
  std::map<std::string, int> m_files;  ///< how often a name has been asked for
  nlohmann::ordered_json m_tools = nlohmann::ordered_json::array();
  int m_highest = 0;
};

}  // namespace

std::unique_ptr<ToolWriter> MakeFreeCadWriter(const std::string& table, FileSink sink) {
  const auto* const shape = std::ranges::find(kShapes, table, &Shape::table);
  if (shape == std::end(kShapes)) {
    throw HostError("FreeCAD has no shape for the tools of " + table + '.');
  }
  return std::make_unique<FreeCadWriter>(table, shape->name, std::move(sink));
}

}  // namespace orxdb
