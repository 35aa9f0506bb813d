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

# Files that carry the version or the place of a program.
set(HEEDBANNER_DESKTOP ${CMAKE_INSTALL_FULL_BINDIR}/heedbanner-desktop)
function(hbr_install_configured component destination template)
  string(REGEX REPLACE "\\.in$" "" file ${template})
  configure_file(${packaging}/${template} ${CMAKE_BINARY_DIR}/packaging/${file} @ONLY)
  hbr_install(${component} ${destination} ${CMAKE_BINARY_DIR}/packaging/${file})
endfunction()
hbr_install_configured(core ${CMAKE_INSTALL_MANDIR}/man1 man/heedbanner.1.in)
hbr_install_configured(core ${CMAKE_INSTALL_MANDIR}/man1 man/heedbanner-widgets.1.in)
hbr_install_configured(core ${CMAKE_INSTALL_MANDIR}/man5 man/heedbanner-accounts.5.in)
hbr_install_configured(desktop ${CMAKE_INSTALL_MANDIR}/man1 man/heedbanner-desktop.1.in)
hbr_install_configured(desktop ${CMAKE_INSTALL_MANDIR}/man5 man/heedbanner-desktop.5.in)

function(hbr_install_completions component program)
  hbr_install(${component} ${CMAKE_INSTALL_DATADIR}/bash-completion/completions ${packaging}/completions/bash/${program})
  hbr_install(${component} ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions ${packaging}/completions/zsh/_${program})
  hbr_install(${component} ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d ${packaging}/completions/fish/${program}.fish)
endfunction()
hbr_install_completions(core heedbanner)
hbr_install_completions(core heedbanner-widgets)
hbr_install_completions(desktop heedbanner-desktop)

# The program of the desktop: its start by the menu, the session bus and systemd.
install(TARGETS heedbanner-desktop RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT desktop)
hbr_install(desktop ${CMAKE_INSTALL_DATADIR}/applications ${packaging}/${id}.desktop)
hbr_install_configured(desktop ${CMAKE_INSTALL_DATADIR}/metainfo ${id}.metainfo.xml.in)
hbr_install_configured(desktop ${CMAKE_INSTALL_DATADIR}/dbus-1/services ${id}.service.in)
hbr_install_configured(desktop lib/systemd/user systemd/${id}.service.in)
