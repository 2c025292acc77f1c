# Finds libbacktrace, which turns code addresses into functions, files and lines. It comes with the
# development package of the compiler's run-time library, in the compiler's own folder.
#
# Gives the target Libbacktrace::Libbacktrace (static).
file(GLOB gcc_dirs LIST_DIRECTORIES true /usr/lib/gcc/*/*)
list(SORT gcc_dirs COMPARE NATURAL ORDER DESCENDING)
find_library(Libbacktrace_LIBRARY NAMES libbacktrace.a HINTS ${gcc_dirs})
find_path(Libbacktrace_INCLUDE_DIR NAMES backtrace.h HINTS ${gcc_dirs} PATH_SUFFIXES include)
mark_as_advanced(Libbacktrace_LIBRARY Libbacktrace_INCLUDE_DIR)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Libbacktrace
  REQUIRED_VARS Libbacktrace_LIBRARY Libbacktrace_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "It is part of the Debian package libgcc-12-dev.")

if(Libbacktrace_FOUND AND NOT TARGET Libbacktrace::Libbacktrace)
  # No include directory: it would bring all headers of the compiler before those of another one. The
  # source that needs the header gets its folder.
  add_library(Libbacktrace::Libbacktrace STATIC IMPORTED)
  set_target_properties(Libbacktrace::Libbacktrace PROPERTIES IMPORTED_LOCATION ${Libbacktrace_LIBRARY})
endif()
