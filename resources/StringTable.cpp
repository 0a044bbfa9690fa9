#include "resources/StringTable.h"

#include <iterator>

namespace orxdb {
namespace {

constexpr StringResource kTexts[] = {
    {IDS_PROJECT_NAME, "ORXDB"},
    {IDS_YES, "Yes"},
    {IDS_NO, "No"},
    {IDS_APPLICATION_TITLE, "Kestrix Data Base"},
    {IDS_HEAD_NAME_IN_USE, "You should use unique 'Description' for each Tapping Head"},
    {IDS_UNKNOWN_ERROR, "Unknown error"},
    {IDS_ABSENT, "Absent"},
    {IDS_METRIC_TAP, "M"},
    {IDS_METRIC, "m"},
    {IDS_INCH, "i"},
};

}  // namespace

const ResourceTable kEnglishTexts = {kTexts, std::size(kTexts)};

}  // namespace orxdb
