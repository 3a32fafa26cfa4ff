# What Windows reads out of a program: its icon, its version and names, and its manifest.
include(HostPrograms)
include(ProgramInfo)
set(TESSARINE_WINDOWS_PACKAGING ${PROJECT_SOURCE_DIR}/packaging/windows)

# tessarine_drawing(<output> <drawing under src/icons> <size>...): an icon (.ico) of all the sizes, or a picture of the one.
function(tessarine_drawing output drawing)
    if(NOT TARGET tessarine_drawings)
        tessarine_host_program(make-icon ${PROJECT_SOURCE_DIR}/tools/icons/MakeIcon.cpp USES Qt6Gui)
        set_property(GLOBAL PROPERTY TESSARINE_MAKE_ICON ${make-icon})
        add_custom_target(tessarine_drawings DEPENDS ${make-icon})  # several folders draw: made once, before them
    endif()
    get_property(make_icon GLOBAL PROPERTY TESSARINE_MAKE_ICON)
    set(source ${PROJECT_SOURCE_DIR}/src/icons/${drawing})
    add_custom_command(OUTPUT ${output}
        COMMAND ${make_icon} ${source} ${output} ${ARGN}
        DEPENDS ${source} ${make_icon} tessarine_drawings VERBATIM)
endfunction()

# tessarine_icon_pictures(<layer>): the drawings of src/icons as pictures too, in the resources of a layer as
# "/icons/<name>-<size>.png". For Windows, where nothing draws them.
function(tessarine_icon_pictures layer)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/icon-pictures)
    file(MAKE_DIRECTORY ${folder})
    file(GLOB drawings CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/src/icons ${PROJECT_SOURCE_DIR}/src/icons/*.svg)
    set(entries)
    set(pictures)
    foreach(drawing ${drawings})
        cmake_path(GET drawing STEM name)
        foreach(size 16 20 24 32 40 48 64 96 256)
            tessarine_drawing(${folder}/${name}-${size}.png ${drawing} ${size})
            string(APPEND entries "<file>${name}-${size}.png</file>\n")
            list(APPEND pictures ${folder}/${name}-${size}.png)
        endforeach()
    endforeach()
    file(CONFIGURE OUTPUT ${folder}/icon-pictures.qrc @ONLY
         CONTENT "<RCC><qresource prefix=\"/icons\">\n@entries@</qresource></RCC>\n")
    target_sources(${layer} PRIVATE ${folder}/icon-pictures.qrc)
    set_property(TARGET ${layer} APPEND PROPERTY AUTOGEN_TARGET_DEPENDS ${pictures})
endfunction()

# tessarine_windows_resources(<program> <description>): what the Explorer and the Task Manager show of a program. A program
# that has them is shipped: without symbols, and the same bytes for the same sources.
function(tessarine_windows_resources program description)
    if(NOT WIN32)
        return()
    endif()
    set(icon ${CMAKE_CURRENT_BINARY_DIR}/tessarine.ico)
    get_property(has_icon GLOBAL PROPERTY TESSARINE_PROGRAM_ICON)
    if(NOT has_icon)
        tessarine_drawing(${icon} tessarine.svg 16 20 24 32 40 48 64 256)
        add_custom_target(tessarine_program_icon DEPENDS ${icon})
        set_property(GLOBAL PROPERTY TESSARINE_PROGRAM_ICON ${icon})
    endif()

    set(RESOURCES_NAME ${program})
    set(RESOURCES_FILE ${program}.exe)
    set(RESOURCES_DESCRIPTION ${description})
    set(RESOURCES_COMPANY ${TESSARINE_COMPANY})
    set(RESOURCES_PRODUCT ${TESSARINE_TITLE})
    set(RESOURCES_COPYRIGHT ${TESSARINE_COPYRIGHT})
    set(RESOURCES_NUMBERS ${PROJECT_VERSION_MAJOR},${PROJECT_VERSION_MINOR},${PROJECT_VERSION_PATCH},0)
    set(RESOURCES_ICON ${icon})
    set(RESOURCES_MANIFEST ${TESSARINE_WINDOWS_PACKAGING}/program.manifest)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${program}.rc)
    configure_file(${TESSARINE_WINDOWS_PACKAGING}/program.rc.in ${script} @ONLY)

    # A command of our own: as a source of the target the script would get options that are for C++.
    set(object ${CMAKE_CURRENT_BINARY_DIR}/${program}-resources.o)
    add_custom_command(OUTPUT ${object}
        COMMAND ${CMAKE_RC_COMPILER} --codepage=65001 --output-format=coff ${script} ${object}
        DEPENDS ${script} ${icon} ${RESOURCES_MANIFEST} tessarine_program_icon VERBATIM)
    target_sources(${program} PRIVATE ${object})
    target_link_options(${program} PRIVATE -s -Wl,--no-insert-timestamp)
    set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
endfunction()
