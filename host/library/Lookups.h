// What goes with tools: stock materials, values that properties may have, tapping heads, the
// operation and the picture of a kind of tool. All throw HostError, also when there is none.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/library/Answer.h"
#include "host/library/ToolDatabase.h"

namespace orxdb {

Answer StockMaterials(ToolDatabase& database);
/// Those with every word of the text somewhere in their texts, in any letter case; in a word, ?
/// stands for any character and * for any text, and such a word begins where one of theirs does.
Answer StockMaterialsLike(ToolDatabase& database, const std::string& text);

/// What a property may be; with the diameter of a tap in millimetres, the tapping heads that take
/// it, then a null for none of them.
Answer ValuesOf(ToolDatabase& database, const std::string& table, const std::string& property,
                std::optional<double> tapDiameter);

/// Tapping heads that take a tap of a diameter, in "mm" or "in".
Answer TappingHeadsFor(ToolDatabase& database, double diameter, const std::string& unit);

Answer PrimaryOperation(ToolDatabase& database, const std::string& table);

/// Saves the picture of the table's tools as a file, whole or not at all.
Answer SavePicture(ToolDatabase& database, const std::string& table,
                   const std::filesystem::path& file, bool replace);

}  // namespace orxdb
