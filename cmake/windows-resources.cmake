# What a Windows program carries beside its code: the manifest (UTF-8 as the process's code page, one
# scale per monitor, current controls, long paths), the version and the icon.

set(VELDARA_WINDOWS_PACKAGING "${PROJECT_SOURCE_DIR}/packaging/windows")

# The icon is drawn once as vectors and rendered in the sizes that Windows asks for.
function(veldara_windows_icon result)
  set(drawing "${PROJECT_SOURCE_DIR}/art/icon.svg")
  set(icon "${PROJECT_BINARY_DIR}/veldara.ico")
  if(NOT EXISTS "${drawing}")
    set(${result} "" PARENT_SCOPE)
    return()
  endif()
  if(NOT TARGET veldara_icon)
    find_program(RSVG_CONVERT rsvg-convert REQUIRED)
    find_program(ICOTOOL icotool REQUIRED)
    set(sheets)
    set(renderings)
    foreach(size 16 24 32 48 64 128 256)
      set(sheet "${PROJECT_BINARY_DIR}/icon-${size}.png")
      list(APPEND renderings COMMAND "${RSVG_CONVERT}" -w ${size} -h ${size} -o "${sheet}" "${drawing}")
      list(APPEND sheets "${sheet}")
    endforeach()
    add_custom_command(
      OUTPUT "${icon}"
      ${renderings}
      COMMAND "${ICOTOOL}" -c -o "${icon}" ${sheets}
      DEPENDS "${drawing}"
      COMMENT "Rendering the icon")
    add_custom_target(veldara_icon DEPENDS "${icon}")
  endif()
  set(${result} "${icon}" PARENT_SCOPE)
endfunction()

# veldara_windows_resources(TARGET DESCRIPTION TEXT [TOOLKIT] [ICON])
# TOOLKIT adds the cursors and bitmaps of the window toolkit.
function(veldara_windows_resources target)
  cmake_parse_arguments(ARG "TOOLKIT;ICON" "DESCRIPTION" "" ${ARGN})
  set(VELDARA_PROGRAM "${target}")
  set(VELDARA_DESCRIPTION "${ARG_DESCRIPTION}")
  set(VELDARA_MANIFEST "${VELDARA_WINDOWS_PACKAGING}/program.manifest")
  set(VELDARA_ICON_LINE "")
  set(VELDARA_TOOLKIT_LINE "")
  set(needed "${VELDARA_MANIFEST}")
  if(ARG_ICON)
    veldara_windows_icon(icon)
    if(icon)
      # The first icon by name is the one that Explorer shows.
      set(VELDARA_ICON_LINE "appicon ICON \"${icon}\"")
      list(APPEND needed "${icon}")
      add_dependencies(${target} veldara_icon)
    endif()
  endif()
  if(ARG_TOOLKIT)
    set(VELDARA_TOOLKIT_LINE "#define wxUSE_NO_MANIFEST 1\n#define wxUSE_RC_MANIFEST 0\n#include \"wx/msw/wx.rc\"")
  endif()
  set(resources "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
  configure_file("${VELDARA_WINDOWS_PACKAGING}/program.rc.in" "${resources}" @ONLY)
  set_source_files_properties("${resources}" PROPERTIES OBJECT_DEPENDS "${needed}")
  target_sources(${target} PRIVATE "${resources}")
endfunction()
