# The AppStream metadata, written by the build (included from CMakeLists.txt)
# and, on its own, by the package check, which validates the part that only
# a public address brings (homepage and screenshots) with a test address:
#   cmake -DZORBO_WEB_URL=https://… -DPROJECT_VERSION=2.0.0 -DZORBO_METAINFO_FILE=out.xml -P metainfo.cmake
if(NOT ZORBO_METAINFO_FILE)
  set(ZORBO_METAINFO_FILE ${CMAKE_CURRENT_BINARY_DIR}/de.zorbo.ZorboEditor.metainfo.xml)
endif()
set(ZORBO_METAINFO_WEB "")
if(ZORBO_WEB_URL)
  set(ZORBO_METAINFO_WEB "  <url type=\"homepage\">${ZORBO_WEB_URL}</url>\n  <screenshots>\n")
  set(caption_mainwindow-club "Das Hauptfenster mit einem Verein")
  set(caption_mainwindow-player "Das Hauptfenster mit einem Spieler")
  set(caption_search "Die Suche mit ihrer Trefferliste")
  set(caption_problems "Das Fenster \"Probleme\"")
  set(caption_verlauf "Das Menü \"Bearbeiten\" und der Verlauf")
  set(kind "default")
  foreach(shot IN ITEMS mainwindow-club mainwindow-player search problems verlauf)
    string(APPEND ZORBO_METAINFO_WEB "    <screenshot type=\"${kind}\">\n      <caption>${caption_${shot}}</caption>\n"
           "      <image>${ZORBO_WEB_URL}/docs/${shot}.png</image>\n    </screenshot>\n")
    set(kind "extra")
  endforeach()
  string(APPEND ZORBO_METAINFO_WEB "  </screenshots>\n")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/zorbo-editor.metainfo.xml.in ${ZORBO_METAINFO_FILE} @ONLY)
