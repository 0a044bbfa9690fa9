// The tapping heads that a tap can run in.
#pragma once

#include "browse/PropertyArrays.h"
#include "interface/IOrxDbObj.h"

namespace orxdb {

/// Names (VT_ARRAY | VT_BSTR) and identifiers (VT_ARRAY | VT_I4) of heads, parallel.
struct TappingHeads {
  Variant names;
  Variant ids;
};

/// The heads whose range holds a diameter in millimetres, both ends included, in the order of
/// TAPPING_HEAD's cursor; both empty when none does. Filters and walks that table through the
/// methods of the component, so its filter and cursor are afterwards those of this walk.
TappingHeads HeadsForTap(double metricDiameter, IOrxDbObj& own);

}  // namespace orxdb
