# SPDX-License-Identifier: MIT
# The shared library. Its objects are a library of their own, so that tests of internals can link what the
# shared library hides.

file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/QuollFoundation/*.cpp
                                            ${PROJECT_SOURCE_DIR}/QuollFoundation/*.c)
file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/QuollFoundation/*.h)
list(FILTER headers EXCLUDE REGEX "Internal\\.h$")

add_library(QuollFoundationObjects OBJECT ${sources})
quoll_compile(QuollFoundationObjects)
target_include_directories(QuollFoundationObjects PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(QuollFoundationObjects PUBLIC ICU::i18n ICU::uc PkgConfig::HWY tsl::robin_map Threads::Threads)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Nobody replaces our functions at load time, so calls among them may be direct and inlined.
  target_compile_options(QuollFoundationObjects PRIVATE -fno-semantic-interposition)
endif()

add_library(QuollFoundation SHARED)
add_library(QuollFoundation::QuollFoundation ALIAS QuollFoundation)
quoll_compile(QuollFoundation)
target_link_libraries(QuollFoundation PRIVATE QuollFoundationObjects)
target_compile_features(QuollFoundation INTERFACE cxx_std_20)
target_sources(QuollFoundation PUBLIC
  FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers})
set_target_properties(QuollFoundation PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  LINKER_LANGUAGE CXX
  LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)

# An object's class is known by the address of its vtable, so a module that makes objects is never unloaded:
# ours is not, and whoever links it into a shared module gets the same. Calls among ourselves go straight to their
# function: nobody is to replace one of ours by one of the same name.
target_link_options(QuollFoundation
  PRIVATE -Wl,-z,nodelete -Wl,-Bsymbolic-functions -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map
  INTERFACE $<$<IN_LIST:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY;MODULE_LIBRARY>:-Wl,-z,nodelete>)
if(NOT QUOLL_SANITIZE)  # a sanitizer's runtime is in the program only
  target_link_options(QuollFoundation PRIVATE -Wl,--no-undefined)
endif()
