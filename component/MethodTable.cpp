#include "component/MethodTable.h"

#include <algorithm>
#include <utility>

#include "platform/automation/Ascii.h"

namespace orxdb {
namespace {

template <typename T>
inline constexpr VARTYPE kTypeCode = VT_EMPTY;
template <>
inline constexpr VARTYPE kTypeCode<BSTR> = VT_BSTR;
template <>
inline constexpr VARTYPE kTypeCode<LONG> = VT_I4;
template <>
inline constexpr VARTYPE kTypeCode<USHORT> = VT_UI2;
template <>
inline constexpr VARTYPE kTypeCode<DOUBLE> = VT_R8;
template <>
inline constexpr VARTYPE kTypeCode<VARIANT_BOOL> = VT_BOOL;
template <>
inline constexpr VARTYPE kTypeCode<VARIANT> = VT_VARIANT;

/// A string is a value, though it is a pointer.
template <typename T>
inline constexpr bool kIsReference = std::is_pointer_v<T> && !std::is_same_v<T, BSTR>;

template <typename T>
T FromPlace(void* place) {
  if constexpr (kIsReference<T>) {
    return static_cast<T>(place);
  } else {
    return *static_cast<T*>(place);
  }
}

constexpr Parameter Undirected(const OLECHAR* name) {
  return {.name = name, .flags = PARAMFLAG_NONE};
}
constexpr Parameter In(const OLECHAR* name) {
  return {.name = name, .flags = PARAMFLAG_FIN};
}
constexpr Parameter Out(const OLECHAR* name) {
  return {.name = name, .flags = PARAMFLAG_FOUT};
}
constexpr Parameter Result(const OLECHAR* name) {
  return {.name = name, .flags = PARAMFLAG_FOUT | PARAMFLAG_FRETVAL};
}
constexpr Parameter OptionalIn(const OLECHAR* name, LONG defaultValue) {
  return {.name = name,
          .flags = PARAMFLAG_FIN | PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT,
          .defaultValue = defaultValue};
}

/// Adds the types of the method's signature to what is declared of it.
template <auto method, typename Interface, typename... Args, typename... Declared>
consteval Method MakeRow(HRESULT (STDMETHODCALLTYPE Interface::*)(Args...), DISPID id,
                         const OLECHAR* name, Declared... declared) {
  static_assert(sizeof...(Declared) == sizeof...(Args) && sizeof...(Args) <= kMaxParameters);
  Method row{.id = id, .name = name, .parameterCount = sizeof...(Args)};
  [[maybe_unused]] std::size_t i = 0;
  ((row.slots[i] = declared,
    row.slots[i].type =
        kTypeCode<std::conditional_t<kIsReference<Args>, std::remove_pointer_t<Args>, Args>>,
    row.slots[i].byReference = kIsReference<Args>,
    row.optionalCount += (declared.flags & PARAMFLAG_FOPT) ? 1 : 0,
    row.hasResult = (declared.flags & PARAMFLAG_FRETVAL) != 0, ++i),
   ...);
  row.call = [](IDispatch& object, [[maybe_unused]] void* const* places) {
    return [&]<std::size_t... position>(std::index_sequence<position...>) {
      return (static_cast<Interface&>(object).*method)(FromPlace<Args>(places[position])...);
    }
    (std::index_sequence_for<Args...>());
  };
  return row;
}

template <auto method, typename... Declared>
consteval Method Row(DISPID id, const OLECHAR* name, Declared... declared) {
  return MakeRow<method>(method, id, name, declared...);
}

constexpr std::array kDatabaseMethods = {
    Row<&IOrxDbObj::SetMdbFile>(1, u"SetMdbFile", In(u"bstrFileName")),
    Row<&IOrxDbObj::GetToolTypes>(2, u"GetToolTypes", Out(u"Types")),
    Row<&IOrxDbObj::GetFirstTool>(3, u"GetFirstTool", In(u"bstrToolTable"), Out(u"pPropNames"),
                                  Out(u"pProps")),
    Row<&IOrxDbObj::GetNextTool>(4, u"GetNextTool", In(u"bstrToolTable"), Out(u"pProps")),
    Row<&IOrxDbObj::SetTabFilter>(5, u"SetTabFilter", In(u"bstrToolTable"), In(u"bstrWhereStr"),
                                  In(u"bstrOrderStr")),
    Row<&IOrxDbObj::AddNewRecord>(6, u"AddNewRecord", In(u"bstrToolTable"), In(u"pPropNames"),
                                  In(u"pProps"), Out(u"pDbId")),
    Row<&IOrxDbObj::SetToolProps>(7, u"SetToolProps", In(u"bstrToolTable"), In(u"lDbId"),
                                  In(u"pPropNames"), In(u"pProps")),
    Row<&IOrxDbObj::GetPermissibleValues>(8, u"GetPermissibleValues", In(u"bstrToolTable"),
                                          In(u"bstrParamName"), In(u"fMetricTapDiameter"),
                                          Out(u"pArrVal")),
    Row<&IOrxDbObj::VariantToSQLString>(9, u"VariantToSQLString", In(u"pvarValue"),
                                        Out(u"bstrValue")),
    Row<&IOrxDbObj::VariantToUIString>(10, u"VariantToUIString", In(u"pvarValue"),
                                       Out(u"bstrValue"), OptionalIn(u"iPrecision", -1)),
    Row<&IOrxDbObj::GetSearchParamNames>(11, u"GetSearchParamNames", In(u"bstrToolTable"),
                                         Out(u"pNames")),
    Row<&IOrxDbObj::GetFieldType>(12, u"GetFieldType", In(u"bstrTolTable"), In(u"bstrParamName"),
                                  Out(u"vtType")),
    Row<&IOrxDbObj::DeleteTool>(13, u"DeleteTool", In(u"bstrToolTable"), In(u"lDbId")),
    Row<&IOrxDbObj::GetToolProps>(14, u"GetToolProps", In(u"bstrToolTable"), In(u"lDbId"),
                                  Out(u"pPropNames"), Out(u"pProps")),
    Row<&IOrxDbObj::IsToolNameUnique>(15, u"IsToolNameUnique", In(u"bstrToolTable"),
                                      In(u"bstrToolName"), Out(u"bUnique")),
    Row<&IOrxDbObj::GetFirstStockMaterial>(16, u"GetFirstStockMaterial", Out(u"pPropNames"),
                                           Out(u"pProps")),
    Row<&IOrxDbObj::GetNextStockMaterial>(17, u"GetNextStockMaterial", Out(u"pProps")),
    Row<&IOrxDbObj::GetRowByMaterialHardness>(18, u"GetRowByMaterialHardness", In(u"bstrTabName"),
                                              In(u"bstrMatName"), In(u"fHardness"),
                                              Out(u"pPropNames"), Out(u"pProps")),
    Row<&IOrxDbObj::GetChosenDrillFeed>(19, u"GetChosenDrillFeed", In(u"fDiameter"),
                                        Out(u"pPropNames"), Out(u"pProps")),
    Row<&IOrxDbObj::GetFactorByTable>(20, u"GetFactorByTable", In(u"bstrTabName"),
                                      In(u"fSearchValue"), Out(u"pPropNames"), Out(u"pProps1"),
                                      Out(u"pProps2")),
    Row<&IOrxDbObj::OpenDefaultDataBase>(21, u"OpenDefaultDataBase"),
    Row<&IOrxDbObj::GetPropsTypes>(22, u"GetPropsTypes", In(u"bstrToolTable"), Out(u"pPropNames"),
                                   Out(u"pTypes")),
    Row<&IOrxDbObj::FilterStrValueForQuery>(23, u"FilterStrValueForQuery", In(u"bstrSrc"),
                                            Out(u"bstrRes")),
    Row<&IOrxDbObj::GetStockMaterialByName>(24, u"GetStockMaterialByName", In(u"bstrName"),
                                            Out(u"pPropNames"), Out(u"pProps")),
    Row<&IOrxDbObj::GetPrimaryOpByTable>(25, u"GetPrimaryOpByTable", Undirected(u"bstrToolTable"),
                                         Undirected(u"bstrPrimaryOp")),
    Row<&IOrxDbObj::GetDefPropsValues>(26, u"GetDefPropsValues", In(u"bstrToolTable"),
                                       Out(u"pPropNames"), Out(u"pProps")),
    Row<&IOrxDbObj::ExportToolRecordsToFile>(27, u"ExportToolRecordsToFile", In(u"bstrToolTable"),
                                             In(u"bstrFileName"), In(u"lFlags")),
    Row<&IOrxDbObj::ImportToolRecordsFromFile>(28, u"ImportToolRecordsFromFile",
                                               In(u"bstrFileName"), In(u"lFlags")),
    Row<&IOrxDbObj::GenerateDefToolName>(29, u"GenerateDefToolName", In(u"bstrToolTable"),
                                         In(u"lId"), Out(u"bstrName")),
    Row<&IOrxDbObj::FindPropByNameInArray>(30, u"FindPropByNameInArray", In(u"bstrPropName"),
                                           In(u"pPropNames"), In(u"pProps"), Out(u"pProp"),
                                           Out(u"lArrInd")),
    Row<&IOrxDbObj::GetToolSubtypePreview>(31, u"GetToolSubtypePreview", In(u"bstrToolTable"),
                                           Out(u"pPreView")),
    Row<&IOrxDbObj::GetTappingHeadsForTap>(32, u"GetTappingHeadsForTap", In(u"bstrUnit"),
                                           In(u"fTapDiam"), Out(u"pNames"), Out(u"pIDs")),
    Row<&IOrxDbObj::IsHiddenProperty>(33, u"IsHiddenProperty", In(u"bstrPropName"),
                                      Out(u"bHidden")),
    Row<&IOrxDbObj::GetSelectedRecordCount>(34, u"GetSelectedRecordCount", In(u"bstrToolTable"),
                                            Out(u"lRecCount")),
    Row<&IOrxDbObj::SetToolTableBookmark>(35, u"SetToolTableBookmark", In(u"bstrToolTable"),
                                          In(u"varBookmark")),
    Row<&IOrxDbObj::GetToolTableBookmark>(36, u"GetToolTableBookmark", In(u"bstrToolTable"),
                                          Out(u"pvarBookmark")),
    Row<&IOrxDbObj::GetPermissibleValues2>(37, u"GetPermissibleValues2", In(u"bstrToolTable"),
                                           In(u"pPropNames"), In(u"pProps"), In(u"bstrParamName"),
                                           Out(u"pArrVal"), Out(u"pArrDispVal")),
    Row<&IOrxDbObj::GenFirstTool>(38, u"GenFirstTool", In(u"bstrToolTable"), In(u"pNames"),
                                  In(u"pProps"), Out(u"pGenNames"), Out(u"pGenProps")),
    Row<&IOrxDbObj::GenNextTool>(39, u"GenNextTool", In(u"bstrToolTable"), Out(u"pGenProps")),
    Row<&IOrxDbObj::GenerateDefToolName2>(40, u"GenerateDefToolName2", Undirected(u"bstrToolTable"),
                                          Undirected(u"pPropNames"), Undirected(u"pProps"),
                                          Undirected(u"bstrName")),
    Row<&IOrxDbObj::GetToolTypesByStoredQuery>(41, u"GetToolTypesByStoredQuery",
                                               In(u"bstrQueryName"), Out(u"pTypes")),
};

constexpr std::array kLibraryMethods = {
    Row<&IOrxDbLibrary::ChangeNumber>(1, u"ChangeNumber", Result(u"pNumber")),
    Row<&IOrxDbLibrary::GetFieldLimits>(2, u"GetFieldLimits", In(u"bstrToolTable"),
                                        In(u"bstrParamName"), Out(u"plLongest"), Out(u"pbRequired"),
                                        Out(u"pLowest"), Out(u"pHighest")),
    Row<&IOrxDbLibrary::LastError>(3, u"LastError", Result(u"pText")),
    Row<&IOrxDbLibrary::AddPermissibleValue>(4, u"AddPermissibleValue", In(u"bstrToolTable"),
                                             In(u"bstrParamName"), In(u"bstrValue")),
    Row<&IOrxDbLibrary::BeginChanges>(5, u"BeginChanges"),
    Row<&IOrxDbLibrary::EndChanges>(6, u"EndChanges"),
    Row<&IOrxDbLibrary::CancelChanges>(7, u"CancelChanges"),
    Row<&IOrxDbLibrary::BackUp>(8, u"BackUp", In(u"bstrNewFile"), In(u"bReplace")),
};

constexpr bool IsSound(const Method& method) {
  bool optional = false;
  return std::ranges::all_of(method.parameters(), [&](const Parameter& parameter) {
    const bool mayBeOmitted = (parameter.flags & PARAMFLAG_FOPT) != 0;
    const bool inOrder = mayBeOmitted || !optional;
    optional = mayBeOmitted;
    return inOrder && parameter.type != VT_EMPTY &&
           (!mayBeOmitted || (parameter.type == VT_I4 && !parameter.byReference)) &&
           (parameter.byReference || !(parameter.flags & PARAMFLAG_FOUT)) &&
           (!(parameter.flags & PARAMFLAG_FRETVAL) || &parameter == &method.parameters().back());
  });
}

constexpr bool AreSound(std::span<const Method> methods) {
  DISPID id = 0;
  return std::ranges::all_of(
      methods, [&](const Method& method) { return method.id == ++id && IsSound(method); });
}

static_assert(kDatabaseMethods.size() == 41 && AreSound(kDatabaseMethods));
static_assert(AreSound(kLibraryMethods));

DISPID FindArgument(const Method& method, std::u16string_view name) noexcept {
  const auto arguments = method.arguments();
  const auto found = std::ranges::find_if(
      arguments, [&](const Parameter& parameter) { return EqualNoCase(parameter.name, name); });
  return found == arguments.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - arguments.begin());
}

}  // namespace

