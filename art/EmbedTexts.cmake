# Writes a C++ header with the texts of files as constants.
# cmake -D OUTPUT=texts.h -D FILES=a.svg|b.svg -P EmbedTexts.cmake
# The constant of loading1.svg is called loading1Text, that of arrow_pad.svg arrow_padText.
string(REPLACE "|" ";" files "${FILES}")
set(header "// Made by the build from the files in art/.\n#pragma once\n\n#include <string_view>\n\n")
string(APPEND header "namespace veldara::texts {\n")
foreach(file ${files})
  get_filename_component(name "${file}" NAME_WE)
  file(READ "${file}" text)
  string(APPEND header "\ninline constexpr std::string_view ${name}Text = R\"svg(${text})svg\";\n")
endforeach()
string(APPEND header "\n} // namespace veldara::texts\n")
file(WRITE "${OUTPUT}" "${header}")
