# What an installation holds. The component `desktop` needs GTK, the component `core` does not.
include(GNUInstallDirs)

set(HEEDBANNER_RELEASE_DATE 2026-11-23)
set(packaging ${CMAKE_SOURCE_DIR}/packaging)
set(id com.quietlark.heedbanner)

function(hbr_install component destination)
  install(FILES ${ARGN} DESTINATION ${destination} COMPONENT ${component})
endfunction()

install(TARGETS heedbanner heedbanner-widgets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT core)
install(DIRECTORY ${HEEDBANNER_BUILD_RESOURCES}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/heedbanner COMPONENT core)
hbr_install(core ${CMAKE_INSTALL_DATADIR}/applications ${packaging}/${id}.links.desktop)
hbr_install(core ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps ${packaging}/icons/${id}.svg)
hbr_install(core ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps ${packaging}/icons/${id}-symbolic.svg)

foreach(program heedbanner heedbanner-widgets)
  hbr_install(core ${CMAKE_INSTALL_DATADIR}/bash-completion/completions ${packaging}/completions/bash/${program})
  hbr_install(core ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions ${packaging}/completions/zsh/_${program})
  hbr_install(core ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d ${packaging}/completions/fish/${program}.fish)
endforeach()
