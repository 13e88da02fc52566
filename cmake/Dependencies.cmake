# SPDX-License-Identifier: MIT
# What the library leans on. All of it is private: no public header shows any of it, no client needs it to build.

find_package(PkgConfig)
find_package(Threads REQUIRED)

# quoll_missing(what package): one clear line for a piece that was not found.
function(quoll_missing what package)
  message(FATAL_ERROR "${what} is missing. It is the Debian package ${package}; scripts/setup installs it.")
endfunction()

find_package(ICU 70 QUIET COMPONENTS uc i18n)
if(NOT ICU_FOUND)
  quoll_missing("ICU 70 or later" libicu-dev)
endif()

if(PKG_CONFIG_FOUND)
  pkg_check_modules(HWY QUIET IMPORTED_TARGET libhwy)
endif()
if(NOT TARGET PkgConfig::HWY)
  quoll_missing("Highway, or pkg-config to find it" "libhwy-dev (pkg-config)")
endif()

find_package(tsl-robin-map QUIET)
if(NOT TARGET tsl::robin_map)
  quoll_missing("robin-map" robin-map-dev)
endif()
