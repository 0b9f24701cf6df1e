# Version resources of the shipped Windows files. Every one takes its numbers from the project's
# VERSION (CMakeLists.txt) and the company, product and copyright year from here, so a release
# changes them in one place.
set(HO_COMPANY "Harwick-Orbel")
set(HO_PRODUCT "Vistrel")
set(HO_COPYRIGHT_YEAR 2026)

# ho_add_version_resource(TARGET FILE DESCRIPTION [GERMAN]): a VERSIONINFO resource for TARGET,
# shipped as FILE. The translation block names the module's language: English (0x0409) unless
# GERMAN (0x0407), code page 1252 for both.
function(ho_add_version_resource target file description)
  set(HO_VR_FILE ${file})
  set(HO_VR_DESCRIPTION ${description})
  get_filename_component(HO_VR_INTERNAL ${file} NAME_WE)
  if("GERMAN" IN_LIST ARGN)
    set(HO_VR_LANGUAGE 0x0407)
    set(HO_VR_BLOCK 040704E4)
  else()
    set(HO_VR_LANGUAGE 0x0409)
    set(HO_VR_BLOCK 040904E4)
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "SHARED_LIBRARY")
    set(HO_VR_TYPE VFT_DLL)
  else()
    set(HO_VR_TYPE VFT_APP)
  endif()
  set(rc ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${rc} @ONLY)
  target_sources(${target} PRIVATE ${rc})
endfunction()
