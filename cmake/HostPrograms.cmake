# Programs that take part in the build itself run where it runs, also when it builds for Windows.
set(TESSARINE_HOST_COMPILER g++ CACHE STRING "Compiler of programs that run in a build for another system")

# tessarine_host_program(<name> <source> [USES <library>...]): a program of one source, with libraries that go by their
# names for pkg-config. Commands run it, and depend on it, as ${<name>}.
function(tessarine_host_program name source)
    cmake_parse_arguments(HOST "" "" "USES" ${ARGN})
    cmake_path(ABSOLUTE_PATH source)
    set(compiling)
    set(linking)
    if(HOST_USES)
        # The system's own, not those that a build for another system is told to find.
        set(ask ${CMAKE_COMMAND} -E env --unset=PKG_CONFIG_LIBDIR pkg-config)
        execute_process(COMMAND ${ask} --cflags ${HOST_USES} OUTPUT_VARIABLE compiling COMMAND_ERROR_IS_FATAL ANY)
        execute_process(COMMAND ${ask} --libs ${HOST_USES} OUTPUT_VARIABLE linking COMMAND_ERROR_IS_FATAL ANY)
        separate_arguments(compiling UNIX_COMMAND "${compiling} -fPIC")
        separate_arguments(linking UNIX_COMMAND "${linking}")
    endif()
    if(CMAKE_CROSSCOMPILING)
        # A folder of their own: beside the programs for Windows they would take those' settings of Qt for theirs.
        set(program ${PROJECT_BINARY_DIR}/host-programs/${name})
        file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/host-programs)
        add_custom_command(OUTPUT ${program}
            COMMAND ${TESSARINE_HOST_COMPILER} -std=c++20 -O1 ${compiling} -o ${program} ${source} ${linking}
            DEPENDS ${source} VERBATIM)
        set(${name} ${program} PARENT_SCOPE)
    else()
        add_executable(${name} ${source})
        list(TRANSFORM compiling REPLACE "^-I" "-isystem")
        target_compile_options(${name} PRIVATE ${compiling})
        target_link_libraries(${name} PRIVATE ${linking} tessarine_warnings)
        set(${name} $<TARGET_FILE:${name}> PARENT_SCOPE)
    endif()
endfunction()
