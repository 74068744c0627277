# libTesselTcamManager.so: the product. Symbols are hidden unless a
# declaration carries TESSEL_EXPORT (common/TesselExport.h).
set(TESSEL_PRODUCT_DIRS common catalogue manager resources show export startup)
set(TESSEL_PRODUCT_SOURCES)
foreach(dir ${TESSEL_PRODUCT_DIRS})
  file(GLOB dir_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${dir}/*.cpp)
  list(APPEND TESSEL_PRODUCT_SOURCES ${dir_sources})
endforeach()

add_library(TesselTcamManager SHARED ${TESSEL_PRODUCT_SOURCES})
add_library(TesselTcamManager::TesselTcamManager ALIAS TesselTcamManager)
target_include_directories(TesselTcamManager PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/TesselTcamManager>)
target_compile_definitions(TesselTcamManager PRIVATE TESSEL_BUILDING_LIBRARY)
# The chip SDK's bcm_* functions stay undefined here: whoever links the
# program supplies them (the chip model here, a real SDK on a switch).
target_link_libraries(TesselTcamManager PUBLIC
  TesselKiln TesselFastLog TesselVault TesselAgentServices TesselSdkApi TesselSdkShim)
set_target_properties(TesselTcamManager PROPERTIES
  OUTPUT_NAME TesselTcamManager
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)
set_property(GLOBAL APPEND PROPERTY TESSEL_INSTALLED_TARGETS TesselTcamManager)
