# Finds the data files of the Hershey fonts: one font per file *.jhf, all in one folder.
#
# Gives HersheyFonts_FILES, sorted.
find_path(HersheyFonts_DATA_DIR NAMES futural.jhf PATHS /usr/share /usr/local/share PATH_SUFFIXES hershey-fonts)
mark_as_advanced(HersheyFonts_DATA_DIR)
if(HersheyFonts_DATA_DIR)
  file(GLOB HersheyFonts_FILES LIST_DIRECTORIES false ${HersheyFonts_DATA_DIR}/*.jhf)
  list(SORT HersheyFonts_FILES)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(HersheyFonts
  REQUIRED_VARS HersheyFonts_DATA_DIR HersheyFonts_FILES
  REASON_FAILURE_MESSAGE "They are the Debian package hershey-fonts-data.")
