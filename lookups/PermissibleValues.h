// The values that properties of tools may take.
#pragma once

#include <string>

#include "browse/PropertyArrays.h"
#include "database/ToolDbData.h"

namespace orxdb {

/// The values of the column that a property is looked up in, VT_ARRAY | VT_VARIANT, ascending, with
/// duplicates; empty for a property of the table itself, for the fields that follow from the
/// machining operation, and when the column has no rows.
///
/// For `TappingHead` of taps and a diameter in millimetres above 0: only the heads that take it,
/// both ends of their ranges included, and a null behind them for no head. Raises for a property
/// that the table does not have.
Variant PermissibleValues(CDaoDatabase& database, const CToolTableInfo& table,
                          const std::string& property, double tapDiameter);

/// Adds a text to the column that a property is looked up in unless a record there has it, as the
/// database compares texts. Looks and adds in one transaction. Raises for a property without a
/// list, for a blank text and for one that the column cannot hold.
void AddPermissibleValue(CDaoDatabase& database, const CToolTableInfo& table,
                         const std::string& property, const std::string& text);

/// Values and what they look like for people, two parallel VT_ARRAY | VT_VARIANT, the texts wide.
struct ShownValues {
  Variant values;
  Variant texts;
};

/// The standard diameters of flat and ball end mills in inches, as for `Diameter`; both empty for
/// any other property and table, and without standard diameters. A text is the decimal, followed by
/// the fraction in brackets; without a decimal it goes on from the text before.
ShownValues StandardDiameters(CDaoDatabase& database, const std::string& table,
                              const std::string& property);

}  // namespace orxdb
