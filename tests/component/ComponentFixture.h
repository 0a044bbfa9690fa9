// A small seeded database and the component as a host sees it: loaded by path, made by its class
// factory, used through its interface.
#pragma once

#include <algorithm>
#include <array>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "interface/IOrxDbLibrary.h"
#include "interface/IOrxDbObj.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"
#include "tests/support/LeakBalance.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/TemporaryFolder.h"

namespace orxdb::test {

using Db = IOrxDbObj;
using Lib = IOrxDbLibrary;

/// The SQL of a file beside this one, by its name without ".sql".
std::string Script(const std::string& name);

/// Makes a database by Seed.sql and then runs more SQL on it.
void SeedDatabase(const std::filesystem::path& file, const std::string& more = {});

/// One record by field name, every value as text for queries.
using Record = std::map<std::string, std::string>;

/// A pair of property arrays as hosts make them.
class Properties {
 public:
  Properties& Add(std::string_view name, Variant value) {
    m_properties.emplace_back(name, std::move(value));
    return *this;
  }
  Properties& Add(std::string_view name, std::string_view text) {
    return Add(name, Variant::FromBstr(WidenToBstr(text)));
  }
  Properties& Add(std::string_view name, double value) { return Add(name, Variant::FromR8(value)); }
  /// The arrays, from these lower bounds; they live as long as this.
  VARIANT* Names(LONG lowerBound = 0) {
    return Make(m_names, VT_BSTR, lowerBound,
                [](const auto& property) { return WidenToBstr(property.first).detach(); });
  }
  VARIANT* Values(LONG lowerBound = 0) {
    return Make(m_values, VT_VARIANT, lowerBound,
                [](const auto& property) { return property.second.Copy().detach(); });
  }

 private:
  template <typename Convert>
  VARIANT* Make(Variant& result, VARTYPE type, LONG lowerBound, Convert convert) {
    SafeArray array;
    array.attach(SafeArrayCreateVector(type, lowerBound, static_cast<ULONG>(m_properties.size())));
    using Element = decltype(convert(m_properties.front()));
    std::ranges::transform(m_properties, ArrayAccess<Element>(array.get()).begin(), convert);
    result = Variant::FromArray(type, std::move(array));
    return result.ptr();
  }

  std::vector<std::pair<std::string, Variant>> m_properties;
  Variant m_names;
  Variant m_values;
};

/// A value as text: "nothing", "null", or what the runtime makes of it; elements parted by "|".
std::string Show(const VARIANT& value);

/// Takes this thread's error information away and tells it as "source: description"; empty when
/// there is none.
std::string TakeError();

/// The error information of failing methods of the (registered) classes.
inline constexpr const char* kReportedError = "ORXDB.OrxDbObj.1: ORX DB Error";
inline constexpr const char* kReportedLibraryError = "ORXDB.OrxDbLibrary.1: ORX DB Error";

/// Whether a library is in the process.
bool IsLoaded(const std::filesystem::path& library);

/// An argument as methods take it: strings are made of narrow text.
template <typename Parameter, typename Given>
auto Argument(const Given& given) {
  if constexpr (std::is_same_v<Parameter, BSTR> && !std::is_convertible_v<Given, Parameter>) {
    return WidenToBstr(given);
  } else {
    return static_cast<Parameter>(given);
  }
}
inline BSTR Passed(const Bstr& text) {
  return text.get();
}
template <typename Parameter>
Parameter Passed(Parameter argument) {
  return argument;
}
/// The place for a result in a variant; numbers are -99 before.
template <typename T>
T* Place(Variant& result) {
  if constexpr (std::is_same_v<T, VARIANT>) {
    return result.ptr();
  } else {
    const bool text = std::is_same_v<T, BSTR>;
    result = text ? Variant::FromBstr({}) : Variant::FromI4(-99);
    if (sizeof(T) == sizeof(SHORT)) result.ptr()->vt = VT_I2;
    if (std::is_same_v<T, DOUBLE>) result = Variant::FromR8(-99);
    return reinterpret_cast<T*>(&result.ptr()->llVal);
  }
}

class ComponentTest : public LeakBalance {
 protected:
  void SetUp() override;
  /// Releases the object and shows that every string and array has been freed.
  void TearDown() override;

