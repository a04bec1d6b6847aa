# Compiler, linker, packages, and the one function by which every folder of SRC
# becomes a library.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Precompiled headers need the two sloppiness flags, or nothing is ever found
  # in the cache; the base directory lets several checkouts share it.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
endif()

find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  add_link_options(-fuse-ld=mold)
endif()

# First what needs no window: the floors below the toolkit get nothing else.
find_package(wxWidgets 3.2 REQUIRED COMPONENTS base)
set(_wx_base_libraries ${wxWidgets_LIBRARIES})
find_package(wxWidgets 3.2 REQUIRED COMPONENTS gl core base)
find_package(PkgConfig REQUIRED)
pkg_check_modules(EPOXY REQUIRED IMPORTED_TARGET epoxy)
pkg_check_modules(ASSIMP REQUIRED IMPORTED_TARGET assimp)
find_package(OpenGL REQUIRED COMPONENTS OpenGL GLX)
find_package(GLUT REQUIRED)
find_package(X11 REQUIRED)
find_package(Threads REQUIRED)

separate_arguments(_wx_flags UNIX_COMMAND "${wxWidgets_CXX_FLAGS}")
add_library(morentis_platform INTERFACE)
target_include_directories(morentis_platform SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(morentis_platform INTERFACE ${wxWidgets_DEFINITIONS})
target_compile_options(morentis_platform INTERFACE ${_wx_flags})
target_link_libraries(morentis_platform INTERFACE ${wxWidgets_LIBRARIES} PkgConfig::EPOXY
                      OpenGL::GL OpenGL::GLU GLUT::GLUT X11::X11 Threads::Threads)

# The same for the fenced floors: without wxUSE_GUI the headers declare no window.
add_library(morentis_platform_core INTERFACE)
target_include_directories(morentis_platform_core SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(morentis_platform_core INTERFACE ${wxWidgets_DEFINITIONS} wxUSE_GUI=0)
target_compile_options(morentis_platform_core INTERFACE ${_wx_flags})
target_link_libraries(morentis_platform_core INTERFACE ${_wx_base_libraries} Threads::Threads)

# What all our own code is compiled with.
add_library(morentis_flags INTERFACE)
target_include_directories(morentis_flags INTERFACE ${CMAKE_SOURCE_DIR}/SRC)
target_compile_options(morentis_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                       $<$<BOOL:${MORENTIS_WERROR}>:-Werror>)
target_compile_definitions(morentis_flags INTERFACE MORENTIS_DATADIR="${MORENTIS_DATADIR}")
if(MORENTIS_SANITIZE)
  target_compile_options(morentis_flags INTERFACE -fsanitize=${MORENTIS_SANITIZE} -fno-omit-frame-pointer
                         -fno-sanitize-recover=all)
  target_link_options(morentis_flags INTERFACE -fsanitize=${MORENTIS_SANITIZE})
endif()
if(MORENTIS_TRACE) # each stretch of code calls tests/fuzz/Trace.cpp: nothing else links then
  target_compile_options(morentis_flags INTERFACE -fsanitize-coverage=trace-pc)
endif()

# Two precompiled headers, each compiled once: one for the fenced floors, one for all others.
foreach(kind "" "_core")
  add_library(morentis_pch${kind} STATIC ${CMAKE_SOURCE_DIR}/cmake/pch.cpp)
  target_link_libraries(morentis_pch${kind} PRIVATE morentis_platform${kind} morentis_flags)
  target_precompile_headers(morentis_pch${kind} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch${kind}.h)
  target_compile_options(morentis_pch${kind} PRIVATE -fpch-preprocess)
endforeach()

set(MORENTIS_LIBRARIES "" CACHE INTERNAL "")
set(MORENTIS_CORE_LIBRARIES "" CACHE INTERNAL "")

# morentis_library(<name> [EXCLUDE file...]): the .cpp files of the calling folder as one static library.
function(morentis_library name)
  morentis_add_library(${name} ${ARGN})
  morentis_compile(morentis_${name})
endfunction()

# morentis_core_library(<name> [EXCLUDE file...]): the same for a fenced floor, which compiles against
# wxWidgets' base alone: no window, no OpenGL. tools/check_layers.py holds its includes to that.
function(morentis_core_library name)
  morentis_add_library(${name} ${ARGN})
  morentis_compile_core(morentis_${name})
  set(MORENTIS_CORE_LIBRARIES ${MORENTIS_CORE_LIBRARIES} morentis_${name} CACHE INTERNAL "")
endfunction()

function(morentis_add_library name)
  cmake_parse_arguments(arg "" "" "EXCLUDE" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  foreach(file IN LISTS arg_EXCLUDE)
    list(REMOVE_ITEM sources ${CMAKE_CURRENT_SOURCE_DIR}/${file})
  endforeach()
  add_library(morentis_${name} STATIC ${sources})
  set_target_properties(morentis_${name} PROPERTIES LINKER_LANGUAGE CXX)
  set(MORENTIS_LIBRARIES ${MORENTIS_LIBRARIES} morentis_${name} CACHE INTERNAL "")
endfunction()

# Flags, packages and precompiled header for one target of ours.
function(morentis_compile target)
  target_link_libraries(${target} PRIVATE morentis_platform morentis_flags)
  target_compile_options(${target} PRIVATE -fpch-preprocess)
  target_precompile_headers(${target} REUSE_FROM morentis_pch)
endfunction()

function(morentis_compile_core target)
  target_link_libraries(${target} PRIVATE morentis_platform_core morentis_flags)
  target_compile_options(${target} PRIVATE -fpch-preprocess)
  target_precompile_headers(${target} REUSE_FROM morentis_pch_core)
endfunction()

# Link a program against all libraries. They meet in both directions at a few
# sanctioned places (tools/layers.txt), so the linker reads them as one group.
function(morentis_link target)
  morentis_compile(${target})
  string(REPLACE ";" "," group "${MORENTIS_LIBRARIES}")
  target_link_libraries(${target} PRIVATE "$<LINK_GROUP:RESCAN,${group}>" morentis_platform)
endfunction()

# Link a program against the fenced floors alone, and against nothing that knows a window.
function(morentis_link_core target)
  morentis_compile_core(${target})
  string(REPLACE ";" "," group "${MORENTIS_CORE_LIBRARIES}")
  target_link_libraries(${target} PRIVATE "$<LINK_GROUP:RESCAN,${group}>" morentis_platform_core)
endfunction()

# Under a sanitizer the compiler warns of the library's own <regex>.
function(morentis_uses_regex file)
  if(MORENTIS_SANITIZE)
    set_source_files_properties(${file} PROPERTIES COMPILE_OPTIONS -Wno-maybe-uninitialized)
  endif()
endfunction()
