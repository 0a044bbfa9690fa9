// The component's texts in German: a resource library. The numbers are those of the component's
// string table.
#include <iterator>

#include "platform/framework/Resources.h"

namespace {

constexpr orxdb::StringResource kTexts[] = {
    {100, "ORXDB"},
    {101, "Ja"},
    {102, "Nein"},
    {57344, "Kestrix-Datenbank"},
    {57345, "Jeder Gewindeschneidkopf braucht eine eigene 'Description'"},
    {57346, "Unbekannter Fehler"},
    {57347, "Fehlt"},
    {57348, "M"},
    {57349, "m"},
    {57350, "i"},
};

}  // namespace

extern "C" AUTOMATION_API const orxdb::ResourceTable ModuleResources = {kTexts, std::size(kTexts)};
