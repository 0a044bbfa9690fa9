// Names on which the component and its hosts agree and which no method tells.
#pragma once

#include <array>
#include <string_view>

namespace orxdb {

/// The tables of machining data, in the order of their opening. GetChosenDrillFeed reads
/// DRILL_FEED; the others are what GetRowByMaterialHardness and GetFactorByTable take.
inline constexpr std::array<std::string_view, 18> kMachiningTables = {"T24_27_30_31",
                                                                      "DRILLING_FS",
                                                                      "END_MILLING_FS",
                                                                      "FACE_MILLING_FS",
                                                                      "REAMING_FS",
                                                                      "RECOMMENDED_FS",
                                                                      "SLIT_MILLING_FS",
                                                                      "THREADING_FS",
                                                                      "DRILL_FEED",
                                                                      "T15b_15d_22",
                                                                      "T15c",
                                                                      "T25",
                                                                      "T33",
                                                                      "T34",
                                                                      "HARDNESS_BRC",
                                                                      "HARDNESS_RCB",
                                                                      "T5_DEPTH",
                                                                      "T5_FEED"};

/// The name of the tool that GetDefPropsValues adds for a moment.
inline constexpr std::u16string_view kTemporaryToolName = u"AUX_TEMP_TOOLNAME_~*&^$%_";

}  // namespace orxdb
