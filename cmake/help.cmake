# hosetup.chm, the setup program's help file, compiled from the HTML sources in docs/help with
# chmcmd (Debian package fp-utils). The file ships beside hosetup.exe, so it goes to the dist
# folder, and to the test folder where the help tests open it.
find_program(HO_CHMCMD chmcmd REQUIRED)

file(GLOB HO_HELP_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/help/*)
set(HO_HELP_STAGE ${CMAKE_BINARY_DIR}/help)

# chmcmd writes next to the project file, so it compiles a copy of the sources in the build tree.
add_custom_command(
  OUTPUT ${HO_DIST_DIR}/hosetup.chm
  BYPRODUCTS ${HO_TEST_BIN_DIR}/hosetup.chm ${HO_HELP_STAGE}/hosetup.chm
  COMMAND ${CMAKE_COMMAND} -E make_directory ${HO_HELP_STAGE}
  COMMAND ${CMAKE_COMMAND} -E copy ${HO_HELP_SOURCES} ${HO_HELP_STAGE}
  COMMAND ${CMAKE_COMMAND} -E chdir ${HO_HELP_STAGE} ${HO_CHMCMD} hosetup.hhp
  COMMAND ${CMAKE_COMMAND} -E copy ${HO_HELP_STAGE}/hosetup.chm ${HO_DIST_DIR}/hosetup.chm
  COMMAND ${CMAKE_COMMAND} -E copy ${HO_HELP_STAGE}/hosetup.chm ${HO_TEST_BIN_DIR}/hosetup.chm
  DEPENDS ${HO_HELP_SOURCES}
  COMMENT "Compiling hosetup.chm"
  VERBATIM)
add_custom_target(hosetup_chm ALL DEPENDS ${HO_DIST_DIR}/hosetup.chm)