constinit const DescribedClass kOrxDbObj = {
    .type = {CLSID_OrxDbObj, u"OrxDbObj", u"OrxDbObj Class"},
    .interfaceType = {IID_IOrxDbObj, u"IOrxDbObj", u"IOrxDbObj Interface"},
    .progId = kOrxDbProgId,
    .methods = kDatabaseMethods};

constinit const DescribedClass kOrxDbLibrary = {
    .type = {CLSID_OrxDbLibrary, u"OrxDbLibrary", u"OrxDbLibrary Class"},
    .interfaceType = {IID_IOrxDbLibrary, u"IOrxDbLibrary", u"IOrxDbLibrary Interface"},
    .progId = kOrxDbLibraryProgId,
    .methods = kLibraryMethods};

const Method* DescribedClass::Find(DISPID id) const noexcept {
  return id >= 1 && static_cast<std::size_t>(id) <= methods.size()
             ? &methods[static_cast<std::size_t>(id) - 1]
             : nullptr;
}

const Method* DescribedClass::Find(std::u16string_view name) const noexcept {
  const auto found = std::ranges::find_if(
      methods, [&](const Method& method) { return EqualNoCase(method.name, name); });
  return found == methods.end() ? nullptr : &*found;
}

HRESULT DescribedClass::FindIdsOfNames(const LPOLESTR* names, UINT count,
                                       DISPID* ids) const noexcept {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  const Method* const method = names[0] ? Find(std::u16string_view(names[0])) : nullptr;
  ids[0] = method ? method->id : DISPID_UNKNOWN;
  for (UINT i = 1; i < count; ++i) {
    ids[i] = method && names[i] ? FindArgument(*method, names[i]) : DISPID_UNKNOWN;
  }
  return std::find(ids, ids + count, DISPID_UNKNOWN) == ids + count ? S_OK : DISP_E_UNKNOWNNAME;
}

}  // namespace orxdb
