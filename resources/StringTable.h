// The texts of the component.
#pragma once

#include "platform/framework/Resources.h"

namespace orxdb {

inline constexpr unsigned IDS_PROJECT_NAME = 100;  ///< not read by the component
inline constexpr unsigned IDS_YES = 101;
inline constexpr unsigned IDS_NO = 102;
inline constexpr unsigned IDS_APPLICATION_TITLE = 57344;  ///< caption of message boxes
inline constexpr unsigned IDS_HEAD_NAME_IN_USE = 57345;
inline constexpr unsigned IDS_UNKNOWN_ERROR = 57346;
inline constexpr unsigned IDS_ABSENT = 57347;  ///< a lookup field without a partner

// Units in default tool names.
inline constexpr unsigned IDS_METRIC_TAP = 57348;
inline constexpr unsigned IDS_METRIC = 57349;
inline constexpr unsigned IDS_INCH = 57350;

/// The component's own, English texts.
extern const ResourceTable kEnglishTexts;

}  // namespace orxdb
