# SPDX-License-Identifier: MIT

# quoll_add_module(TARGET [SOURCE...])
#
# Makes TARGET, a module library that is loaded at run time, a client of QuollFoundation that stays loaded once it
# is loaded: an object's class is known by the address of its vtable, and that address must never come to mean
# another class. With sources it makes the target; without, it takes one that add_library(... MODULE) has made.
function(quoll_add_module target)
  if(ARGN)
    add_library(${target} MODULE ${ARGN})
  elseif(NOT TARGET ${target})
    message(FATAL_ERROR "quoll_add_module: there is no target ${target}, and no sources to make it of")
  endif()
  get_target_property(type ${target} TYPE)
  if(NOT type MATCHES "^(MODULE|SHARED)_LIBRARY$")
    message(FATAL_ERROR "quoll_add_module: ${target} is no module library but ${type}")
  endif()
  target_link_libraries(${target} PRIVATE QuollFoundation::QuollFoundation)
  target_link_options(${target} PRIVATE LINKER:-z,nodelete)
endfunction()
