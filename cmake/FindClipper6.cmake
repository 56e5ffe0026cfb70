# The Clipper library, version 6 interface (Debian: libpolyclipping-dev).
# Defines Clipper6::Clipper6; callers include <polyclipping/clipper.hpp>.
find_path(Clipper6_INCLUDE_DIR polyclipping/clipper.hpp)
find_library(Clipper6_LIBRARY polyclipping)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Clipper6 REQUIRED_VARS Clipper6_LIBRARY Clipper6_INCLUDE_DIR)
if(Clipper6_FOUND AND NOT TARGET Clipper6::Clipper6)
  add_library(Clipper6::Clipper6 UNKNOWN IMPORTED)
  set_target_properties(Clipper6::Clipper6 PROPERTIES
    IMPORTED_LOCATION "${Clipper6_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${Clipper6_INCLUDE_DIR}")
endif()
mark_as_advanced(Clipper6_INCLUDE_DIR Clipper6_LIBRARY)
