# Collecting the sources of a target.

# Sets <result> to the files that match the patterns, relative to the current source folder. Building looks
# again, so that a new file needs no edit here.
function(vgui_glob result)
  list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  file(GLOB found CONFIGURE_DEPENDS ${ARGN})
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

# Adds <folder>/*.rc of the current source folder to a target. windres tells nobody what it has read, so
# every other file of the folder, and every header beside it, counts as read.
function(vgui_add_resource_scripts target folder)
  vgui_glob(scripts "${folder}/*.rc")
  if(NOT scripts)
    return()
  endif()
  vgui_glob(files "${folder}/*" "*.h")
  list(FILTER files EXCLUDE REGEX "\\.(rc|cpp|py|sh)$")
  set_source_files_properties(${scripts} PROPERTIES OBJECT_DEPENDS "${files}")
  target_sources(${target} PRIVATE ${scripts})
  # Pictures are named relative to the script.
  target_include_directories(${target} PRIVATE
    "$<$<COMPILE_LANGUAGE:RC>:${CMAKE_CURRENT_SOURCE_DIR}/${folder}>")
endfunction()
