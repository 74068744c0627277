# tessel_add_layer(<target> <output name> SOURCES ... DEPS ...)
# A platform or SDK layer: a shared library whose headers are included by
# their path from the repository root ("platform/kiln/Ptr.h").
function(tessel_add_layer target)
  cmake_parse_arguments(ARG "" "OUTPUT" "SOURCES;DEPS" ${ARGN})
  add_library(${target} SHARED ${ARG_SOURCES})
  add_library(TesselTcamManager::${target} ALIAS ${target})
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/TesselTcamManager>)
  target_link_libraries(${target} PUBLIC ${ARG_DEPS})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${ARG_OUTPUT}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
  set_property(GLOBAL APPEND PROPERTY TESSEL_INSTALLED_TARGETS ${target})
endfunction()
