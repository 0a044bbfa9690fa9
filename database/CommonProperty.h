#pragma once

#include <memory>
#include <vector>

/// A property object of a tool table; what it holds is up to its kind.
class CCommonProperty {
 public:
  CCommonProperty() = default;
  CCommonProperty(const CCommonProperty&) = delete;
  CCommonProperty& operator=(const CCommonProperty&) = delete;
  virtual ~CCommonProperty() = default;
};

/// Property objects, shared by the copies of the record that lists them.
using CPropertyList = std::vector<std::shared_ptr<CCommonProperty>>;

/// Lets go of every object of the list and empties it.
inline void DeleteAllProps(CPropertyList& properties) {
  properties.clear();
}
