# Writes OUTPUT, the source with Commit(), unless it says so already. COMMIT: the commit; FROM_GIT asks GIT for that of the
# current folder.
if(COMMIT STREQUAL FROM_GIT)
    execute_process(COMMAND ${GIT} rev-parse --short=12 HEAD OUTPUT_VARIABLE COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE
                    ERROR_QUIET)
endif()
configure_file(${CMAKE_CURRENT_LIST_FILE}.in ${OUTPUT} @ONLY)
