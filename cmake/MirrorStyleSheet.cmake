# cmake -DSOURCE=<sheet> -DTARGET=<copy> -P MirrorStyleSheet.cmake
#
# Makes the right-to-left variant of a style sheet: left and right change places in the names of properties such as
# "padding-left" and "border-right-color". Positions are left alone: Qt mirrors those by itself.
file(READ "${SOURCE}" sheet)
string(REGEX REPLACE "-left([a-z-]*:)" "-<other>\\1" sheet "${sheet}")
string(REGEX REPLACE "-right([a-z-]*:)" "-left\\1" sheet "${sheet}")
string(REPLACE "<other>" "right" sheet "${sheet}")
file(WRITE "${TARGET}" "${sheet}")
