# What the programs read at run time lies in the build as it will lie in the installation, so that a program
# in BUILD/bin finds it like an installed one.
set(HEEDBANNER_BUILD_RESOURCES ${CMAKE_BINARY_DIR}/share/heedbanner)

# Copies one file to DESTINATION below the resource folder whenever ROOM is built.
function(hbr_resource room file destination)
  set(copy ${HEEDBANNER_BUILD_RESOURCES}/${destination})
  add_custom_command(
    OUTPUT ${copy}
    COMMAND ${CMAKE_COMMAND} -E copy ${file} ${copy}
    DEPENDS ${file}
    VERBATIM)
  string(MAKE_C_IDENTIFIER ${destination} target)
  add_custom_target(resource_${target} DEPENDS ${copy})
  add_dependencies(${room} resource_${target})
endfunction()