  static ComPtr<IClassFactory> Factory(REFCLSID clsid = CLSID_OrxDbObj);
  static ComPtr<IOrxDbObj> NewObject() { return NewObject<IOrxDbObj>(CLSID_OrxDbObj); }
  template <typename Interface>
  static ComPtr<Interface> NewObject(REFCLSID clsid) {
    ComPtr<Interface> object;
    EXPECT_EQ(Factory(clsid)->CreateInstance(nullptr, Interface::iid, object.putVoid()), S_OK);
    return object;
  }

  /// A new object on a new database.
  void OpenSeeded(const std::string& more = {});
  /// A new object on what is in the file.
  void Reopen();
  static HRESULT SetMdbFile(IOrxDbObj& object, const std::filesystem::path& file);
  std::string Sql(const std::string& sql) { return QueryRows(m_file, sql); }

  /// Calls a method with its first arguments, in which texts are narrow. What comes out of the
  /// others is shown, parted by "/"; "fails" stands for a failure with its report.
  template <typename... Parameters, typename... Given>
  std::string Gives(HRESULT (STDMETHODCALLTYPE Db::*method)(Parameters...), const Given&... given) {
    return Gives(*m_db, kReportedError, method, given...);
  }
  template <typename... Parameters, typename... Given>
  std::string Gives(HRESULT (STDMETHODCALLTYPE Lib::*method)(Parameters...),
                    const Given&... given) {
    const auto library = NewObject<Lib>(CLSID_OrxDbLibrary);
    return Gives(*library, kReportedLibraryError, method, given...);
  }
  template <typename Interface, typename... Parameters, typename... Given>
  static std::string Gives(Interface& object, const char* error,
                           HRESULT (STDMETHODCALLTYPE Interface::*method)(Parameters...),
                           const Given&... given) {
    using All = std::tuple<Parameters...>;
    return [&]<std::size_t... in, std::size_t... out>(std::index_sequence<in...>,
                                                      std::index_sequence<out...>) {
      const std::tuple arguments{Argument<std::tuple_element_t<in, All>>(given)...};
      std::array<Variant, sizeof...(out)> results{};
      TakeError();
      return Told(error,
                  (object.*method)(
                      Passed(std::get<in>(arguments))...,
                      Place<std::remove_pointer_t<std::tuple_element_t<sizeof...(in) + out, All>>>(
                          results[out])...),
                  results);
    }
    (std::index_sequence_for<Given...>(),
     std::make_index_sequence<sizeof...(Parameters) - sizeof...(Given)>());
  }

  HRESULT SetFilter(std::string_view table, std::string_view where, std::string_view order = {}) {
    return m_db->SetTabFilter(WidenToBstr(table).get(), WidenToBstr(where).get(),
                              WidenToBstr(order).get());
  }
  /// The first or next record; empty at the end. Failures are test failures.
  Record First(std::string_view table);
  Record Next(std::string_view table);
  /// The names of all tools that a walk stops at.
  std::vector<std::string> Walk(std::string_view table);
  LONG Count(std::string_view table) {
    return std::stoi(Gives(&Db::GetSelectedRecordCount, table));
  }
  /// The tool with an identifier; empty when there is none. Failures are test failures.
  Record Tool(std::string_view table, LONG id);
  /// Status of adding; the identifier goes to `m_id`.
  HRESULT Add(std::string_view table, Properties& tool) {
    return m_db->AddNewRecord(WidenToBstr(table).get(), tool.Names(), tool.Values(), &m_id);
  }
  HRESULT Add(std::string_view table, Properties&& tool) { return Add(table, tool); }
  HRESULT Set(std::string_view table, LONG id, Properties& tool) {
    return m_db->SetToolProps(WidenToBstr(table).get(), id, tool.Names(), tool.Values());
  }

  TemporaryFolder m_folder;
  std::filesystem::path m_file = m_folder / "tools.mdb";
  ComPtr<IOrxDbObj> m_db;
  LONG m_id = -1;  ///< of the last tool added

 private:
  static std::string Told(const char* error, HRESULT status, std::span<const Variant> results);
  Record ToRecord(const Variant& names, const Variant& values);
};

}  // namespace orxdb::test
