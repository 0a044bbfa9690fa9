// Late-bound calls whose method and arguments come from a stream of numbers.
#pragma once

#include <deque>
#include <functional>
#include <set>

#include "tests/dispatch/LateCall.h"

namespace orxdb::test {

class RandomCalls {
 public:
  /// `next` gives the numbers that everything is chosen by.
  RandomCalls(IDispatch& object, std::function<unsigned()> next);
  /// One call; its status, a standard one.
  HRESULT Call();

 private:
  int Below(int limit) { return static_cast<int>(m_next() % static_cast<unsigned>(limit)); }
  VARIANT Make(bool overwritten);
  VARIANT Broken();
  Variant Text();
  Variant Number();
  Variant Value(int depth);
  template <typename Maker>
  Variant Array(VARTYPE type, Maker make);
  Variant OddArray();

  IDispatch& m_object;
  std::function<unsigned()> m_next;
  /// Identifier and position of every parameter through which a method returns a variant.
  std::set<std::pair<DISPID, DISPID>> m_returned;
  std::deque<Variant> m_values;  ///< what references lead to, until the call is over
  std::deque<VARIANT> m_references;
};

}  // namespace orxdb::test
