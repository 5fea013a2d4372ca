# Joins the licence notices of everything that is linked into the Windows programs.
#
#   cmake -D FOLDER=folder -D RESULT=file -P licences.cmake
file(GLOB notices "${FOLDER}/*.txt")
list(SORT notices)
if(NOT notices)
  message(FATAL_ERROR "There are no licence notices in ${FOLDER}")
endif()
file(WRITE "${RESULT}" "Veldara contains the work of others, under these licences.\r\n")
foreach(notice ${notices})
  get_filename_component(name "${notice}" NAME_WE)
  file(READ "${notice}" text)
  string(REPLACE "\n" "\r\n" text "${text}")
  string(REPEAT "=" 78 line)
  file(APPEND "${RESULT}" "\r\n${line}\r\n${name}\r\n${line}\r\n\r\n${text}")
endforeach()
