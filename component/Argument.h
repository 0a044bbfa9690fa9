// Arguments of late-bound calls.
#pragma once

#include "component/MethodTable.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// One argument on its way from a late-bound host to a method's parameter and back.
///
/// - Values are converted to the parameter's type as VariantChangeType does.
/// - A pointer to a number, flag or string takes a reference to that type, to another type that
///   converts to it (converted before and again after the call), to a variant (which then holds
///   the parameter's type), or a value, whose result is lost.
/// - A pointer to a variant takes a reference to one, or the argument itself, where the host then
///   finds the result. For an out-parameter nothing else will do; an in-parameter also takes a
///   reference to any type and sees the value, arrays being the host's own and not a copy.
/// - What the method leaves alone stays as the host passed it. A string that it replaces is freed.
///
/// Holds pointers into itself: stays where it is between Bind and WriteBack.
class Argument {
 public:
  Argument() noexcept = default;
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;
  ~Argument() = default;

  /// Prepares the argument; `given` is null for one that is missing. Missing ones, and those that
  /// say so by the status DISP_E_PARAMNOTFOUND, take their default or give
  /// DISP_E_PARAMNOTOPTIONAL. DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW for values that do not
  /// convert, DISP_E_BADVARTYPE for impossible types, E_INVALIDARG for null references.
  HRESULT Bind(const Parameter& parameter, VARIANTARG* given);

  /// Prepares the place of a method's result.
  HRESULT BindResult(const Parameter& parameter) noexcept;

  /// Hands the result out; `result` must be empty.
  void TakeResult(VARIANT& result) noexcept { result = m_value.detach(); }

  /// What Method::call takes.
  void* place() const noexcept { return m_place; }

  /// Writes a converted result through; fails when it does not fit into the host's type.
  HRESULT WriteBack();

 private:
  HRESULT BindScalarReference(const Parameter& parameter, VARIANTARG& given);
  HRESULT BindVariantReference(const Parameter& parameter, VARIANTARG& given);
  HRESULT Own(HRESULT status) noexcept;

  void* m_place = nullptr;
  Variant m_value;
  VARIANT m_view{};             ///< shows an array of the host's; not owned
  VARIANT* m_target = nullptr;  ///< the reference that takes the result in its own type
};

}  // namespace orxdb
