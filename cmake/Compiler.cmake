# SPDX-License-Identifier: MIT
# How everything in this tree is compiled: the language, warnings, sanitizers, the compiler cache.

set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(QUOLL_CCACHE ccache)
mark_as_advanced(QUOLL_CCACHE)
if(QUOLL_CCACHE)
  foreach(language C CXX)
    if(NOT CMAKE_${language}_COMPILER_LAUNCHER)
      set(CMAKE_${language}_COMPILER_LAUNCHER ${QUOLL_CCACHE})
    endif()
  endforeach()
endif()

# quoll_compile(target): the warnings that every target of this project is built with, and the sanitizers.
function(quoll_compile target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
  if(QUOLL_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # A handle that dies at the end of its statement is the model's sharpest edge: an error in every build.
    target_compile_options(${target} PRIVATE -Werror=dangling -Werror=dangling-gsl -Werror=return-stack-address)
  endif()
  if(QUOLL_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${QUOLL_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${QUOLL_SANITIZE})
  endif()
endfunction()
