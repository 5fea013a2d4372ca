# What a Windows program carries beside its code: the manifest (UTF-8 as the process's code page, one
# scale per monitor, current controls, long paths), the version and the icon.

set(VELDARA_WINDOWS_PACKAGING "${PROJECT_SOURCE_DIR}/packaging/windows")

# veldara_windows_resources(TARGET DESCRIPTION TEXT [TOOLKIT] [ICON])
# TOOLKIT adds the cursors and bitmaps of the window toolkit.
function(veldara_windows_resources target)
  cmake_parse_arguments(ARG "TOOLKIT;ICON" "DESCRIPTION" "" ${ARGN})
  set(VELDARA_PROGRAM "${target}")
  set(VELDARA_DESCRIPTION "${ARG_DESCRIPTION}")
  set(VELDARA_MANIFEST "${CMAKE_CURRENT_BINARY_DIR}/${target}.manifest")
  configure_file("${VELDARA_WINDOWS_PACKAGING}/program.manifest.in" "${VELDARA_MANIFEST}" @ONLY)
  set(VELDARA_ICON_LINE "")
  set(VELDARA_TOOLKIT_LINE "")
  set(needed "${VELDARA_MANIFEST}")
  if(ARG_ICON)
    set(icon "${PROJECT_SOURCE_DIR}/art/veldara.ico")
    # The first icon by name is the one that Explorer shows.
    set(VELDARA_ICON_LINE "appicon ICON \"${icon}\"")
    list(APPEND needed "${icon}")
  endif()
  if(ARG_TOOLKIT)
    set(VELDARA_TOOLKIT_LINE "#define wxUSE_NO_MANIFEST 1\n#include \"wx/msw/wx.rc\"")
  endif()
  set(resources "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
  configure_file("${VELDARA_WINDOWS_PACKAGING}/program.rc.in" "${resources}" @ONLY)
  set_source_files_properties("${resources}" PROPERTIES OBJECT_DEPENDS "${needed}")
  target_sources(${target} PRIVATE "${resources}")
endfunction()
