# Programs that take part in the build itself run where it runs, also when it builds for Windows.
set(TESSARINE_HOST_COMPILER g++ CACHE STRING "Compiler of programs that run in a build for another system")

# tessarine_host_program(<name> <source>): a program of one source. Commands run it, and depend on it, as ${<name>}.
function(tessarine_host_program name source)
    cmake_path(ABSOLUTE_PATH source)
    if(CMAKE_CROSSCOMPILING)
        set(program ${CMAKE_CURRENT_BINARY_DIR}/${name})
        add_custom_command(OUTPUT ${program}
            COMMAND ${TESSARINE_HOST_COMPILER} -std=c++20 -O1 -o ${program} ${source}
            DEPENDS ${source} VERBATIM)
        set(${name} ${program} PARENT_SCOPE)
    else()
        add_executable(${name} ${source})
        target_link_libraries(${name} PRIVATE tessarine_warnings)
        set(${name} $<TARGET_FILE:${name}> PARENT_SCOPE)
    endif()
endfunction()
