#include "host/library/Lookups.h"

#include <algorithm>
#include <cerrno>
#include <fstream>

#include "host/library/NewFile.h"
#include "host/library/TextMatch.h"
#include "platform/framework/LetterCase.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

HostError Unreadable(const std::string& what) {
  return HostError("The " + what + " cannot be read.");
}

HostError NoMaterial(const std::string& name) {
  return HostError("There is no stock material with " + Cited(name) +
                   " in its texts (* stands for any text). `orxdb materials` lists all.");
}

HostError NoHead(double diameter, const std::string& unit) {
  return HostError("No tapping head takes a tap of " + Cell::Real(diameter).text + ' ' + unit +
                   '.');
}

/// The standard diameters of end mills, for the tables and the property that have them.
std::optional<Answer> StandardDiameters(ToolDatabase& database, const std::string& table,
                                        const std::string& property) {
  ToolProperties tool;
  Variant values;
  Variant shown;
  if (FAILED(database.Component().GetPermissibleValues2(
          WidenToBstr(table).get(), tool.names.ptr(), tool.values.ptr(),
          WidenToBstr(property).get(), values.put(), shown.put()))) {
    throw Unreadable("standard diameters of end mills");
  }
  const std::vector<Cell> diameters = CellsOf(values);
  const std::vector<Cell> texts = CellsOf(shown);
  if (diameters.empty() || texts.size() != diameters.size()) return std::nullopt;
  Answer answer({"Value", "Display"});
  answer.remarks.emplace_back("These are the standard diameters in inches.");
  for (std::size_t i = 0; i < diameters.size(); ++i) {
    answer.rows.push_back({diameters[i], texts[i]});
  }
  return answer;
}

void WriteBytes(const std::filesystem::path& file, const ArrayAccess<BYTE>& bytes) {
  std::ofstream stream(file, std::ios::binary);
  stream.write(reinterpret_cast<const char*>(bytes.elements().data()),
               static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) {
    throw std::filesystem::filesystem_error(
        "write", file, std::error_code(errno ? errno : EIO, std::generic_category()));
  }
}

}  // namespace

Answer StockMaterials(ToolDatabase& database) {
  ToolProperties material;
  if (FAILED(database.Component().GetFirstStockMaterial(material.names.put(),
                                                        material.values.put()))) {
    throw Unreadable("stock materials");
  }
  if (!material) throw HostError("The database has no stock materials.");
  Answer answer(material.Names());
  while (material) {
    answer.rows.push_back(material.Cells());
    if (FAILED(database.Component().GetNextStockMaterial(material.values.put()))) {
      throw Unreadable("stock materials");
    }
  }
  return answer;
}

Answer StockMaterialsLike(ToolDatabase& database, const std::string& text) {
  const std::vector<std::string> words = WordsOf(text);
  Answer answer = StockMaterials(database);
  std::erase_if(answer.rows, [&words](const std::vector<Cell>& row) {
    return !std::ranges::all_of(words, [&row](const std::string& word) {
      return std::ranges::any_of(row, [&word](const Cell& cell) {
        return cell.kind == Cell::Kind::Text && HasWord(FoldLetters(cell.text), word);
      });
    });
  });
  if (answer.rows.empty()) throw NoMaterial(text);
  return answer;
}

Answer ValuesOf(ToolDatabase& database, const std::string& table, const std::string& property,
                std::optional<double> tapDiameter) {
  if (tapDiameter && (property != "TappingHead" || (table != "TAP" && table != "PIPE_TAP"))) {
    throw HostError("--tap-diameter is for the property TappingHead of TAP and PIPE_TAP.");
  }
  if (std::optional<Answer> diameters = StandardDiameters(database, table, property)) {
    return *std::move(diameters);
  }
  const auto values = database.PermissibleValues(table, property, tapDiameter.value_or(0));
  if (tapDiameter && (!values || *tapDiameter <= 0)) throw NoHead(*tapDiameter, "mm");
  if (!values) {
    throw HostError("There is no list of values for " + property + " of " + table + '.');
  }
  Answer answer({"Value"});
  if (tapDiameter) {
    answer.remarks.emplace_back("The empty value at the end stands for no tapping head.");
  }
  for (const Cell& value : *values) answer.rows.push_back({value});
  return answer;
}

Answer TappingHeadsFor(ToolDatabase& database, double diameter, const std::string& unit) {
  Variant names;
  Variant numbers;
  if (FAILED(database.Component().GetTappingHeadsForTap(WidenToBstr(unit).get(), diameter,
                                                        names.put(), numbers.put()))) {
    throw Unreadable("tapping heads");
  }
  if (names.empty()) throw NoHead(diameter, unit);
  const ArrayAccess<BSTR> texts(names.get().parray);
  const ArrayAccess<LONG> ids(numbers.get().parray);
  Answer answer({"ID", "Name"});
  for (std::size_t i = 0; i < texts.size() && i < ids.size(); ++i) {
    answer.rows.push_back({Cell::Number(ids[i]), Cell::Text(NarrowBstr(texts[i]))});
  }
  return answer;
}

Answer PrimaryOperation(ToolDatabase& database, const std::string& table) {
  Bstr operation;
  if (FAILED(database.Component().GetPrimaryOpByTable(WidenToBstr(table).get(), operation.put()))) {
    throw Unreadable("primary operation of " + table);
  }
  if (SysStringLen(operation.get()) == 0) {
    throw HostError("The tools of " + table + " have no primary operation.");
  }
  return {{"Table", "Operation"}, {Cell::Text(table), Cell::Text(NarrowBstr(operation.get()))}};
}

Answer SavePicture(ToolDatabase& database, const std::string& table,
                   const std::filesystem::path& file, bool replace) {
  Variant picture;
  if (FAILED(database.Component().GetToolSubtypePreview(WidenToBstr(table).get(), picture.put()))) {
    throw Unreadable("picture of " + table);
  }
  if (picture.type() != (VT_ARRAY | VT_UI1)) {
    throw HostError("There is no picture of the tools of " + table + '.');
  }
  const ArrayAccess<BYTE> bytes(picture.get().parray);
  WriteNewFile(file, replace, "",
               [&](const std::filesystem::path& building) { WriteBytes(building, bytes); });
  return {{"File"}, {Cell::Text(file.string())}};
}

}  // namespace orxdb
