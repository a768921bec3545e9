# What is installed beside the programs: how desktops, software catalogues, manuals and shells know them.

# The folder of the helpers as seen from the main program, so that the whole can be installed anywhere.
function(twinleaf_helpers_folder source)
  set(helpers "${CMAKE_INSTALL_LIBEXECDIR}/twinleaf")
  if(NOT IS_ABSOLUTE "${helpers}" AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_BINDIR}")
    file(RELATIVE_PATH helpers "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${helpers}")
  elseif(NOT IS_ABSOLUTE "${helpers}")
    set(helpers "${CMAKE_INSTALL_FULL_LIBEXECDIR}/twinleaf")
  endif()
  set_source_files_properties("${CMAKE_SOURCE_DIR}/${source}" PROPERTIES
    COMPILE_DEFINITIONS "TWINLEAF_HELPERS=\"${helpers}/\"")
endfunction()

function(twinleaf_desktop_files)
  set(id org.twinleaf.Twinleaf)
  set(data "${CMAKE_INSTALL_DATAROOTDIR}")
  set(icons "${data}/icons/hicolor")

  install(FILES "${CMAKE_SOURCE_DIR}/cmake/${id}.desktop" DESTINATION "${data}/applications")

  include("${CMAKE_SOURCE_DIR}/cmake/Metainfo.cmake")
  twinleaf_metainfo("${CMAKE_BINARY_DIR}/${id}.metainfo.xml")
  install(FILES "${CMAKE_BINARY_DIR}/${id}.metainfo.xml" DESTINATION "${data}/metainfo")

  # Small sizes come from a drawing made for few pixels.
  set(small "${CMAKE_SOURCE_DIR}/widgets/icons/${id}.svg")
  set(large "${CMAKE_SOURCE_DIR}/cmake/${id}-large.svg")
  install(FILES "${large}" DESTINATION "${icons}/scalable/apps" RENAME ${id}.svg)
  find_program(RSVG_CONVERT rsvg-convert)
  if(RSVG_CONVERT)
    set(pictures)
    foreach(size 16 22 24 32 48 64 128 256)
      set(drawing "${small}")
      if(size GREATER 47)
        set(drawing "${large}")
      endif()
      set(picture "${CMAKE_BINARY_DIR}/icons/${size}.png")
      add_custom_command(OUTPUT "${picture}" DEPENDS "${drawing}" VERBATIM
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_BINARY_DIR}/icons"
        COMMAND "${RSVG_CONVERT}" -w ${size} -h ${size} -o "${picture}" "${drawing}")
      list(APPEND pictures "${picture}")
      install(FILES "${picture}" DESTINATION "${icons}/${size}x${size}/apps" RENAME ${id}.png)
    endforeach()
    add_custom_target(twinleaf_icons ALL DEPENDS ${pictures})
    if(TARGET twinleaf) # whoever builds only the program can install it
      add_dependencies(twinleaf twinleaf_icons)
    endif()
  else()
    message(STATUS "No rsvg-convert: the icon is installed as a drawing only")
  endif()

  file(GLOB manuals CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/docs/man/*.[18]")
  foreach(manual IN LISTS manuals)
    get_filename_component(section "${manual}" LAST_EXT)
    string(SUBSTRING "${section}" 1 1 section)
    install(FILES "${manual}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man${section}")
  endforeach()
  install(FILES "${CMAKE_SOURCE_DIR}/docs/man/de/twinleaf.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/de/man1")
  install(FILES "${CMAKE_SOURCE_DIR}/cmake/completion.bash"
          DESTINATION "${data}/bash-completion/completions" RENAME twinleaf)
endfunction()
