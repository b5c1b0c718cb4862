# cmake -D PROGRAM=... -D SOURCE=... -P CheckOutput.cmake
#
# Runs an example and compares what it prints with what its source says that it prints: the lines below "// Prints:",
# up to the first one that is no comment, without the "//" and four blanks.
file(READ ${SOURCE} text)
if(NOT text MATCHES "// Prints:\n//\n((//[^\n]*\n)+)")
    message(FATAL_ERROR "${SOURCE} does not say what it prints")
endif()
string(REGEX REPLACE "//( ? ? ? ? ?)([^\n]*)\n" "\\2\n" expected "${CMAKE_MATCH_1}")

execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
if(NOT printed STREQUAL expected)
    message(FATAL_ERROR "${SOURCE} says that it prints\n${expected}\nand it prints\n${printed}")
endif()
