# Unity builds: the project's headers dominate every translation unit's
# compile time, so sources are compiled in batches (CMAKE_UNITY_BUILD, set by
# the presets). A file that names its trace channel defines a file-static
# channel object under a fixed name, so it is compiled on its own.

function(tessel_unity_exclusions dir)
  get_property(targets DIRECTORY ${dir} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "INTERFACE_LIBRARY" OR type STREQUAL "UTILITY")
      continue()
    endif()
    get_target_property(sources ${target} SOURCES)
    get_target_property(source_dir ${target} SOURCE_DIR)
    foreach(source ${sources})
      if(NOT IS_ABSOLUTE ${source})
        set(source ${source_dir}/${source})
      endif()
      if(source MATCHES "\\.cpp$" AND EXISTS ${source})
        file(STRINGS ${source} channel REGEX "^TRACE_CHANNEL\\(" LIMIT_COUNT 1)
        if(channel)
          set_source_files_properties(${source} TARGET_DIRECTORY ${target}
            PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
        endif()
      endif()
    endforeach()
  endforeach()
  get_property(subdirs DIRECTORY ${dir} PROPERTY SUBDIRECTORIES)
  foreach(subdir ${subdirs})
    tessel_unity_exclusions(${subdir})
  endforeach()
endfunction()

