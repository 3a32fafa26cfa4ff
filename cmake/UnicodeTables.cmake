include(HostPrograms)
find_path(TESSARINE_UNICODE_DATA UnicodeData.txt PATHS /usr/share/unicode /usr/share/unicode/ucd
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)

# tessarine_unicode_tables(<target>): gives it the tables of platform/UnicodeTables.h, made from the files of the Unicode
# Character Database.
function(tessarine_unicode_tables target)
    tessarine_host_program(make-unicode-tables ${PROJECT_SOURCE_DIR}/tools/unicode/MakeUnicodeTables.cpp)
    set(input ${TESSARINE_UNICODE_DATA}/CaseFolding.txt ${TESSARINE_UNICODE_DATA}/UnicodeData.txt)
    set(output ${CMAKE_CURRENT_BINARY_DIR}/UnicodeTables.cpp)
    add_custom_command(OUTPUT ${output}
        COMMAND ${make-unicode-tables} ${input} ${output}
        DEPENDS ${make-unicode-tables} ${input} VERBATIM)
    target_sources(${target} PRIVATE ${output})
    set_source_files_properties(${output} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)  # clang-tidy does without it
endfunction()
