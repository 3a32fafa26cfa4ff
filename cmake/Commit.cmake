# tessarine_commit(<target>): gives it Commit() of batch/Commit.h, the commit that the sources are of. Archives of the
# sources carry theirs in commit.txt; in a clone git tells it, again after each commit. Sources of neither kind have none.
function(tessarine_commit target)
    file(READ ${PROJECT_SOURCE_DIR}/cmake/commit.txt carried)
    set(moments)
    if(carried MATCHES "^[0-9a-f]+ ")
        string(SUBSTRING ${carried} 0 12 commit)
    else()
        set(commit)
        find_program(GIT git)
        # A folder in somebody else's clone is none of ours.
        execute_process(COMMAND ${GIT} rev-parse --show-cdup --git-path logs/HEAD WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
                        OUTPUT_VARIABLE answer RESULT_VARIABLE failed ERROR_QUIET)
        if(NOT failed AND answer MATCHES "^\n([^\n]+)\n$")
            cmake_path(ABSOLUTE_PATH CMAKE_MATCH_1 BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE moments)
            if(NOT EXISTS ${moments})
                set(moments)
            endif()
            set(commit FROM_GIT)
        endif()
    endif()

    set(output ${CMAKE_CURRENT_BINARY_DIR}/Commit.cpp)
    set(script ${PROJECT_SOURCE_DIR}/cmake/WriteCommit.cmake)
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -D "COMMIT=${commit}" -D "GIT=${GIT}" -D OUTPUT=${output} -P ${script}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        DEPENDS ${script} ${script}.in ${PROJECT_SOURCE_DIR}/cmake/commit.txt ${moments} VERBATIM)
    target_sources(${target} PRIVATE ${output})
    set_source_files_properties(${output} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)  # clang-tidy does without it
endfunction()
