# Settings shared by the SDK, the bench and the host. Installed with the SDK package, so that a bench
# that is built alone uses the same ones.
include_guard(DIRECTORY) # it sets variables: GLOBAL would leave sibling directories without them

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# Stack traces of optimised builds show files and lines.
add_compile_options($<$<CONFIG:Release>:-g1>)

find_program(ZOR_CCACHE ccache)
mark_as_advanced(ZOR_CCACHE)
if(ZOR_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  # Relative paths make a second checkout of the same sources hit the cache; precompiled headers need the sloppiness.
  set(ccache_base ${CMAKE_SOURCE_DIR})
  if(DEFINED ENV{CCACHE_BASEDIR})
    set(ccache_base $ENV{CCACHE_BASEDIR})
  endif()
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${ccache_base} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros ${ZOR_CCACHE})
endif()

set(ZOR_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined")
if(ZOR_SANITIZE)
  add_compile_options(-fsanitize=${ZOR_SANITIZE} -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=${ZOR_SANITIZE})
endif()
# Libraries that miss a symbol must not link. Sanitized by clang they miss the run-time library, which it links into
# programs alone.
set(ZOR_NO_UNDEFINED -Wl,--no-undefined)
if(ZOR_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES Clang)
  set(ZOR_NO_UNDEFINED)
endif()

# Warnings and Qt restrictions of every target of the project.
function(zor_set_target_defaults target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Woverloaded-virtual -Wold-style-cast)
  target_compile_definitions(${target} PRIVATE
    QT_RESTRICTED_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
    QT_NO_JAVA_STYLE_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
endfunction()

# Makes the compiler cache count comments for a target that makes a precompiled header. That knows the text of each header: one
# from the cache that was made of other comments would not hide the headers of today, which would be included twice.
function(zor_cache_precompiled_headers target)
  if(CMAKE_CXX_COMPILER_LAUNCHER)
    set_target_properties(${target} PROPERTIES
      CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND};-E;env;CCACHE_COMMENTS=1;${CMAKE_CXX_COMPILER_LAUNCHER}")
  endif()
endfunction()

# Compiles the headers of Qt and of the standard library that most sources include once for all libraries.
# A source includes what it uses all the same.
function(zor_precompile_headers target)
  if(NOT TARGET ZorPrecompiled)
    set(source ${CMAKE_BINARY_DIR}/ZorPrecompiled.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(ZorPrecompiled OBJECT ${source})
    set_target_properties(ZorPrecompiled PROPERTIES AUTOMOC OFF AUTORCC OFF)
    zor_cache_precompiled_headers(ZorPrecompiled)
    zor_set_target_defaults(ZorPrecompiled)
    # The folders alone: definitions that a user of the headers does not have would forbid him to use them.
    target_include_directories(ZorPrecompiled SYSTEM PRIVATE
      $<TARGET_PROPERTY:Qt6::Widgets,INTERFACE_INCLUDE_DIRECTORIES>
      $<TARGET_PROPERTY:Qt6::Gui,INTERFACE_INCLUDE_DIRECTORIES>)
    target_link_libraries(ZorPrecompiled PRIVATE Qt6::Core)
    target_precompile_headers(ZorPrecompiled PRIVATE
      <QByteArray> <QCoreApplication> <QFile> <QHash> <QList> <QObject> <QPointer> <QString> <QStringList> <QVariant>
      <QAction> <QColor> <QDialog> <QImage> <QLabel>
      <algorithm> <array> <cmath> <functional> <limits> <map> <memory> <mutex> <numbers> <optional> <string> <utility>
      <vector>)
  endif()
  target_precompile_headers(${target} REUSE_FROM ZorPrecompiled)
endfunction()

# Limits what a plug-in exports to the entry points of Qt's plug-in loader, the given classes and symbols. Libraries
# that are loaded with a plug-in may bind to any other symbol it exports, such as the copy of an inline function of
# Qt that a build without optimization keeps, and would hold it in memory for good.
function(zor_limit_exports target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "CLASSES;SYMBOLS")
  set(names "qt_plugin_instance; qt_plugin_query_metadata_v2;")
  foreach(symbol IN LISTS arg_SYMBOLS)
    string(APPEND names " ${symbol};")
  endforeach()
  set(patterns "")
  foreach(class IN LISTS arg_CLASSES)
    # A quoted pattern is taken literally, so question marks stand for the blanks.
    string(APPEND patterns "    ${class}::*; non-virtual?thunk?to?${class}::*;\n"
      "    typeinfo?for?${class}; typeinfo?name?for?${class}; vtable?for?${class};\n")
  endforeach()
  if(patterns)
    set(patterns "\n  extern \"C++\" {\n${patterns}  };")
  endif()
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  file(CONFIGURE OUTPUT ${script} CONTENT "{\nglobal:\n  ${names}${patterns}\nlocal:\n  *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE "-Wl,--version-script=${script}")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()
