# tessarine_window_program(<name>): a program with windows.
function(tessarine_window_program name)
    target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS)
    set_target_properties(${name} PROPERTIES TESSARINE_HAS_WINDOWS ON)  # how it is linked for Windows
endfunction()

# tessarine_runtime(<name> <folder> [INSTALLED] [LIBRARIES <library of Qt>...] PLUGINS <plugin>...
#                   [TRANSLATIONS <language>...])
#
# A target that puts beside programs with windows what Windows has them bring along, without symbols: the libraries of the
# compiler and of Qt, plugins of Qt ("platforms/qwindows"), and what Qt says in other languages ("Yes" and "No").
# INSTALLED: they belong to what is installed.
function(tessarine_runtime name folder)
    cmake_parse_arguments(RUNTIME "INSTALLED" "" "LIBRARIES;PLUGINS;TRANSLATIONS" ${ARGN})
    set(copies)
    foreach(library Core Gui Widgets ${RUNTIME_LIBRARIES})
        tessarine_stripped(copies $<TARGET_FILE:Qt6::${library}> ${folder}/Qt6${library}.dll)
    endforeach()
    foreach(library libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}.dll
                        OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        tessarine_stripped(copies ${file} ${folder}/${library}.dll)
    endforeach()
    foreach(plugin ${RUNTIME_PLUGINS})
        tessarine_stripped(copies ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_PLUGINS}/${plugin}.dll ${folder}/${plugin}.dll)
    endforeach()
    foreach(language ${RUNTIME_TRANSLATIONS})
        set(texts ${QT_HOST_PATH}/share/qt6/translations/qtbase_${language}.qm)
        set(copy ${folder}/translations/qtbase_${language}.qm)
        add_custom_command(OUTPUT ${copy} COMMAND ${CMAKE_COMMAND} -E copy ${texts} ${copy} DEPENDS ${texts} VERBATIM)
        list(APPEND copies ${copy})
    endforeach()
    if(RUNTIME_TRANSLATIONS)
        # Where Qt looks for them, wherever the programs lie.
        file(CONFIGURE OUTPUT ${folder}/qt.conf CONTENT "[Paths]\nPrefix = .\nPlugins = .\nTranslations = translations\n")
        list(APPEND copies ${folder}/qt.conf)
    endif()
    add_custom_target(${name} DEPENDS ${copies})
    if(RUNTIME_INSTALLED)
        foreach(copy ${copies})
            cmake_path(RELATIVE_PATH copy BASE_DIRECTORY ${folder} OUTPUT_VARIABLE place)
            cmake_path(GET place PARENT_PATH place)
            install(FILES ${copy} DESTINATION ${TESSARINE_PROGRAMS}/${place})
        endforeach()
    endif()
endfunction()

# tessarine_stripped(<variable> <library> <copy>): without symbols, and without the time, which strip would write into it.
function(tessarine_stripped variable library copy)
    cmake_path(GET copy PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${copy}
        COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0 ${CMAKE_STRIP} -o ${copy} ${library}
        DEPENDS ${library} VERBATIM)
    set(${variable} ${${variable}} ${copy} PARENT_SCOPE)
endfunction()
