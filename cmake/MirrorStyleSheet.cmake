# cmake -DSOURCE=<sheet> -DTARGET=<copy> -P MirrorStyleSheet.cmake
#
# Creates the right-to-left variant of a style sheet: swaps "left" and "right" in the names of properties such as
# "padding-left" and "border-right-color". Positions are not changed, because Qt mirrors them.
file(READ "${SOURCE}" sheet)
string(REGEX REPLACE "-left([a-z-]*:)" "-<other>\\1" sheet "${sheet}")
string(REGEX REPLACE "-right([a-z-]*:)" "-left\\1" sheet "${sheet}")
string(REPLACE "<other>" "right" sheet "${sheet}")
file(WRITE "${TARGET}" "${sheet}")
