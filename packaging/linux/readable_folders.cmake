# Run by CPack on what it is about to pack: folders that everybody may read, whatever the umask of who
# builds.
file(
  CHMOD_RECURSE
  "${CPACK_TEMPORARY_DIRECTORY}/usr"
  DIRECTORY_PERMISSIONS
  OWNER_READ
  OWNER_WRITE
  OWNER_EXECUTE
  GROUP_READ
  GROUP_EXECUTE
  WORLD_READ
  WORLD_EXECUTE)
