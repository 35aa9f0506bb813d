# What an installation holds. The component `desktop` needs GTK, the component `core` does not.
include(GNUInstallDirs)

set(HEEDBANNER_RELEASE_DATE 2026-11-23)
set(HEEDBANNER_RELEASE_DAY "November 23, 2026")
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

# Pages and data that carry the version.
function(hbr_install_versioned component destination template)
  cmake_path(GET template STEM LAST_ONLY name)
  configure_file(${packaging}/${template} ${CMAKE_BINARY_DIR}/packaging/${name} @ONLY)
  hbr_install(${component} ${destination} ${CMAKE_BINARY_DIR}/packaging/${name})
endfunction()
hbr_install_versioned(core ${CMAKE_INSTALL_MANDIR}/man1 man/heedbanner.1.in)
hbr_install_versioned(core ${CMAKE_INSTALL_MANDIR}/man1 man/heedbanner-widgets.1.in)
hbr_install_versioned(core ${CMAKE_INSTALL_MANDIR}/man5 man/heedbanner-accounts.5.in)

foreach(program heedbanner heedbanner-widgets)
  hbr_install(core ${CMAKE_INSTALL_DATADIR}/bash-completion/completions ${packaging}/completions/bash/${program})
  hbr_install(core ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions ${packaging}/completions/zsh/_${program})
  hbr_install(core ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d ${packaging}/completions/fish/${program}.fish)
endforeach()

# The program of the desktop: its start by the menu, the session bus and systemd.
set(HEEDBANNER_DESKTOP ${CMAKE_INSTALL_FULL_BINDIR}/heedbanner-desktop)
foreach(file ${id}.service heedbanner-desktop.service)
  configure_file(${packaging}/${file}.in ${CMAKE_BINARY_DIR}/packaging/${file} @ONLY)
endforeach()
install(TARGETS heedbanner-desktop RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT desktop)
hbr_install(desktop ${CMAKE_INSTALL_DATADIR}/applications ${packaging}/${id}.desktop)
hbr_install(desktop ${CMAKE_INSTALL_DATADIR}/dbus-1/services ${CMAKE_BINARY_DIR}/packaging/${id}.service)
hbr_install(desktop lib/systemd/user ${CMAKE_BINARY_DIR}/packaging/heedbanner-desktop.service)
