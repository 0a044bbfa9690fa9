// Late-bound calls whose method and arguments come from a stream of numbers.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <vector>

#include "tests/dispatch/LateCall.h"

namespace orxdb::test {

class RandomCalls {
 public:
  /// `next` gives the numbers that everything is chosen by.
  RandomCalls(IDispatch& object, std::function<unsigned()> next);
  /// One call; its status, a standard one.
  HRESULT Call();

 private:
  struct Parameter {
    VARTYPE type = VT_VARIANT;
    bool returned = false;  ///< a variant that the method overwrites
  };

  int Below(int limit) { return static_cast<int>(m_next() % static_cast<unsigned>(limit)); }
  VARIANT Make(const Parameter& parameter);
  VARIANT Broken();
  Variant Text();
  Variant Number();
  Variant Value(int depth);
  template <typename Maker>
  Variant Array(VARTYPE type, Maker make);
  Variant OddArray();

  IDispatch& m_object;
  std::function<unsigned()> m_next;
  std::map<DISPID, std::vector<Parameter>> m_parameters;
  std::deque<Variant> m_values;  ///< what references lead to, until the call is over
  std::deque<VARIANT> m_references;
};

}  // namespace orxdb::test
