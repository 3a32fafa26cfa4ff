# Given to our own code, never to others' headers.
add_library(tessarine_warnings INTERFACE)
target_compile_options(tessarine_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
