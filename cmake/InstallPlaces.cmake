# Where things are installed. On Windows all lies in one folder, which people may move; elsewhere each kind of thing has its
# place below the prefix, and the programs find their data from their own place, so that the whole may be moved, too.
#   TESSARINE_PROGRAMS, TESSARINE_DATA, TESSARINE_DOCS, TESSARINE_DATA_FROM_PROGRAMS (not on Windows)
#
# What is installed is in three components: "batch", "desktop" and "guide".
if(WIN32)
    set(TESSARINE_PROGRAMS .)
    set(TESSARINE_DATA .)
    set(TESSARINE_DOCS docs)
else()
    include(GNUInstallDirs)
    set(TESSARINE_PROGRAMS ${CMAKE_INSTALL_BINDIR})
    set(TESSARINE_DATA ${CMAKE_INSTALL_DATADIR}/tessarine)
    set(TESSARINE_DOCS ${CMAKE_INSTALL_DOCDIR})
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_DATADIR BASE_DIRECTORY ${CMAKE_INSTALL_FULL_BINDIR}
               OUTPUT_VARIABLE TESSARINE_DATA_FROM_PROGRAMS)
    string(APPEND TESSARINE_DATA_FROM_PROGRAMS /tessarine)
endif()
