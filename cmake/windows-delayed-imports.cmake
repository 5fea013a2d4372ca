# Windows looks beside a program for the libraries that it is linked with, before any code of the program
# runs. The ones named in KnownDLLs are exempt, and common controls by the manifest; all others are
# loaded at their first use, when the program has said that libraries come from the system's folder alone
# (windows_library_search.cpp). For each of those, an import library is made from the compiler's own that
# does so; its folder is searched first.

set(VELDARA_DELAYED_IMPORTS "${PROJECT_BINARY_DIR}/delayed_imports")
set(veldara_delayed_libraries msimg32 oleacc uxtheme version winmm winspool)

find_program(VELDARA_DLLTOOL "${VELDARA_MINGW}-dlltool" REQUIRED)
execute_process(
  COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=libversion.a
  OUTPUT_VARIABLE found
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(import_libraries "${found}" DIRECTORY)

foreach(library IN LISTS veldara_delayed_libraries)
  set(plain "${import_libraries}/lib${library}.a")
  set(definition "${VELDARA_DELAYED_IMPORTS}/${library}.def")
  set(delayed "${VELDARA_DELAYED_IMPORTS}/lib${library}.a")
  if(EXISTS "${delayed}" AND "${delayed}" IS_NEWER_THAN "${plain}" AND "${delayed}" IS_NEWER_THAN
                                                                       "${CMAKE_CURRENT_LIST_FILE}")
    continue()
  endif()
  execute_process(
    COMMAND "${VELDARA_DLLTOOL}" --identify "${plain}"
    OUTPUT_VARIABLE name
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  execute_process(
    COMMAND "${CMAKE_NM}" --extern-only --defined-only "${plain}"
    OUTPUT_VARIABLE symbols
    ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL " T [^\n]+" functions "${symbols}")
  list(TRANSFORM functions REPLACE "^ T " "")
  list(SORT functions)
  list(REMOVE_DUPLICATES functions)
  list(JOIN functions "\n" exports)
  file(WRITE "${definition}" "LIBRARY ${name}\nEXPORTS\n${exports}\n")
  execute_process(COMMAND "${VELDARA_DLLTOOL}" --machine i386:x86-64 --input-def "${definition}" --dllname "${name}"
                          --output-delaylib "${delayed}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# veldara_load_from_system_only(TARGET)
function(veldara_load_from_system_only target)
  target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/windows_library_search.cpp")
  target_link_directories(${target} BEFORE PRIVATE "${VELDARA_DELAYED_IMPORTS}")
endfunction()
