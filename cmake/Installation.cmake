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
# Where the programs look for it, beside their folder.
install(DIRECTORY ${HEEDBANNER_BUILD_RESOURCES}/ DESTINATION share/heedbanner COMPONENT core)
hbr_install(core ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps ${packaging}/icons/${id}.svg)
hbr_install(core ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps ${packaging}/icons/${id}-symbolic.svg)

# Files that carry the version.
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

# Files that carry the place of a program: written by the installation, which may choose another prefix.
function(hbr_install_located component destination template)
  cmake_path(GET template FILENAME file)
  string(REGEX REPLACE "\\.in$" "" file ${file})
  install(CODE "
    set(programs \"${CMAKE_INSTALL_BINDIR}\")
    set(target \"${destination}/${file}\")
    cmake_path(ABSOLUTE_PATH programs BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\")
    cmake_path(ABSOLUTE_PATH target BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\")
    set(HEEDBANNER \"\${programs}/heedbanner\")
    set(HEEDBANNER_DESKTOP \"\${programs}/heedbanner-desktop\")
    message(STATUS \"Installing: \$ENV{DESTDIR}\${target}\")
    configure_file(\"${packaging}/${template}\" \"\$ENV{DESTDIR}\${target}\" @ONLY
      FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${target}\")"
    COMPONENT ${component})
endfunction()
hbr_install_located(core ${CMAKE_INSTALL_DATADIR}/applications ${id}.links.desktop.in)

# Debian's zsh looks for what packages bring and for what administrators install in different folders.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(HEEDBANNER_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
else()
  set(HEEDBANNER_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
endif()
function(hbr_install_completions component program)
  hbr_install(${component} ${CMAKE_INSTALL_DATADIR}/bash-completion/completions ${packaging}/completions/bash/${program})
  hbr_install(${component} ${HEEDBANNER_ZSH_COMPLETIONS} ${packaging}/completions/zsh/_${program})
  hbr_install(${component} ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d ${packaging}/completions/fish/${program}.fish)
endfunction()
hbr_install_completions(core heedbanner)
hbr_install_completions(core heedbanner-widgets)
hbr_install_completions(desktop heedbanner-desktop)

# The pages as they link to each other.
hbr_install(core ${CMAKE_INSTALL_DOCDIR} README.md CHANGELOG.md LICENSE)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT core
  FILES_MATCHING PATTERN "*.md" PATTERN "*.png")

# The program of the desktop: its start by the menu, the session bus and systemd.
install(TARGETS heedbanner-desktop RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT desktop)
hbr_install_located(desktop ${CMAKE_INSTALL_DATADIR}/applications ${id}.desktop.in)
hbr_install_configured(desktop ${CMAKE_INSTALL_DATADIR}/metainfo ${id}.metainfo.xml.in)
hbr_install_located(desktop ${CMAKE_INSTALL_DATADIR}/dbus-1/services ${id}.service.in)
hbr_install_located(desktop lib/systemd/user systemd/${id}.service.in)
