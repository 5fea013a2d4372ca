# What every target of the project is built with, and the three functions that declare targets.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # What a file depends on is taken from the compiler's own list: a first build does not run the preprocessor
  # twice. A precompiled header is found again although its files have the time of their checkout.
  set(launcher env CCACHE_DEPEND=1 CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
               "${CCACHE_PROGRAM}")
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

add_library(veldara_options INTERFACE)
target_include_directories(veldara_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(
  veldara_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Werror
            -fstack-protector-strong)
target_compile_definitions(
  veldara_options
  INTERFACE VELDARA_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
            VELDARA_VERSION_MINOR=${PROJECT_VERSION_MINOR}
            VELDARA_VERSION_REVISION=${PROJECT_VERSION_PATCH})

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This compiler's library warns of overlaps that cannot be when a literal meets a std::string.
  target_compile_options(veldara_options INTERFACE -Wno-restrict)
endif()

find_package(Threads REQUIRED)
target_link_libraries(veldara_options INTERFACE Threads::Threads)

if(VELDARA_SANITIZE)
  target_compile_options(veldara_options INTERFACE -fsanitize=${VELDARA_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
  target_link_options(veldara_options INTERFACE -fsanitize=${VELDARA_SANITIZE})
elseif(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  target_compile_options(veldara_options INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()
if(WIN32)
  target_compile_definitions(veldara_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
  target_link_options(
    veldara_options
    INTERFACE
    -static
    -fstack-protector-strong
    -Wl,--dynamicbase
    -Wl,--high-entropy-va
    -Wl,--nxcompat
    -Wl,--no-insert-timestamp)
else()
  target_compile_options(veldara_options INTERFACE -fcf-protection=full -fstack-clash-protection)
  target_link_options(veldara_options INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
include(CheckPIESupported)
check_pie_supported()
if(WIN32)
  include(windows-resources)
  include(windows-delayed-imports)
endif()

# veldara_library(NAME [SOURCES a.cpp ...] [USES lib ...] [PRIVATE_USES lib ...])
# One room of the house: a static library that sees only what it names in USES. Without SOURCES it
# is made of every source file in its folder.
function(veldara_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES;PRIVATE_USES" ${ARGN})
  if(NOT ARG_SOURCES)
    file(GLOB ARG_SOURCES CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  endif()
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(
    ${name}
    PUBLIC ${ARG_USES}
    PRIVATE veldara_options ${ARG_PRIVATE_USES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
endfunction()

# What the sanitizers need to know, in every program that is built with it.
function(veldara_sanitizer_defaults name)
  if(VELDARA_SANITIZE MATCHES "address|thread")
    target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/sanitizer_defaults.cpp")
  endif()
endfunction()

# veldara_program(NAME [WIN32] SOURCES a.cpp ... USES lib ...)
function(veldara_program name)
  cmake_parse_arguments(ARG "WIN32" "" "SOURCES;USES" ${ARGN})
  if(ARG_WIN32)
    add_executable(${name} WIN32 ${ARG_SOURCES})
  else()
    add_executable(${name} ${ARG_SOURCES})
  endif()
  target_link_libraries(${name} PRIVATE veldara_options ${ARG_USES})
  veldara_sanitizer_defaults(${name})
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  set_property(GLOBAL APPEND PROPERTY VELDARA_PROGRAMS ${name}) # what the hardening test looks at
  if(WIN32)
    set(toolkit "")
    if(ARG_WIN32)
      set(toolkit TOOLKIT)
    endif()
    veldara_load_from_system_only(${name})
    veldara_windows_resources(${name} DESCRIPTION "${PROJECT_DESCRIPTION}" ICON ${toolkit})
  endif()
endfunction()
