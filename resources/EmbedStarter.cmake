# Writes a C++ source that holds the files of resources/starter.
#   cmake -D SCRIPTS=... -D PICTURES=... -D OUTPUT=... -P EmbedStarter.cmake
set(functions "")
foreach(kind Scripts Pictures)
  string(TOUPPER ${kind} list)
  set(bytes "")
  set(table "")
  foreach(file IN LISTS ${list})
    get_filename_component(name "${file}" NAME_WE)
    file(READ "${file}" hex HEX)
    string(REGEX REPLACE "(..)" "0x\\1," hex "${hex}")
    string(MAKE_C_IDENTIFIER "${kind}_${name}" variable)
    string(APPEND bytes "constexpr unsigned char ${variable}[] = {${hex}};\n")
    string(APPEND table "    {\"${name}\", Text(${variable})},\n")
  endforeach()
  list(LENGTH ${list} count)
  string(APPEND functions "
namespace {
${bytes}
const std::array<StarterFile, ${count}> k${kind} = {{
${table}}};
}  // namespace

std::span<const StarterFile> Starter${kind}() { return k${kind}; }
")
endforeach()

file(WRITE "${OUTPUT}" "#include <array>

#include \"resources/StarterFiles.h\"

namespace orxdb {
namespace {
template <std::size_t Size>
std::string_view Text(const unsigned char (&bytes)[Size]) {
  return {reinterpret_cast<const char*>(bytes), Size};
}
}  // namespace
${functions}
}  // namespace orxdb
")
