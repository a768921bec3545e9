# What software catalogues tell of the program. As a script it writes the same with addresses of one's own, to be looked at:
#   cmake -D PROJECT_VERSION=1 -D TWINLEAF_WEB_ADDRESS=... -D OUTPUT=FILE -P cmake/Metainfo.cmake
function(twinleaf_metainfo output)
  # An element without an address is none.
  set(TWINLEAF_URLS "")
  if(TWINLEAF_WEB_ADDRESS)
    string(APPEND TWINLEAF_URLS "  <url type=\"homepage\">${TWINLEAF_WEB_ADDRESS}</url>\n")
  endif()
  if(TWINLEAF_DONATION_ADDRESS)
    string(APPEND TWINLEAF_URLS "  <url type=\"donation\">${TWINLEAF_DONATION_ADDRESS}</url>\n")
  endif()
  set(TWINLEAF_SCREENSHOTS "")
  if(TWINLEAF_SCREENSHOT_ADDRESS)
    set(TWINLEAF_SCREENSHOTS "  <screenshots>
    <screenshot type=\"default\">
      <caption>Two folders side by side</caption>
      <caption xml:lang=\"de\">Zwei Ordner nebeneinander</caption>
      <image>${TWINLEAF_SCREENSHOT_ADDRESS}</image>
    </screenshot>
  </screenshots>\n")
  endif()
  configure_file("${CMAKE_CURRENT_FUNCTION_LIST_DIR}/org.twinleaf.Twinleaf.metainfo.xml.in" "${output}" @ONLY)
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
  twinleaf_metainfo("${OUTPUT}")
endif()
