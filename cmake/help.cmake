# hosetup.chm, the setup program's help file, compiled from the HTML sources in docs/help with
# chmcmd (Debian package fp-utils). The file ships beside hosetup.exe, so it goes to the dist
# folder, and to the test folder where the help tests open it.
find_program(HO_CHMCMD chmcmd REQUIRED)

# chmcmd writes the compile time into the file (cmake/chm_stable.py sets it to the last commit's
# time) and some bytes it leaves uninitialised, which differ with the address layout: it runs with
# randomisation off (setarch -R), so that the same sources give the same file.
find_program(HO_SETARCH setarch)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
if(HO_SETARCH)
  set(HO_CHM_COMPILER ${HO_SETARCH} -R ${HO_CHMCMD})
else()
  set(HO_CHM_COMPILER ${HO_CHMCMD})
endif()
# The time a build stands for: SOURCE_DATE_EPOCH when given, else the last commit's time, else 0
# (a source tree outside git). It is written to a file that changes only with the value, so that
# the help files are made anew when it changes.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(HO_SOURCE_DATE_EPOCH $ENV{SOURCE_DATE_EPOCH})
else()
  execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
                  OUTPUT_VARIABLE HO_SOURCE_DATE_EPOCH OUTPUT_STRIP_TRAILING_WHITESPACE
                  RESULT_VARIABLE gitResult ERROR_QUIET)
  if(NOT gitResult EQUAL 0 OR NOT HO_SOURCE_DATE_EPOCH MATCHES "^[0-9]+$")
    set(HO_SOURCE_DATE_EPOCH 0)
  endif()
endif()
set(HO_SOURCE_DATE_STAMP ${CMAKE_BINARY_DIR}/source_date_epoch.txt)
file(CONFIGURE OUTPUT ${HO_SOURCE_DATE_STAMP} CONTENT "${HO_SOURCE_DATE_EPOCH}\n")
set(HO_CHM_STABLE ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/cmake/chm_stable.py)

file(GLOB HO_HELP_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/help/*)
set(HO_HELP_STAGE ${CMAKE_BINARY_DIR}/help)

# chmcmd writes next to the project file, so it compiles a copy of the sources in the build tree.
add_custom_command(
  OUTPUT ${HO_DIST_DIR}/hosetup.chm
  BYPRODUCTS ${HO_TEST_BIN_DIR}/hosetup.chm ${HO_HELP_STAGE}/hosetup.chm
  COMMAND ${CMAKE_COMMAND} -E make_directory ${HO_HELP_STAGE}
  COMMAND ${CMAKE_COMMAND} -E copy ${HO_HELP_SOURCES} ${HO_HELP_STAGE}
  COMMAND ${CMAKE_COMMAND} -E chdir ${HO_HELP_STAGE} ${HO_CHM_COMPILER} hosetup.hhp
  COMMAND ${HO_CHM_STABLE} ${HO_HELP_STAGE}/hosetup.chm ${HO_SOURCE_DATE_EPOCH}
  COMMAND ${CMAKE_COMMAND} -E copy ${HO_HELP_STAGE}/hosetup.chm ${HO_DIST_DIR}/hosetup.chm
  COMMAND ${CMAKE_COMMAND} -E copy ${HO_HELP_STAGE}/hosetup.chm ${HO_TEST_BIN_DIR}/hosetup.chm
  DEPENDS ${HO_HELP_SOURCES} ${HO_SOURCE_DATE_STAMP} ${PROJECT_SOURCE_DIR}/cmake/chm_stable.py
  COMMENT "Compiling hosetup.chm"
  VERBATIM)
add_custom_target(hosetup_chm ALL DEPENDS ${HO_DIST_DIR}/hosetup.chm)
