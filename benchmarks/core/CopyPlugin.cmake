# Copies PLUGIN to FOLDER, COUNT times, as Trivial000, Trivial001 and so on.
cmake_path(GET PLUGIN EXTENSION suffix)
math(EXPR last "${COUNT} - 1")
foreach(number RANGE ${last})
    string(LENGTH "${number}" digits)
    math(EXPR zeros "3 - ${digits}")
    string(REPEAT "0" ${zeros} padding)
    file(COPY_FILE "${PLUGIN}" "${FOLDER}/Trivial${padding}${number}${suffix}" ONLY_IF_DIFFERENT)
endforeach()
