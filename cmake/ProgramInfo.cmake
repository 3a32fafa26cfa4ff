# What the program calls itself, for what is not C++: read from where the sources have it, and from the licence.
#   TESSARINE_COMPANY, TESSARINE_TITLE, TESSARINE_COPYRIGHT
set(header ${PROJECT_SOURCE_DIR}/src/platform/ProgramInfo.h)
set(licence ${PROJECT_SOURCE_DIR}/LICENSE)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header} ${licence})

# tessarine_read(<variable> <file> <expression with one group>)
function(tessarine_read variable file expression)
    file(READ ${file} content)
    if(NOT content MATCHES "${expression}")
        message(FATAL_ERROR "${file} has no ${expression}")
    endif()
    set(${variable} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()

tessarine_read(TESSARINE_COMPANY ${header} "CompanyName = u\"([^\"]+)\"")
tessarine_read(TESSARINE_TITLE ${header} "ApplicationTitle = u\"([^\"]+)\"")
tessarine_read(TESSARINE_COPYRIGHT ${licence} "(Copyright [^\n]+)")
