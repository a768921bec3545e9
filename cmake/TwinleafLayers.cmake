# One static library per folder, named twinleaf_<folder>. Files are found by the folder they lie
# in; NESTED: and by the folders inside it.
function(twinleaf_layer name)
  cmake_parse_arguments(layer "NESTED" "FOLDER" "USES" ${ARGN})
  if(NOT layer_FOLDER)
    set(layer_FOLDER ${name})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS
       "${CMAKE_SOURCE_DIR}/${layer_FOLDER}/*.cpp" "${CMAKE_SOURCE_DIR}/${layer_FOLDER}/*.h"
       "${CMAKE_SOURCE_DIR}/${layer_FOLDER}/*.qrc")
  if(layer_NESTED)
    file(GLOB nested CONFIGURE_DEPENDS
         "${CMAKE_SOURCE_DIR}/${layer_FOLDER}/*/*.cpp" "${CMAKE_SOURCE_DIR}/${layer_FOLDER}/*/*.h")
    list(APPEND sources ${nested})
  endif()
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  list(FILTER sources INCLUDE REGEX "\\.")
  if(NOT sources) # a folder without sources is a layer all the same
    add_library(twinleaf_${name} INTERFACE)
    target_link_libraries(twinleaf_${name} INTERFACE ${layer_USES})
    return()
  endif()
  add_library(twinleaf_${name} STATIC ${sources})
  target_link_libraries(twinleaf_${name} PUBLIC ${layer_USES})
endfunction()

function(twinleaf_program)
  if(NOT EXISTS "${CMAKE_SOURCE_DIR}/app/main.cpp")
    return()
  endif()
  add_executable(twinleaf "${CMAKE_SOURCE_DIR}/app/main.cpp")
  target_link_libraries(twinleaf PRIVATE twinleaf_app)
  set_target_properties(twinleaf PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")
  # Compiled into the program as :/i18n/twinleaf_<language>.qm
  file(GLOB translations CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/translations/twinleaf_*.ts")
  qt_add_translations(twinleaf TS_FILES ${translations} RESOURCE_PREFIX /i18n)

  install(TARGETS twinleaf RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endfunction()

# The names by which the session's bus starts the program: its own, and the one that all file managers
# share. Of the second every file manager brings a file, so it has a name of ours.
function(twinleaf_session_services)
  set(services "${CMAKE_INSTALL_DATAROOTDIR}/dbus-1/services")
  foreach(service Twinleaf FileManager1)
    # They hold the whole path, and the prefix may be chosen as late as when it is installed.
    install(CODE "
      set(TWINLEAF_PROGRAM \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/twinleaf\")
      set(file \"${services}/org.twinleaf.${service}.service\")
      message(STATUS \"Installing: \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/\${file}\")
      configure_file(\"${CMAKE_SOURCE_DIR}/cmake/org.twinleaf.${service}.service.in\"
                     \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/\${file}\" @ONLY)")
  endforeach()
endfunction()

# A small program twinleaf-<name>, which the main program starts and no person: built beside it, installed in
# a folder of its own that platform/ProgramBeside.cpp knows.
function(twinleaf_helper name folder)
  if(NOT EXISTS "${CMAKE_SOURCE_DIR}/${folder}/main.cpp")
    return()
  endif()
  add_executable(twinleaf-${name} "${CMAKE_SOURCE_DIR}/${folder}/main.cpp")
  # Of the layers' many libraries it loads only what it calls: it is to start at once.
  target_link_options(twinleaf-${name} PRIVATE LINKER:--as-needed)
  target_link_libraries(twinleaf-${name} PRIVATE twinleaf_${folder})
  set_target_properties(twinleaf-${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")
  if(TARGET twinleaf)
    add_dependencies(twinleaf twinleaf-${name})
  endif()
  install(TARGETS twinleaf-${name} RUNTIME DESTINATION "${CMAKE_INSTALL_LIBEXECDIR}/twinleaf")
endfunction()

# The program that has root's rights for what a person may ask of the main one. pkexec goes by the path in
# the policy, and polkit reads policies in one folder only: so both places are settled here, whatever prefix
# the rest is installed under, and the main program knows the first. A component of its own, for root.
function(twinleaf_rights)
  add_executable(twinleaf-rights "${CMAKE_SOURCE_DIR}/rights/main.cpp")
  # Nothing of the layers' libraries runs as root.
  target_link_options(twinleaf-rights PRIVATE LINKER:--as-needed)
  target_link_libraries(twinleaf-rights PRIVATE twinleaf_rights)
  set_target_properties(twinleaf-rights PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")
  set(TWINLEAF_RIGHTS_PROGRAM "${CMAKE_INSTALL_FULL_LIBEXECDIR}/twinleaf/twinleaf-rights")
  set_source_files_properties("${CMAKE_SOURCE_DIR}/platform/desktop/PolkitAuthorization.cpp" PROPERTIES
    COMPILE_DEFINITIONS "TWINLEAF_RIGHTS_PROGRAM=\"${TWINLEAF_RIGHTS_PROGRAM}\"")
  configure_file("${CMAKE_SOURCE_DIR}/cmake/org.twinleaf.Twinleaf.policy.in"
                 "${CMAKE_BINARY_DIR}/org.twinleaf.Twinleaf.policy" @ONLY)
  if(TARGET twinleaf)
    add_dependencies(twinleaf twinleaf-rights)
  endif()
  install(TARGETS twinleaf-rights RUNTIME DESTINATION "${CMAKE_INSTALL_FULL_LIBEXECDIR}/twinleaf"
          COMPONENT rights EXCLUDE_FROM_ALL)
  install(FILES "${CMAKE_BINARY_DIR}/org.twinleaf.Twinleaf.policy"
          DESTINATION "${TWINLEAF_POLICY_FOLDER}" COMPONENT rights EXCLUDE_FROM_ALL)
endfunction()
