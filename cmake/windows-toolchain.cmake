# Cross-builds for 64-bit Windows with mingw-w64 and the static libraries of windows-dependencies.sh.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(VELDARA_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER "${VELDARA_MINGW}-gcc-posix")
set(CMAKE_CXX_COMPILER "${VELDARA_MINGW}-g++-posix")
set(CMAKE_RC_COMPILER "${VELDARA_MINGW}-windres")

# Answers at once when the libraries are built; the first time it builds them.
if(NOT DEFINED ENV{VELDARA_WINDOWS_LIBRARIES})
  execute_process(
    COMMAND "${CMAKE_CURRENT_LIST_DIR}/windows-dependencies.sh"
    OUTPUT_VARIABLE veldara_libraries
    OUTPUT_STRIP_TRAILING_WHITESPACE
    RESULT_VARIABLE veldara_libraries_status)
  if(NOT veldara_libraries_status EQUAL 0)
    message(FATAL_ERROR "The libraries for Windows could not be built.")
  endif()
  # The compiler checks of the same run read this file again.
  set(ENV{VELDARA_WINDOWS_LIBRARIES} "${veldara_libraries}")
endif()
set(VELDARA_WINDOWS_LIBRARIES "$ENV{VELDARA_WINDOWS_LIBRARIES}")

# A build tree remembers where it found its libraries, and would go on looking there after an update.
get_cmake_property(remembered CACHE_VARIABLES)
foreach(name IN LISTS remembered)
  string(FIND "$CACHE{${name}}" "${VELDARA_WINDOWS_LIBRARIES}" current)
  if(current EQUAL -1 AND "$CACHE{${name}}" MATCHES "/veldara/windows-[0-9a-f]+")
    unset(${name} CACHE)
  endif()
endforeach()

set(CMAKE_FIND_ROOT_PATH "${VELDARA_WINDOWS_LIBRARIES}" "/usr/${VELDARA_MINGW}")
set(CMAKE_PREFIX_PATH "${VELDARA_WINDOWS_LIBRARIES}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${VELDARA_WINDOWS_LIBRARIES}/lib/pkgconfig")

# The same arithmetic as on Linux, where no multiplication and addition are joined into one step
# either: tiles of both systems are the same bytes.
# The programs do not tell in whose home folder they were built.
set(veldara_flags "-ffp-contract=off -ffunction-sections -fdata-sections")
string(APPEND veldara_flags " -ffile-prefix-map=${VELDARA_WINDOWS_LIBRARIES}=.")
set(CMAKE_C_FLAGS_INIT "${veldara_flags}")
set(CMAKE_CXX_FLAGS_INIT "${veldara_flags}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--gc-sections")

set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/windows-run.sh" "${CMAKE_BINARY_DIR}/wineprefix")
