# Finds the compression library zstd.
#
# Gives the target Zstd::Zstd.
find_library(Zstd_LIBRARY NAMES zstd)
find_path(Zstd_INCLUDE_DIR NAMES zstd.h)
mark_as_advanced(Zstd_LIBRARY Zstd_INCLUDE_DIR)
if(Zstd_INCLUDE_DIR)
  file(STRINGS ${Zstd_INCLUDE_DIR}/zstd.h zstd_version_lines REGEX "#define ZSTD_VERSION_(MAJOR|MINOR|RELEASE) ")
  string(REGEX REPLACE "[^0-9;]" "" zstd_version "${zstd_version_lines}")
  list(JOIN zstd_version "." Zstd_VERSION)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Zstd
  REQUIRED_VARS Zstd_LIBRARY Zstd_INCLUDE_DIR
  VERSION_VAR Zstd_VERSION
  REASON_FAILURE_MESSAGE "It is part of the Debian package libzstd-dev.")

if(Zstd_FOUND AND NOT TARGET Zstd::Zstd)
  add_library(Zstd::Zstd UNKNOWN IMPORTED)
  set_target_properties(Zstd::Zstd PROPERTIES
    IMPORTED_LOCATION ${Zstd_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${Zstd_INCLUDE_DIR})
endif()
