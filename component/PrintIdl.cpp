// Prints the component's type library in the interface description language, for tools that read
// it, from the table by which late-bound calls are made.
#include <algorithm>
#include <iostream>
#include <iterator>
#include <string>
#include <utility>

#include "component/MethodTable.h"
#include "platform/automation/Ascii.h"
#include "platform/automation/ClassObject.h"

namespace orxdb {
namespace {

constexpr std::size_t kWidth = 100;

/// The attributes of a type: its identifier, `marks`, its help.
std::string Attributes(const DescribedType& type, std::string_view indent, std::string_view marks) {
  OLECHAR guid[39];
  StringFromGUID2(type.guid, guid, std::size(guid));
  const std::string uuid = ToAscii(std::u16string_view(guid + 1, 36));
  std::string text = std::string(indent) + "[uuid(" + uuid + "), ";
  text.append(marks).append("helpstring(\"" + ToAscii(type.help) + "\")]\n");
  return text;
}

std::string Typed(const Parameter& parameter) {
  constexpr std::pair<VARTYPE, std::string_view> kNames[] = {
      {VT_BSTR, "BSTR"}, {VT_VARIANT, "VARIANT"},    {VT_I4, "long"},
      {VT_R8, "double"}, {VT_UI2, "unsigned short"}, {VT_BOOL, "VARIANT_BOOL"}};
  const auto* const found =
      std::ranges::find(kNames, parameter.type, [](const auto& entry) { return entry.first; });
  return std::string(found->second) + (parameter.byReference ? " *" : " ") +
         ToAscii(parameter.name);
}

std::string Declared(const Parameter& parameter) {
  const std::string value = "defaultvalue(" + std::to_string(parameter.defaultValue) + ")";
  std::string marks;
  for (const auto& [flag, word] : {std::pair<USHORT, std::string_view>(PARAMFLAG_FIN, "in"),
                                   {PARAMFLAG_FOUT, "out"},
                                   {PARAMFLAG_FRETVAL, "retval"},
                                   {PARAMFLAG_FOPT, "optional"},
                                   {PARAMFLAG_FHASDEFAULT, value}}) {
    if (parameter.flags & flag) marks.append(marks.empty() ? "[" : ", ").append(word);
  }
  return (marks.empty() ? marks : marks + "] ") + Typed(parameter);
}

std::string Declared(const Method& method) {
  const std::string name = ToAscii(method.name);
  std::string text = "    [id(" + std::to_string(method.id) + "), helpstring(\"" +
                     ToAscii(HelpOf(method)) + "\")]\n";
  std::string line = "      HRESULT " + name + "(";
  for (const Parameter& parameter : method.parameters()) {
    const bool isLast = &parameter == &method.parameters().back();
    const std::string declared = Declared(parameter) + (isLast ? "" : ", ");
    if (line.size() + declared.size() > kWidth) {
      text += line.substr(0, line.size() - 1) + "\n";
      line = std::string(10, ' ');
    }
    line += declared;
  }
  return text + line + ");\n";
}

std::string Declared(const DescribedClass& described) {
  const std::string interfaceName = ToAscii(described.interfaceType.name);
  std::string text = Attributes(described.interfaceType, "  ",
                                "object, dual, nonextensible, pointer_default(unique), ");
  text += "  interface " + interfaceName + " : IDispatch\n  {\n";
  for (const Method& method : described.methods) text += Declared(method);
  text += "  };\n\n" + Attributes(described.type, "  ", "");
  return text + "  coclass " + ToAscii(described.type.name) + "\n  {\n    [default] interface " +
         interfaceName + ";\n  };\n";
}

std::string TheLibrary() {
  std::string text = "import \"oaidl.idl\";\n\n";
  text += Attributes(
      kDescribedLibrary, "",
      "version(" + std::to_string(kLibraryMajor) + "." + std::to_string(kLibraryMinor) + "), ");
  text += "library " + ToAscii(kDescribedLibrary.name) + "\n{\n  importlib(\"stdole2.tlb\");\n\n";
  std::string separator;
  for (const DescribedClass* described : kDescribedClasses) {
    text += std::exchange(separator, "\n") + Declared(*described);
  }
  return text + "};\n";
}

}  // namespace
}  // namespace orxdb

int main() {
  std::cout << orxdb::TheLibrary() << std::flush;
  return std::cout ? 0 : 1;
}
