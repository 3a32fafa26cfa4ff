# Given to our own code, never to others' headers. Our presets make errors of them; another compiler, on the machine of
# somebody who only wants the programs, may warn of something new.
add_library(tessarine_warnings INTERFACE)
target_compile_options(tessarine_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${TESSARINE_STRICT}>:-Werror>)
