# ccache with paths relative to the checkout, so that two checkouts share their results.
option(HEEDBANNER_CCACHE "Compile through ccache where it is installed" ON)
find_program(CCACHE_PROGRAM ccache)
if(HEEDBANNER_CCACHE AND CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
endif()
