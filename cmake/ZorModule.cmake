# zor_add_module(<name> LAYER <n> [DEPENDS <module>...] [QT <component>...] [PRIVATE_LINK <target>...]
#                [ROOMS <folder>... [QT_FREE <folder>...]] HEADERS <file>... SOURCES <file>...)
#
# One shared SDK library ZOR<name>, known to everybody as ZorSDK::<name>. A module may depend only
# on modules of a strictly lower layer; a violation stops the configuration. PRIVATE_LINK names what
# the implementation alone needs: nothing of it may show in a public header.
#
# ROOMS names the folders of the private code of a large module, lowest first: a room uses the public headers of
# its module and the rooms before it, the sources at the root of the module use every room. QT_FREE names those
# of them that are plain C++. tools/check_layers.py reads both lists and enforces them.
#
# zor_add_plugin(<name> LAYER <n> [DEPENDS <module>...] [QT <component>...] SOURCES <file>...)
#
# One library ZOR<name> of the SDK that applications load and nobody links. The same rule of layers.
include_guard(GLOBAL)
include(GNUInstallDirs)

function(zor_check_layers name layer)
  foreach(dependency IN LISTS ARGN)
    if(NOT TARGET ZOR${dependency})
      message(FATAL_ERROR "ZOR${name} depends on ZOR${dependency}, which is not built before it")
    endif()
    get_target_property(dependency_layer ZOR${dependency} ZOR_LAYER)
    if(NOT dependency_layer LESS layer)
      message(FATAL_ERROR "ZOR${name} (layer ${layer}) must not use ZOR${dependency} (layer ${dependency_layer})")
    endif()
  endforeach()
endfunction()

# What modules and plug-ins have in common: checks the arguments arg_... that the caller has parsed, adds the library and
# sets ${target}; ${arg_DEPENDS} and ${arg_QT} become targets.
macro(zor_start_library function name)
  if(arg_UNPARSED_ARGUMENTS OR NOT DEFINED arg_LAYER)
    message(FATAL_ERROR "${function}(${name}): LAYER missing or bad arguments: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  zor_check_layers(${name} ${arg_LAYER} ${arg_DEPENDS})
  set(target ZOR${name})
  add_library(${target} SHARED ${arg_SOURCES})
  zor_set_target_defaults(${target})
  zor_precompile_headers(${target})
  list(TRANSFORM arg_DEPENDS PREPEND ZOR)
  list(TRANSFORM arg_QT PREPEND Qt6::)
endmacro()

function(zor_add_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LAYER" "DEPENDS;QT;PRIVATE_LINK;ROOMS;QT_FREE;HEADERS;SOURCES")
  zor_start_library(zor_add_module ${name})
  add_library(ZorSDK::${name} ALIAS ${target})
  target_sources(${target} PUBLIC
    FILE_SET HEADERS BASE_DIRS ${CMAKE_CURRENT_SOURCE_DIR}/.. FILES ${arg_HEADERS})
  target_link_libraries(${target} PUBLIC ${arg_DEPENDS} ${arg_QT} PRIVATE ${arg_PRIVATE_LINK})
  if(arg_ROOMS)
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  endif()
  # A module stays in memory when the plug-in that brought it goes: containers may hold objects of its classes.
  target_link_options(${target} PRIVATE ${ZOR_NO_UNDEFINED} -Wl,-z,nodelete)
  set_target_properties(${target} PROPERTIES
    ZOR_LAYER ${arg_LAYER}
    EXPORT_NAME ${name}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    INSTALL_RPATH "$ORIGIN"
    VERIFY_INTERFACE_HEADER_SETS ON)
  install(TARGETS ${target} EXPORT ZorSDKTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zorsdk)
  set_property(GLOBAL APPEND PROPERTY ZOR_MODULES ${name})
endfunction()

function(zor_add_plugin name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LAYER" "DEPENDS;QT;SOURCES")
  zor_start_library(zor_add_plugin ${name})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # A library with a unique symbol can never be unloaded.
    target_compile_options(${target} PRIVATE -fno-gnu-unique)
  endif()
  target_link_libraries(${target} PRIVATE ${arg_DEPENDS} ${arg_QT})
  target_link_options(${target} PRIVATE ${ZOR_NO_UNDEFINED})
  zor_limit_exports(${target})
  set_target_properties(${target} PROPERTIES ZOR_LAYER ${arg_LAYER} INSTALL_RPATH "$ORIGIN/../..")
  install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/zorsdk/plugins)
endfunction()
