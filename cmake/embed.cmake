# Run with cmake -P: puts files inside a program. OUT: the C++ source to write; HEADER: what it
# includes; NAMESPACE: where the texts stand; FILES: "name=path|path;name=path", each a
# std::string_view over the paths one after the other. A last line that names the source map of a
# library is left out: a browser's tools would ask for it.
set(content "// Made from the files that it names; do not edit.\n#include \"${HEADER}\"\n\n")
string(APPEND content "#include <string_view>\n\nnamespace ${NAMESPACE} {\n\n")
foreach(entry IN LISTS FILES)
  string(REGEX MATCH "^([^=]+)=(.*)$" entry "${entry}")
  set(name ${CMAKE_MATCH_1})
  string(REPLACE "|" ";" paths "${CMAKE_MATCH_2}")
  set(bytes "")
  foreach(path IN LISTS paths)
    file(READ ${path} hex HEX)
    # "//# sourceMappingURL=" and "/*# sourceMappingURL="
    string(REGEX REPLACE "2f(2f|2a)2320736f757263654d617070696e6755524c3d.*$" "" hex "${hex}")
    string(APPEND bytes "${hex}")
  endforeach()
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  string(APPEND content "static constexpr unsigned char ${name}Bytes[] = {${bytes}};\n")
  string(APPEND content "const std::string_view ${name}(\n"
    "    reinterpret_cast<const char*>(${name}Bytes), sizeof ${name}Bytes);\n\n")
endforeach()
string(APPEND content "}  // namespace ${NAMESPACE}\n")
file(WRITE ${OUT} "${content}")
